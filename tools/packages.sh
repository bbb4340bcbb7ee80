# Sourced by run.sh and test.sh: installs the Debian or Ubuntu packages that are missing.
# shellcheck shell=bash

# What the build, the tests and the window need. "a|b" means either: releases name it differently.
zem_packages=(
    g++ cmake ninja-build qt6-base-dev "qt6-svg-dev|libqt6svg6-dev" libgl1-mesa-dev qt6-qpa-plugins
    zlib1g-dev libcli11-dev nlohmann-json3-dev libpcre2-dev libhunspell-dev hunspell-en-gb libgtest-dev libbenchmark-dev fonts-dejavu-core dpkg-dev python3
    clang "libclang-rt-dev|libclang-rt-14-dev"
)

# What makes the player for web pages: the libraries of the clang that is there, those of other releases exclude them. A
# system that has none of them builds all the rest.
web_packages() {
    local release
    release=$(apt-cache depends clang 2>/dev/null | sed -n 's/.*Depends: clang-\([0-9]*\)$/\1/p' | head -n 1)
    [ -n "$release" ] || return 0
    printf '%s\n' wasi-libc "libc++-$release-dev-wasm32" "libc++abi-$release-dev-wasm32" \
        "libclang-rt-$release-dev-wasm32" "lld-$release"
}

is_installed() {
    dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

# Installs what is missing, and the packages that are named besides; of those, what the system does not have is left out.
install_packages() {
    command -v dpkg-query >/dev/null || return 0 # another system: its own packages are found, or cmake says what is missing
    local missing=() names package
    for package in $(web_packages) "$@"; do
        ! is_installed "$package" && apt-cache show "$package" >/dev/null 2>&1 && missing+=("$package")
    done
    for names in "${zem_packages[@]}"; do
        is_installed "${names%%|*}" || is_installed "${names##*|}" || missing+=("$names")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing packages: ${missing[*]}"
    local root=()
    [ "$(id -u)" -eq 0 ] || root=(sudo)
    "${root[@]}" apt-get update -qq
    for names in "${missing[@]}"; do
        package=${names%%|*}
        apt-cache show "$package" >/dev/null 2>&1 || package=${names##*|}
        "${root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "$package" >/dev/null
    done
}

# Configures and builds a preset, and says how far it is; all that the compiler says goes into build/PRESET/build.log, too.
build_preset() {
    local log=build/$1/build.log
    echo "Building the $1 preset in build/$1"
    cmake --preset "$1" >/dev/null
    NINJA_STATUS='[%p %f of %t, %e s] ' cmake --build --preset "$1" ${2:+--target "${@:2}"} 2>&1 | tee "$log" | show_progress ||
        { echo "The build failed; $log tells all of it." >&2; return 1; }
}

# Turns the build's lines into one line that counts up, or into a line for every ten per cent where the output is no
# terminal. Whatever else is said stays.
show_progress() {
    local line shown=-10
    while IFS= read -r line; do
        if [[ ! $line =~ ^\[\ *([0-9]+)%\ ([^]]*)\] ]]; then
            echo "$line"
        elif [ -t 1 ]; then
            printf '\r  %s%% (%s)\033[K' "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}"
            [ "${BASH_REMATCH[1]}" -lt 100 ] || echo
        elif [ "${BASH_REMATCH[1]}" -ge $((shown + 10)) ]; then
            shown=${BASH_REMATCH[1]}
            echo "  $shown% (${BASH_REMATCH[2]})"
        fi
    done
}

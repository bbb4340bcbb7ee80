#!/usr/bin/env bash
# Builds the Debian package and tries it in a fresh root: packaging/test.sh, as root, on Debian or Ubuntu. Needs
# debootstrap; everything that is installed in the fresh root goes away with it. Leaves the package and a picture of the
# window in build/package.
set -euo pipefail
cd "$(dirname "$0")/.."
[ "$(id -u)" -eq 0 ] || { echo "Only root can make a fresh root." >&2; exit 2; }
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8

say() { echo; echo "== $*"; }
die() { echo "FAILED: $*" >&2; exit 1; }

say "Building the package"
output=$PWD/build/package
rm -rf "$output"
cmake --preset release >/dev/null
cmake --build --preset release --target zem veldt web_samples >/dev/null
cpack --config build/release/CPackConfig.cmake -B "$output" >/dev/null
package=$(ls "$output"/*.deb)
echo "$(basename "$package"): $(stat -c %s "$package") bytes"

# Its release and mirror are those of this machine.
release=$(. /etc/os-release && echo "$VERSION_CODENAME")
mirror=$(apt-get indextargets --format '$(CODENAME) $(REPO_URI)' | awk -v r="$release" '$1 == r { print $2; exit }')
work=$(mktemp -d)
root=$work/root
author=/srv/author # the folder of its user
trap 'rm -rf --one-file-system "$work"' EXIT

say "Making a fresh root of $release with nothing but the essential packages"
debootstrap --variant=minbase "$release" "$root" "$mirror" >"$work/log" 2>&1 || { tail "$work/log"; die debootstrap; }
mkdir "$root$author"
cp "$package" "$root$author/zem.deb"

# Runs a command in the fresh root; processes that it leaves behind end with it.
inside() {
    # shellcheck disable=SC2016
    unshare --mount --pid --fork sh -c 'mount -t proc proc "$0/proc" && exec chroot "$0" "$@"' "$root" \
        env HOME=$author PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"
}
apt() {
    inside apt-get -y -qq -o Dpkg::Use-Pty=0 "$@" >"$work/log" 2>&1 || { tail "$work/log"; die "apt-get $*"; }
}
install() { apt install --no-install-recommends "$@"; }
purge() { apt purge zem; }

# Every file with its content, but for what the package tools and tests write down.
snapshot() {
    inside find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp -o -path $author -o \
        -path /var/cache -o -path /var/log -o -path /var/lib/dpkg -o -path /var/lib/apt \) -prune -o \
        \( -type f -exec sha256sum {} + -o -printf '%y %p %l\n' \) | sort -k2
}

say "Installing it: its dependencies must be enough to run it"
install $author/zem.deb
inside zem --version
inside zem format /usr/share/zem/samples/lighthouse.kel $author/out.kel
inside zem print /usr/share/zem/samples/lighthouse.kel >"$work/sample"
inside zem print $author/out.kel >"$work/copy"
cmp "$work/sample" "$work/copy" || die "the saved sample is another"
echo "format: the saved sample prints the same $(wc -l <"$work/copy") lines"
inside zem publish /usr/share/zem/samples/cottage.kel $author/cottage.html
[ -s "$root/usr/share/doc/zem/samples/lighthouse.html" ] || die "the samples are not there as web pages"
echo "publish: a page of $(stat -c %s "$root$author/cottage.html") bytes"
printf '> look\n' >"$root$author/lines"
inside veldt --text /usr/share/zem/samples/lighthouse.kel --lines $author/lines | grep -q "^> look" || die "no game is played"
inside grep -q InstalledVer /etc/xdg/Veldt/Veldt.conf || die "the editor is not told that games can be played"
status=0
inside env QT_QPA_PLATFORM=offscreen timeout 4 zem $author/out.kel 2>"$work/log" || status=$?
[ "$status" -eq 124 ] || { cat "$work/log"; die "the editor ended by itself with status $status"; }
echo "editor: was still running after 4 seconds"

say "Installing it once more beside the tools of a desktop"
purge
install desktop-file-utils hicolor-icon-theme libglib2.0-bin shared-mime-info xdg-utils xvfb
inside update-desktop-database # the state that any desktop's machine is in
snapshot >"$work/before"
install $author/zem.deb
snapshot >"$work/installed"
inside dpkg -L zem | while read -r file; do [ -f "$root$file" ] && stat -c %s "$root$file"; done |
    awk '{ sum += $1 } END { printf "installed: %d bytes in %d files\n", sum, NR; exit sum >= 25e6 }' ||
    die "the installed package is not under 25 MB"

name="$author/the last one.kel"
cp "$root$author/out.kel" "$root$name"
type=$(inside gio info -a standard::content-type "$name" | awk '/standard::content-type:/ { print $2 }')
default=$(inside xdg-mime query default "$type")
echo "type of .kel files: $type, opened by: $default"
[ "$type $default" = "application/x-kel-game zem.desktop" ] || die "the desktop does not know .kel files"
inside gio mime "$type"

say "Opening a game as a file manager does, on a display of its own"
# shellcheck disable=SC2016
inside sh -c 'mkdir /tmp/screen && Xvfb -displayfd 1 -screen 0 1024x768x24 -fbdir /tmp/screen >/tmp/display 2>/dev/null &
    sleep 2
    DISPLAY=:$(cat /tmp/display) gio open "$0" >/dev/null 2>&1 &
    sleep 5
    cp /tmp/screen/Xvfb_screen0 "$HOME/window.xwd"
    pidof zem >/dev/null && tr "\0" "\n" <"/proc/$(pidof zem)/cmdline"' "$name" || die "no window was opened"
cp "$root$author/window.xwd" "$output"
convert "xwd:$output/window.xwd" "$output/window.png" 2>/dev/null && rm "$output/window.xwd"
echo "picture: build/package/$(basename "$output"/window.*)"

say "Removing it"
purge
snapshot >"$work/after"
diff "$work/before" "$work/after" || die "something was left behind"
echo "all $(wc -l <"$work/before") files and folders are as before; the package had added or changed" \
    "$(diff "$work/before" "$work/installed" | grep -c '^>')"

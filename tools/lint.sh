#!/usr/bin/env bash
# Checks the format and the style of all sources: tools/lint.sh [FILE...]. Needs clang-format and clang-tidy, whose
# results depend on their release; the settings are made for release 14.
set -euo pipefail
cd "$(dirname "$0")/.."

git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
cmake --preset lint >/dev/null
cmake --build --preset lint >/dev/null # makes the headers of the forms, and compiles nothing
files=("$@")
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(git ls-files 'src/*.cpp' 'bench/*.cpp')
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -n 1 clang-tidy -p build/lint --quiet

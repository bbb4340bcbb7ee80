#!/usr/bin/env bash
# Builds Zem and opens it: ./run.sh [FILE]. Without FILE it opens a sample game.
set -euo pipefail
start_folder=$PWD
cd "$(dirname "$0")"
. tools/packages.sh

file=$PWD/samples/lighthouse.kel
if [ $# -gt 0 ]; then
    case $1 in
        /*) file=$1 ;;
        *) file=$start_folder/$1 ;;
    esac
fi

install_packages
build_preset release zem veldt
build/release/veldt --set-up # for this user, once: the editor then knows that games can be played
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
    echo "There is no display to open a window on, so here is the game as text:"
    exec build/release/zem print "$file"
fi
echo "Opening $file"
exec build/release/zem "$file"

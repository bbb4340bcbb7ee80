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
# The player for web pages takes a minute or two, for which nobody waits: it is built when the editor has opened.
(
    sleep 10
    nice -n 19 cmake --build --preset release --target web_samples >build/release/web_player.log 2>&1
) </dev/null >/dev/null 2>&1 &
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
    echo "There is no display to open a window on, so here is the game as text:"
    exec build/release/zem print "$file"
fi
echo "Opening $file"
exec build/release/zem "$file"

#!/bin/bash
# Takes a picture of every window, in light and dark colours, at 100 and 200 per cent, into FOLDER/light-1,
# light-2, dark-1 and dark-2. Needs no display.
#   tools/screenshots.sh FOLDER
set -euo pipefail
folder=$(realpath -m "${1:?usage: tools/screenshots.sh FOLDER}")
cd "$(dirname "$0")/.."
. tools/packages.sh
build_preset release
# On a screen large enough for windows of twice their size.
screen=$(mktemp)
trap 'rm -f "$screen"' EXIT
cat >"$screen" <<END
{"screens": [{"name": "screen", "x": 0, "y": 0, "width": 2560, "height": 1600,
              "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]}
END
export QT_QPA_PLATFORM="offscreen:configfile=$screen"
for look in light dark; do
    for scale in 1 2; do
        echo "Taking pictures: $look colours, $scale times their size"
        QT_SCALE_FACTOR=$scale build/release/tools/Screenshots "$folder/$look-$scale" "$look" 2> >(grep -v -e propagateSizeHints -e XDG_RUNTIME_DIR >&2)
    done
done
echo "The pictures are in $folder"

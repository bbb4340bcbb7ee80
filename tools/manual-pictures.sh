#!/bin/bash
# Takes the pictures of the manual, data/manual, anew from the samples. Needs no display.
#   tools/manual-pictures.sh [FOLDER]
set -euo pipefail
folder=$(realpath -m "${1:-$(dirname "$0")/../data/manual}")
cd "$(dirname "$0")/.."
. tools/packages.sh
build_preset release
mkdir -p "$folder"
QT_QPA_PLATFORM=offscreen build/release/tools/ManualPictures "$folder" 2> >(grep -v -e propagateSizeHints -e XDG_RUNTIME_DIR >&2)
python3 tools/page_pictures.py build/release/zem samples/lighthouse.kel "$folder"
echo "The pictures are in $folder"

#!/usr/bin/env bash
# Builds the release and the sanitizer preset and runs every test in both; in the latter each fuzz target, too, for a
# fixed number of inputs.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

install_packages chromium # in which web pages are tried
for preset in release dev; do
    build_preset "$preset"
    echo "Testing the $preset preset"
    ctest --preset "$preset" --parallel "$(nproc)"
done

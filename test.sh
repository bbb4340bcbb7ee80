#!/usr/bin/env bash
# Builds the release and the sanitizer preset and runs every test in both; then each fuzz target for a fixed number of
# inputs.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

install_packages
for preset in release dev fuzz; do
    build_preset "$preset"
    echo "Testing the $preset preset"
    ctest --preset "$preset" --parallel "$(nproc)"
done

#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds everything and runs every test twice: an optimised build, then a
# debug build under AddressSanitizer and UndefinedBehaviorSanitizer. The
# Debian package is built from the optimised build and checked in between.
# Last, each of the five fuzz targets runs for 50 seconds, under five
# minutes in all (TAV_FUZZ_SECONDS to change it).
# Exits non-zero on the first failure.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh

for preset in release asan; do
  echo "=== $preset ==="
  cmake --preset "$preset"
  cmake --build --preset "$preset"
  ctest --preset "$preset"
  if [ "$preset" = release ]; then
    # The Debian package, built from the release build and checked unpacked.
    echo "=== package ==="
    scripts/check-package.sh
  fi
done

echo "=== fuzz ==="
scripts/fuzz.sh "${TAV_FUZZ_SECONDS:-50}"

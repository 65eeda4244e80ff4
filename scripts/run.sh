#!/usr/bin/env bash
# Builds the programs and shows the demo family file.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target tav-cli

build/release/tav-cli info samples/demo.ged

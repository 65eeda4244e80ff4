#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Saves pictures of the viewer's windows on a GEDCOM file (default: the demo
# file) to screenshots/, under Xvfb when there is no display.
set -euo pipefail
cd "$(dirname "$0")/.."
file="${1:-samples/demo.ged}"
scripts/deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target tav-screenshots >/dev/null
run=()
if [ -z "${DISPLAY:-}" ]; then run=(xvfb-run -a -s "-screen 0 1280x1024x24"); fi
"${run[@]}" build/release/tav-screenshots "$file" screenshots

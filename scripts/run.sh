#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the viewer and opens it on the demo family file. Without a display
# it runs the viewer under Xvfb, saves a picture of the main window to
# screenshots/main-window.png and exits.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake --preset release >/dev/null
cmake --build --preset release --target tav

demo="$PWD/samples/demo.ged"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec build/release/tav "$demo"
fi

mkdir -p screenshots
shot="$PWD/screenshots/main-window.png"
rm -f "$shot"
TAV_SCREENSHOT="$shot" xvfb-run -a -s "-screen 0 1280x1024x24" build/release/tav "$demo"
if [ ! -s "$shot" ]; then
  echo "run.sh: the viewer did not save $shot" >&2
  exit 1
fi
echo "No display: the viewer ran under Xvfb; its main window is in $shot"

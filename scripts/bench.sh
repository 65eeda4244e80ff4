#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and runs the benchmarks, then measures the peak memory of tav-cli
# on a generated file of 40000 individuals.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake --preset release >/dev/null
cmake --build --preset release

for b in build/release/bench/bench-*; do
  echo "=== $(basename "$b")"
  if [ "$(basename "$b")" = bench-viewer-start ] && [ -z "${DISPLAY:-}" ]; then
    # The viewer needs a display; a virtual one when there is none.
    xvfb-run -a -s "-screen 0 1280x1024x24" "$b" "$@"
  else
    "$b" "$@"
  fi
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
build/release/tav-generate 40000 "$work/g40000.ged"
if [ -x /usr/bin/time ]; then
  /usr/bin/time -f "tav-cli info on 40000 individuals: peak resident memory %M KB, %e s" \
    build/release/tav-cli info "$work/g40000.ged" >/dev/null
fi

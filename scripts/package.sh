#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the Debian package dist/tav_VERSION_ARCH.deb from the release build
# with CPack: the files of `cmake --install` under /usr, stripped, with the
# dependencies dpkg-shlibdeps finds for the libraries the programs link.
# Prints the package's path.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/deps.sh
cmake --preset release >/dev/null
cmake --build --preset release

rm -rf build/release/package
(cd build/release && cpack -G DEB -B package >/dev/null)
mkdir -p dist
rm -f dist/tav_*.deb
cp build/release/package/tav_*.deb dist/
ls dist/tav_*.deb

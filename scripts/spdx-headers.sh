#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Gives every source file of the project the licence's SPDX line at its head
# where it lacks it: "// SPDX-License-Identifier: GPL-3.0-or-later" first in
# C++ files, "# ..." first in CMake files and second in scripts (after the
# "#!" line). Run it again after merging a branch with new files.
# --check lists the files without it and exits 1 when there are any (the
# test LicenceHeaderTest does the same).
set -euo pipefail
cd "$(dirname "$0")/.."

licence="SPDX-License-Identifier: GPL-3.0-or-later"
check=false
[ "${1:-}" = "--check" ] && check=true

# The project's source files: tracked or new, never the build's.
files() {
  git ls-files --cached --others --exclude-standard -- \
    '*.cpp' '*.h' 'CMakeLists.txt' '*/CMakeLists.txt' '*.cmake' '*.sh' '.ci/run'
}

missing=0
while IFS= read -r file; do
  [ -f "$file" ] || continue
  case "$file" in
    *.cpp | *.h) line="// $licence" ;;
    *) line="# $licence" ;;
  esac
  first=$(head -n 1 "$file")
  if [[ $first == "#!"* ]]; then
    [ "$(sed -n 2p "$file")" = "$line" ] && continue
    $check || sed -i "1a $line" "$file"
  else
    [ "$first" = "$line" ] && continue
    $check || sed -i "1i $line" "$file"
  fi
  missing=$((missing + 1))
  echo "$file"
done < <(files)

if $check; then
  [ $missing -eq 0 ] || { echo "spdx-headers: $missing files lack \"$licence\"" >&2; exit 1; }
else
  echo "spdx-headers: the line added to $missing files"
fi

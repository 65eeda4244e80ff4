#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs two tav-cli binaries over the same commands on every file of folders
# of GEDCOM files (default ../shared/gedcom) and compares what they print,
# standard output, standard error and exit status, byte for byte. Used to
# show that a change of structure changed no output.
#
#   scripts/compare-cli.sh OLD_TAV_CLI NEW_TAV_CLI [FOLDER_OR_FILE...]
#
# Files written (the HTML reports, the SVG pictures) are compared too.
# Exits 0 when every run printed the same, 1 (with the differences) otherwise.
set -uo pipefail

old=${1:?usage: compare-cli.sh OLD_TAV_CLI NEW_TAV_CLI [FOLDER_OR_FILE...]}
new=${2:?usage: compare-cli.sh OLD_TAV_CLI NEW_TAV_CLI [FOLDER_OR_FILE...]}
shift 2
[ $# -gt 0 ] || set -- "$(dirname "$0")/../../shared/gedcom"
files=()
for place in "$@"; do
  if [ -d "$place" ]; then
    for file in "$place"/*.ged; do [ -e "$file" ] && files+=("$(realpath "$file")"); done
  else
    files+=("$(realpath "$place")")
  fi
done
old=$(realpath "$old")
new=$(realpath "$new")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Each binary runs in a folder of its own holding the same help.txt, with the
# same empty settings, so nothing but the binaries differs.
for side in old new; do
  mkdir -p "$work/$side/config"
  cp "$(dirname "$old")/help.txt" "$work/$side/help.txt" 2>/dev/null || true
done

runs=0
differences=0

compare() {
  runs=$((runs + 1))
  local status
  for side in old new; do
    local bin=$old
    [ "$side" = new ] && bin=$new
    rm -f "$work/$side/out".*
    (cd "$work/$side" && XDG_CONFIG_HOME="$work/$side/config" "$bin" "$@" >"$work/$side.out" 2>"$work/$side.err")
    status=$?
    echo "$status" >>"$work/$side.out"
    # A file the command wrote, without the folder it lies in.
    for written in "$work/$side"/out.*; do
      [ -e "$written" ] && sed "s#$work/$side##g" "$written" >>"$work/$side.out"
    done
    sed -i "s#$work/$side##g" "$work/$side.out" "$work/$side.err"
  done
  if ! cmp -s "$work/old.out" "$work/new.out" || ! cmp -s "$work/old.err" "$work/new.err"; then
    differences=$((differences + 1))
    echo "--- differs: tav-cli $*"
    diff "$work/old.out" "$work/new.out" | head -20
    diff "$work/old.err" "$work/new.err" | head -20
  fi
}

# Slots worth looking at in a table of `count` records.
slots() {
  local count=$1
  for s in 0 1 2 3 5 8 13 21 50 99 100 101 500 999 1000 1234 2000 "$count" $((count + 1)) 40001; do
    echo "$s"
  done | sort -un
}

for file in "${files[@]}"; do
  compare info "$file"
  caption=$("$new" info "$file" 2>/dev/null | head -1)
  individuals=$(sed -E 's/.*\(([0-9]+) individuals, ([0-9]+) families\)$/\1/' <<<"$caption")
  families=$(sed -E 's/.*\(([0-9]+) individuals, ([0-9]+) families\)$/\2/' <<<"$caption")
  for kind in ALLINDS ALLFAMS ALLSOUR ALLNOTS ALLOCCU ALLBIRT ALLDEAT ALLMARR; do
    compare show "$file" "$kind"
    compare show "$file" "$kind" --csv
  done
  for kind in Basic GivenNames ChildNaming GedcomIntegrity; do
    compare report "$file" "$kind"
  done
  for s in 1 2 5 50; do
    for walk in most eldest first; do
      compare tree "$file" "$s" --walk "$walk"
    done
    compare ancestors "$file" "$s" --generations 10
    compare html "$file" "$s" out.htm
    compare html "$file" "$s" out.htm --ancestors
    compare export "$file" "$s" out.svg
  done
  for s in $(slots "$individuals"); do
    compare show "$file" IND "$s"
    compare show "$file" IND "$s" --csv
    compare descendants "$file" "$s"
    compare --surname-style 5 --surname-posn 1 show "$file" IND "$s"
  done
  for s in $(slots "$families"); do
    compare show "$file" FAM "$s"
  done
  for s in 0 1 2 3 10; do
    compare show "$file" SOU "$s"
    compare show "$file" NOT "$s"
  done
  for pair in "1 2" "2 1" "1 3" "4 1" "5 9" "10 20" "3 3" "$individuals 1"; do
    # shellcheck disable=SC2086
    compare relate "$file" $pair
  done
  for text in "" "a" "smith john" "I1" "KING" "1850" "de la" "a b c d e"; do
    compare find "$file" "$text"
    compare find "$file" "$text" --case
    compare find "$file" "$text" --kinds FN
  done
  for q in 0 1 2 3 7 9 10 11 12 13 14; do
    compare query "$file" "$q"
  done
  for q in 4 5 6 8; do
    for n in 0 1 2 5 "x"; do
      compare query "$file" "$q" "$n"
    done
  done
done

for key in QuickStart List Find Tree Options Nothing; do
  compare help "$key"
done
compare
compare info
compare nonsense x.ged
compare show x.ged
compare relate "${files[0]:-x.ged}" a b

echo "$runs runs compared, $differences differ"
[ "$differences" -eq 0 ]

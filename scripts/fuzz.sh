#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs every libFuzzer target of fuzz/ for SECONDS each (default 60), built
# by the "fuzz" preset (clang, AddressSanitizer and UndefinedBehaviorSanitizer).
# Each starts from seeds made now from the real GEDCOM files of
# ../shared/gedcom (when present) and from the generator, plus the corpus it
# grew in earlier runs (build/fuzz/fuzzing/corpus; nothing is copied into the
# project). Prints the executions and the coverage (cov, ft) of each target.
# Exits non-zero when a target finds a crash, a hang, a leak or a sanitizer
# report; the input is kept in build/fuzz/fuzzing/findings. TAV_FUZZ_RUNS
# stops each target after that many executions, if it comes first.
#
#   scripts/fuzz.sh [SECONDS] [TARGET...]     (TARGET: gedcom, dates, names, settings, view)
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(gedcom dates names settings view)

scripts/deps.sh
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

build=$PWD/build/fuzz  # absolute: the view target works in a folder of its own
work=$build/fuzzing
shared=../shared/gedcom
mkdir -p "$work/corpus" "$work/findings" "$work/logs"
seeds=$(mktemp -d)
trap 'rm -rf "$seeds"' EXIT

# Generated files: a few sizes and seeds, both line ends, records in order
# and shuffled.
generated() {
  local n seed
  mkdir -p "$1"
  for n in 2 5 12 30; do
    for seed in 1 2; do
      "$build/tav-generate" "$n" "$1/generated-$n-$seed.ged" --seed "$seed"
      "$build/tav-generate" "$n" "$1/generated-$n-$seed-lf-shuffled.ged" --seed "$seed" --lf --shuffle
    done
  done
}

# Pieces of the real files: the header, then about twenty records (at most
# about 3 KB), then the trailer, so each piece is a small file of its own.
real_pieces() {
  local file
  for file in "$shared"/*.ged; do
    [ -e "$file" ] || return 0
    awk -v out="$1/$(basename "$file" .ged)" '
      function flush() {
        if (body != "") { printf "%s%s0 TRLR\n", head, body > (out "-" pieces ".ged"); close(out "-" pieces ".ged"); pieces++ }
        body = ""; records = 0
      }
      /^(\xef\xbb\xbf)?0 / { level0++ }
      level0 == 1 { head = head $0 "\n"; next }
      /^0 / { if (records >= 20 || length(body) > 3000) flush(); records++ }
      /^0 TRLR/ { next }
      { body = body $0 "\n" }
      END { flush() }' "$file"
  done
}

# The values of one tag in the real and the generated files, one a line.
tag_values() {
  local tag=$1 folder=$2
  cat "$shared"/*.ged "$folder"/*.ged 2>/dev/null | tr -d '\r' | sed -n "s/^[0-9] $tag //p" | sort -u
}

seed_gedcom() {
  generated "$1"
  real_pieces "$1"
  # A UTF-16 file of each byte order.
  if command -v iconv >/dev/null; then
    iconv -f UTF-8 -t UTF-16LE "$1/generated-5-1.ged" | { printf '\xff\xfe'; cat; } >"$1/utf16le.ged"
    iconv -f UTF-8 -t UTF-16BE "$1/generated-5-1.ged" >"$1/utf16be.ged"
  fi
}

seed_dates() {
  generated "$seeds/dates-source"
  tag_values DATE "$seeds/dates-source" | awk "NR <= 400" | split -l 2 - "$1/pair-"
  printf '1850\n2147483647\n' >"$1/large"
  printf 'ABT 1850\n12-MAR-1900\n\x80' >"$1/qualified"
  rm -rf "$seeds/dates-source"
}

seed_names() {
  generated "$seeds/names-source"
  local n=0 name
  while IFS= read -r name; do
    printf '%b%s' "\\x0$((n % 8))\\x0$((n % 3))" "$name" >"$1/name-$n"
    n=$((n + 1))
  done < <(tag_values NAME "$seeds/names-source" | awk "NR <= 300")
  printf '\x02\x01John William /Adams/ II' >"$1/suffix"
  rm -rf "$seeds/names-source"
}

seed_settings() {
  cat >"$1/full.reg" <<'REG'
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\Software\Wendrake\Tav\General]
" 1fPrev"="/home/ann/family.ged"
" 2fPrev"="C:\\Genealogy\\royal92.ged"
" 3fPrev"=""
"AutoLoadFile"="/home/ann/family.ged"
"SurnameStyle"=dword:00000005
"SurnamePosn"=dword:00000001
"dirLast"="/home/ann"

[HKEY_CURRENT_USER\Software\Wendrake\Tav\Tree]
"ViewDates"=hex:ff,ff
"ViewSurnames"=hex:00,00
"ViewDescendentMark"=hex:ff,ff
"ViewMainLine"=hex:00,00
"ViewNoSpouse"=hex:00,00
"BackColour"=hex:ff,ff
"FontSize"=dword:00000003

[HKEY_CURRENT_USER\Software\Wendrake\Tav\Window]
"MainLeft"=dword:00000064
"MainTop"=dword:00000032
"MainWidth"=dword:00000258
"MainHeight"=dword:00000104
"MainMaximized"=hex:00,00
REG
  cat >"$1/forgiving.reg" <<'REG'
REGEDIT4
; a comment
[HKEY_CURRENT_USER\Software\Wendrake\Tav\General]
"SurnameStyle" = DWORD:0000ffff
"AutoLoadFile"=hex(1):2f,00,61,\
  00
"dirLast"=-
[-HKEY_CURRENT_USER\Software\Wendrake\Tav\Old]
[HKEY_CURRENT_USER\Software\Wendrake\Tav\Tree
"FontSize"=dword:zz
@="default"
REG
  printf '[General]\r\nSurnameStyle=3\r\n[Tree]\r\nFontSize=1\r\n' >"$1/ini.ini"
  if command -v iconv >/dev/null; then
    iconv -f UTF-8 -t UTF-16LE "$1/full.reg" | { printf '\xff\xfe'; cat; } >"$1/utf16.reg"
  fi
}

# Views of the file the view target loads (tav-generate 200 --seed 7), made
# by tav-cli with each walk from a few people, and a few damaged ones.
seed_view() {
  local people=$seeds/view-people.ged slot walk
  "$build/tav-generate" 200 "$people" --seed 7
  for slot in 1 2 17 60 133 200; do
    for walk in most eldest first; do
      "$build/tav-cli" tree "$people" "$slot" --walk "$walk" >"$1/view-$slot-$walk.gds" || true
    done
  done
  head -c 300 "$1/view-1-most.gds" >"$1/cut-short.gds"
  sed 's/,/,,/3' "$1/view-2-most.gds" >"$1/extra-comma.gds"
  printf 'TREEVIEW\r\n"x"\r\n1,0\r\n' >"$1/tiny.gds"
  rm -f "$people"
}

max_len() {
  case $1 in
    gedcom) echo 4096 ;;
    view) echo 8192 ;;
    settings) echo 4096 ;;
    *) echo 256 ;;
  esac
}

summary=()
failed=0
for target in "${targets[@]}"; do
  program=$build/fuzz/fuzz-$target
  [ -x "$program" ] || { echo "fuzz.sh: no target $target" >&2; exit 2; }
  mkdir -p "$seeds/$target" "$work/corpus/$target"
  "seed_$target" "$seeds/$target"
  dict=()
  [ -f "fuzz/$target.dict" ] && dict=(-dict="fuzz/$target.dict")
  log=$work/logs/$target.log
  echo "=== fuzz-$target: $(find "$seeds/$target" -type f | wc -l) seeds, ${seconds}s"
  status=0
  runs=()
  [ -n "${TAV_FUZZ_RUNS:-}" ] && runs=(-runs="$TAV_FUZZ_RUNS")
  "$program" "${dict[@]}" "${runs[@]}" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=3072 \
    -max_len="$(max_len "$target")" -print_final_stats=1 \
    -artifact_prefix="$work/findings/$target-" \
    "$work/corpus/$target" "$seeds/$target" >"$log" 2>&1 || status=$?
  executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  coverage=$(grep -Eo 'cov: [0-9]+ ft: [0-9]+' "$log" | tail -1)
  line="fuzz-$target: ${executions:-?} executions, ${coverage:-no coverage line}"
  if [ "$status" -ne 0 ]; then
    failed=1
    line="$line, FOUND A PROBLEM (exit $status; see $log)"
    grep -E 'ERROR|runtime error|SUMMARY|fuzz-[a-z]+:' "$log" | head -5 >&2 || true
    ls "$work/findings/$target-"* 2>/dev/null >&2 || true
  fi
  echo "$line"
  summary+=("$line")
done

echo "=== summary"
printf '%s\n' "${summary[@]}"
exit "$failed"

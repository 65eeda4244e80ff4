#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The hostile user's cases, run against the built programs: pictures of any
# size, pipes and devices, file names in any bytes, over-long values, huge
# and damaged settings, extreme views, tav-cli's refusals. Each case prints
# one line, PASS or FAIL, with what was seen (time, peak memory, message).
# The viewer runs offscreen (TAV_SCREENSHOT answers its message boxes); the
# cases that need a window's commands run their widget and logic tests.
# Usage: scripts/hostile-sweep.sh [BUILD_DIR]   (default build/release)
set -uo pipefail
cd "$(dirname "$0")/.." || exit 2
build=$(realpath "${1:-build/release}")
cli="$build/tav-cli"
viewer="$build/tav"
shared=../shared/gedcom/kennedy.ged
for program in "$cli" "$viewer"; do
  [ -x "$program" ] || { echo "hostile-sweep: build $program first" >&2; exit 2; }
done
[ -f "$shared" ] || shared=samples/demo.ged
shared=$(realpath "$shared")

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 2
export XDG_CONFIG_HOME="$work/config" QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$work/runtime"
mkdir -p config/Wendrake runtime && chmod 700 runtime
failures=0

# result NAME CONDITION DETAIL: one line per case.
result() {
  if [ "$2" = 0 ]; then
    printf 'PASS  %-44s %s\n' "$1" "$3"
  else
    printf 'FAIL  %-44s %s\n' "$1" "$3"
    failures=$((failures + 1))
  fi
}
# run SECONDS COMMAND...: runs with a time limit; sets status, out, err,
# secs and peakmb.
run() {
  local limit=$1
  shift
  /usr/bin/time -o time.txt -f "%e %M" timeout "$limit" "$@" >out.txt 2>err.txt
  status=$?
  out=$(cat out.txt)
  err=$(cat err.txt)
  read -r secs kb < <(tail -1 time.txt)
  peakmb=$((${kb:-0} / 1024))
}
# ok TEST...: 0 when the test holds, else 1 (for result's CONDITION).
ok() { [ "$@" ] && echo 0 || echo 1; }
family() { # family FILE CHILDREN NAME_LENGTH: a father and his children with long names
  python3 - "$@" <<'PY'
import sys
path, n, length = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
lines = ["0 HEAD", "1 CHAR UTF-8", "0 @I1@ INDI", "1 NAME Ann /Ash/", "1 FAMS @F1@"]
for k in range(n):
    lines += ["0 @I%d@ INDI" % (k + 2), "1 NAME " + chr(97 + k % 26) * length + " /Kid/",
              "1 FAMC @F1@"]
lines += ["0 @F1@ FAM", "1 WIFE @I1@"] + ["1 CHIL @I%d@" % (k + 2) for k in range(n)]
open(path, "w").write("\n".join(lines + ["0 TRLR"]) + "\n")
PY
}

echo "=== pictures"
perl -e 'print "0 HEAD\n1 CHAR UTF-8\n0 \@I1\@ INDI\n1 NAME John /", "A" x 25000,
  "/\n1 FAMS \@F1\@\n0 \@I2\@ INDI\n1 NAME Kid /", "A" x 25000, "/\n1 FAMC \@F1\@\n",
  "0 \@F1\@ FAM\n1 HUSB \@I1\@\n1 CHIL \@I2\@\n0 TRLR\n"' >surname.ged
echo "an old picture" >tree.png
run 60 "$cli" export surname.ged 1 tree.png
result "PNG of a 25000-character surname" \
  "$(ok $status = 0 -a -z "$err" -a "$(head -c 4 tree.png | tail -c 3)" = PNG)" \
  "exit $status, $(file -b tree.png | cut -d, -f2), ${secs}s, ${peakmb} MB, stderr ${#err} bytes"
family wide.ged 60 600
cp tree.png before.png
run 60 "$cli" export wide.ged 1 tree.png
result "PNG too large is refused, old file kept" \
  "$({ [ $status = 1 ] && [ -z "$out" ] && cmp -s tree.png before.png && echo "$err" |
    grep -q '^Cannot save tree.png: the picture would be [0-9]* x [0-9]* pixels (at most 16384 pixels a side and 128 megapixels)\.$'; }; echo $?)" \
  "exit $status: $err"
family scaled.ged 15 600
run 60 "$cli" export scaled.ged 1 scaled.png
result "PNG past 16384 pixels is drawn smaller, noted" \
  "$({ [ $status = 0 ] && file -b scaled.png | grep -q ' 16384 x ' && echo "$err" | grep -q 'is drawn at'; }; echo $?)" \
  "exit $status, $(file -b scaled.png | cut -d, -f2), ${peakmb} MB: $err"
python3 - <<'PY'
lines = ["0 HEAD", "1 CHAR UTF-8"]
n = 90
for g in range(1, n + 1):
    lines += ["0 @I%d@ INDI" % g, "1 NAME Gen%d /Line/" % g, "1 FAMS @F%d@" % g]
    if g > 1:
        lines += ["1 FAMC @F%d@" % (g - 1)]
for k in range(10):
    lines += ["0 @I%d@ INDI" % (1000 + k), "1 NAME " + "Zq" * 300 + " /Kid/", "1 FAMC @F%d@" % n]
for g in range(1, n + 1):
    lines += ["0 @F%d@ FAM" % g, "1 HUSB @I%d@" % g]
    lines += ["1 CHIL @I%d@" % (g + 1)] if g < n else ["1 CHIL @I%d@" % (1000 + k) for k in range(10)]
open("tall.ged", "w").write("\n".join(lines + ["0 TRLR"]) + "\n")
PY
run 120 "$cli" export tall.ged 1 tall.png
result "a large PNG stays under 1 GB of memory" "$(ok $status = 0 -a $peakmb -lt 1024)" \
  "$(file -b tall.png | cut -d, -f2), ${secs}s, peak ${peakmb} MB"
for format in svg pdf; do
  run 60 "$cli" export wide.ged 1 "wide.$format"
  result "$format of that tree is whole" "$(ok $status = 0 -a -s "wide.$format")" \
    "exit $status, $(stat -c %s "wide.$format" 2>/dev/null) bytes"
done
run 60 "$cli" export wide.ged 1 wide.svg
texts=$(grep -o '<text' wide.svg | wc -l)
result "SVG keeps all 61 labels as text" "$(ok "$texts" -ge 61)" "$texts texts"

echo "=== pipes, devices, folders"
mkfifo pipe.ged
run 20 "$cli" info pipe.ged
result "tav-cli on a named pipe nothing writes to" \
  "$(ok $status = 1 -a "$err" = "Cannot open pipe.ged: nothing writes to this named pipe")" \
  "exit $status after ${secs}s: $err"
(sleep 0.5 && cat "$shared" >pipe.ged) &
run 20 "$cli" info pipe.ged
wait
result "tav-cli on a named pipe a program writes to" \
  "$(ok $status = 0 -a "$(head -1 out.txt | grep -c '(.* individuals')" = 1)" "$(head -1 out.txt)"
direct=$("$cli" info "$shared" | head -1 | sed 's/^.* (/(/')
cat "$shared" >stdin.ged
run 20 sh -c "cat stdin.ged | '$cli' info /dev/stdin"
result "cat FILE | tav-cli info /dev/stdin" \
  "$(ok "$(head -1 out.txt)" = "/dev/stdin $direct")" "$(head -1 out.txt)"
gzip -c "$shared" >family.ged.gz
run 20 sh -c "zcat family.ged.gz | '$cli' info /dev/stdin"
result "zcat x.ged.gz | tav-cli info /dev/stdin" \
  "$(ok "$(head -1 out.txt)" = "/dev/stdin $direct")" "$(head -1 out.txt)"
run 20 bash -c "'$cli' info <(cat '$shared')"
result "tav-cli info <(cat FILE)" "$(ok "$(head -1 out.txt | sed 's/^.* (/(/')" = "$direct")" \
  "$(head -1 out.txt)"
run 60 "$cli" info /dev/zero
result "tav-cli info /dev/zero refused past 2 GB" \
  "$(ok $status = 1 -a "$err" = "Cannot open /dev/zero: the file is too large to read (2048 MB; at most 2047 MB)")" \
  "exit $status after ${secs}s, peak ${peakmb} MB: $err"
run 20 "$cli" info "$work"
result "tav-cli info FOLDER" "$(ok $status = 1 -a "$err" = "Cannot open $work: Is a directory")" "$err"
rm -f "$XDG_CONFIG_HOME/Wendrake/Tav.reg"
run 20 env TAV_SCREENSHOT=shot.png "$viewer" "$work/pipe.ged"
result "the viewer refuses a named pipe" \
  "$({ echo "$err" | grep -qx "tav: message: Cannot open $work/pipe.ged: it is a named pipe, not a file" && [ $status = 0 ]; }; echo $?)" \
  "exit $status after ${secs}s: $(echo "$err" | grep message)"
run 20 env TAV_SCREENSHOT=shot.png "$viewer" /dev/zero
result "the viewer refuses a device" \
  "$(echo "$err" | grep -qx "tav: message: Cannot open /dev/zero: it is a device, not a file"; echo $?)" \
  "${secs}s: $(echo "$err" | grep message)"
mkfifo temp.gds help.txt
run 20 "$cli" help Find
result "help.txt a named pipe: the installed one is read" "$(ok $status = 0 -a -n "$out")" \
  "exit $status after ${secs}s, $(wc -l <out.txt) lines"
"$build/tests/tav-tests" --gtest_filter='OddFilesTest.ANamedPipeKeepsNeitherProgramWaiting' >gtest.txt 2>&1
result "temp.gds or a chosen view a named pipe: Error 53" "$(grep -q '\[  PASSED  \] 1 test' gtest.txt; echo $?)" \
  "OddFilesTest.ANamedPipeKeepsNeitherProgramWaiting"
rm -f temp.gds help.txt

echo "=== file names in any bytes"
odd=$'k\xff\xfe.ged'
cp "$shared" "$odd"
run 20 "$cli" info "$odd"
result "tav-cli info on a name with bytes FF FE" \
  "$(ok $status = 0 -a "$(head -1 out.txt)" = "k$(printf '\xef\xbf\xbd\xef\xbf\xbd').ged $direct")" \
  "exit $status: $(head -1 out.txt)"
run 20 "$cli" html "$odd" 1 $'report\xfe.htm'
result "tav-cli html writes to a name of any bytes" "$(ok $status = 0 -a -s $'report\xfe.htm')" "$out"
rm -f "$XDG_CONFIG_HOME/Wendrake/Tav.reg"
run 20 env TAV_SCREENSHOT=shot.png TAV_STARTUP_TIME=1 "$viewer" "$work/$odd"
result "the viewer opens it and shows it" \
  "$(echo "$err" | grep -q "caption \"$work/k$(printf '\xef\xbf\xbd\xef\xbf\xbd').ged ("; echo $?)" \
  "$(echo "$err" | grep caption)"
result "the recent-file list keeps its bytes" \
  "$(grep -q '" 1fPrev"=hex(1):.*6b,ff,fe,2e,67,65,64,00' "$XDG_CONFIG_HOME/Wendrake/Tav.reg"; echo $?)" \
  "$(grep ' 1fPrev' "$XDG_CONFIG_HOME/Wendrake/Tav.reg")"
"$build/tests/tav-tests" --gtest_filter='OddFilesTest.AFileNameInAnyBytesOpensAndStaysInTheRecentList' >gtest.txt 2>&1
result "... and opens again from the recent-file list" "$(grep -q '\[  PASSED  \] 1 test' gtest.txt; echo $?)" \
  "OddFilesTest.AFileNameInAnyBytesOpensAndStaysInTheRecentList"

echo "=== over-long values"
perl -e 'print "0 HEAD\n1 CHAR UTF-8\n0 \@I1\@ INDI\n1 NAME John /", "B" x (2 * 1024 * 1024),
  "/\n1 FAMS \@F1\@\n0 \@I2\@ INDI\n1 NAME Kid /X/\n1 FAMC \@F1\@\n0 \@F1\@ FAM\n1 HUSB \@I1\@\n",
  "1 CHIL \@I2\@\n0 TRLR\n"' >line2m.ged
run 30 "$cli" info line2m.ged
result "a 2 MB line is cut, one message" \
  "$(ok $status = 0 -a "$err" = "Line 4 is longer than 1 MB; it is cut there.")" "$err"
perl -e 'print "0 HEAD\n1 CHAR UTF-8\n0 \@I1\@ INDI\n1 NAME John /", "B" x (200 * 1024 * 1024),
  "/\n1 FAMS \@F1\@\n0 \@I2\@ INDI\n1 NAME Kid /X/\n1 FAMC \@F1\@\n0 \@F1\@ FAM\n1 HUSB \@I1\@\n",
  "1 CHIL \@I2\@\n0 TRLR\n"' >line200m.ged
for command in "relate line200m.ged 1 2" "html line200m.ged 1 long.htm" "tree line200m.ged 1" \
  "export line200m.ged 1 long.png" "show line200m.ged ALLINDS"; do
  # shellcheck disable=SC2086
  run 120 "$cli" $command
  result "200 MB name: ${command%% *}" \
    "$(ok $status = 0 -a "$err" = "Line 4 is longer than 1 MB; it is cut there." -a $peakmb -lt 1024)" \
    "exit $status, ${secs}s, peak ${peakmb} MB, stderr $(wc -c <err.txt) bytes"
done
perl -e 'print "0 HEAD\n1 CHAR UTF-8\n0 \@I1\@ INDI\n1 NAME John /", "B" x 10000000, "/\n0 TRLR\n"' >name10m.ged
run 60 env TAV_SCREENSHOT=shot.png TAV_STARTUP_TIME=1 "$viewer" "$work/name10m.ged"
result "the viewer with a 10 MB name" \
  "$(ok $status = 0 -a $peakmb -lt 300 -a "$(echo "$err" | grep -c 'is cut there')" = 1)" \
  "${secs}s, peak ${peakmb} MB: $(echo "$err" | grep message)"
perl -e 'print "0 HEAD\n1 CHAR UTF-8\n0 \@I1\@ INDI\n1 NAME John /", "B" x 1000000, "/\n0 TRLR\n"' >name1m.ged
run 60 env TAV_SCREENSHOT=shot.png TAV_STARTUP_TIME=1 "$viewer" "$work/name1m.ged"
result "the viewer with a 1 MB name" "$(ok $status = 0 -a $peakmb -lt 300)" \
  "${secs}s, peak ${peakmb} MB, $(echo "$err" | grep -o 'shown [0-9]* ms')"
run 30 "$cli" tree name1m.ged 1
label=$(sed -n 4p out.txt | cut -d'"' -f2)
result "a tree label of a 1 MB name is 500 characters" \
  "$(ok "${#label}" = 500 -a "${label: -3}" = "...")" "${#label} characters, ending ${label: -6}"

echo "=== settings"
reg="$XDG_CONFIG_HOME/Wendrake/Tav.reg"
settings_case() { # NAME EXPECTED-NOTE-PART: runs tav-cli and the viewer on $reg as it is
  cp "$reg" reg.before
  run 30 "$cli" info "$shared"
  local notes
  notes=$(grep -c 'settings file' err.txt)
  local cli_status=$status cli_secs=$secs cli_peak=$peakmb
  run 60 env TAV_SCREENSHOT=shot.png "$viewer" "$shared"
  result "$1" \
    "$({ [ $cli_status = 0 ] && [ "$notes" = 1 ] && [ "$(grep -c "$2" err.txt)" = 1 ] &&
      [ $cli_peak -lt 200 ] && cmp -s "$reg.damaged" reg.before; }; echo $?)" \
    "tav-cli ${cli_secs}s ${cli_peak} MB, 1 note; the viewer kept it as Tav.reg.damaged: $(grep -o "$2" err.txt)"
  rm -f "$reg" "$reg.damaged"
}
head -c $((2 * 1024 * 1024)) /dev/urandom | base64 -w 100 >"$reg"
settings_case "a 2 MB settings file" "is larger than 1 MB"
head -c $((50 * 1024 * 1024)) /dev/urandom >"$reg"
settings_case "a 50 MB binary settings file" "is larger than 1 MB"
head -c 200000 /dev/urandom >"$reg"
settings_case "a binary settings file under 1 MB" "is not text"
truncate -s 1G "$reg"
run 30 "$cli" info "$shared"
result "a 1 GB settings file" "$(ok $status = 0 -a $peakmb -lt 200 -a "$(grep -c 'settings file' err.txt)" = 1)" \
  "${secs}s, peak ${peakmb} MB: $(head -1 err.txt | cut -c1-90)..."
rm -f "$reg"
for count in 3000 30000; do
  { echo "Windows Registry Editor Version 5.00"; echo
    echo '[HKEY_CURRENT_USER\Software\Wendrake\Tav\General]'
    seq 1 $count | sed 's/.*/"v&"="x"/'; } >"$reg"
  run 30 "$cli" info "$shared"
  result "$count values in one key" "$(ok $status = 0 -a -z "$err")" "${secs}s"
done
{ echo "Windows Registry Editor Version 5.00"; echo
  echo '[HKEY_CURRENT_USER\Software\Wendrake\Tav\General]'
  seq 1 100 | sed 's/.*/"v&"=dword:zz/'; } >"$reg"
run 30 "$cli" info "$shared"
result "100 bad lines: 20 told, the rest counted" \
  "$(ok "$(wc -l <err.txt)" = 21 -a "$(tail -1 err.txt | grep -c '80 more lines')" = 1)" "$(tail -1 err.txt)"
printf 'Windows Registry Editor Version 5.00\n\n; my note\n[HKEY_CURRENT_USER\\Software\\Wendrake\\Tav\\General]\n"SurnameStyle"=dword:00000005\n' >"$reg"
cp "$reg" reg.before
run 30 env TAV_SCREENSHOT=shot.png "$viewer" "$shared"
result "a comment is kept before the first save" \
  "$({ cmp -s "$reg.damaged" reg.before && ! grep -q 'my note' "$reg"; }; echo $?)" \
  "$(grep -c 'my note' "$reg.damaged" 2>/dev/null) copy of the note in Tav.reg.damaged"
rm -f "$reg" "$reg.damaged"
mkfifo "$reg"
run 20 "$cli" info "$shared"
result "the settings file a named pipe" "$(ok $status = 0 -a "$(grep -c 'named pipe' err.txt)" = 1)" \
  "${secs}s: $(head -1 err.txt | cut -c1-100)..."
rm -f "$reg"

echo "=== views"
"$build/tests/tav-tests" --gtest_filter='TreeViewFileTest.ADamagedFileSaysWhyAndChangesNothing:TreeViewFileTest.AViewAtTheEdgeOfWhatLayoutMakesOpensAndDraws' >gtest.txt 2>&1
result "places near 2^31 are a damaged view" "$(grep -q '\[  PASSED  \] 2 tests' gtest.txt; echo $?)" \
  "TreeViewFileTest (view on screen unchanged; the edge draws)"
"$build/tests/tav-ui-tests" --gtest_filter='TreeWindowTest.AViewTooWideForAFullSizePngExportsSmallerAndSaysSo' >gtest.txt 2>&1
"$build/tests/tav-tests" --gtest_filter='PictureExportTest.APngTooLargeIsDrawnSmallerOrRefusedAndTheOldFileStays' >>gtest.txt 2>&1
result "Export picture... of an extreme view" "$(test "$(grep -c '\[  PASSED  \] 1 test' gtest.txt)" = 2; echo $?)" \
  "TreeWindowTest, PictureExportTest: drawn smaller with a box, refused with the reason, old file kept"

echo "=== tav-cli refusals"
run 20 "$cli" show "$shared" IND 99999999999
result "show FILE IND 99999999999" \
  "$(ok $status = 2 -a "$err" = "There is no individual 99999999999 in this file.")" "exit $status: $err"
run 20 "$cli" query "$shared" 4 abc
result "query FILE 4 abc" \
  "$(ok $status = 2 -a -z "$out" -a "$(head -1 err.txt)" = 'tav-cli: N must be a whole number, not "abc"')" \
  "exit $status: $(head -1 err.txt)"
cp "$(dirname "$cli")/help.txt" help.txt
run 20 "$cli" help NoSuchKey
result "help NoSuchKey" "$(ok $status = 1 -a -z "$out" -a "$err" = "There is no help topic NoSuchKey.")" \
  "exit $status: $err"
printf '0 @I1@ INDI\n1 NAME Jo\001hn\000x\033[31m /Sm\tith/\n0 TRLR\n' >controls.ged
run 20 "$cli" show controls.ged IND 1
raw=$(LC_ALL=C tr -d '\t\n\040-\176' <out.txt | wc -c)
result "control characters are escaped" "$(ok $status = 0 -a "$raw" = 0)" \
  "$raw raw control bytes; $(head -1 out.txt | cat -A | cut -c1-60)"

echo
if [ $failures -eq 0 ]; then
  echo "hostile-sweep: every case passes"
else
  echo "hostile-sweep: $failures cases fail"
fi
[ $failures -eq 0 ]

#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the Debian package (scripts/package.sh) and checks it without
# installing it: its control fields and file list, lintian, the desktop entry
# and AppStream data through their validators, the manual pages, and the programs
# run from a copy unpacked with dpkg-deb -x (the system's Qt, help.txt found
# through ../share/tav). Exits non-zero on the first failure.
set -euo pipefail
cd "$(dirname "$0")/.."

deb=$(scripts/package.sh | tail -1)
id=io.github.wendrake.tav
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "check-package: $*" >&2
  exit 1
}

echo "=== $deb"
dpkg-deb --field "$deb" Package Version Architecture Section Maintainer Homepage Depends Recommends
depends=$(dpkg-deb --field "$deb" Depends)
for library in libqt6core6 libqt6gui6 libqt6widgets6 libqt6svg6 libc6; do
  grep -q "$library" <<<"$depends" || fail "Depends lacks $library: $depends"
done

echo "=== files"
dpkg-deb --contents "$deb" | awk '$1 !~ /^d/ { print $NF }' | sort >"$work/files"
cat "$work/files"
sort >"$work/expected" <<FILES
./usr/bin/tav
./usr/bin/tav-cli
./usr/libexec/tav/tav-cli-draw
./usr/share/applications/$id.desktop
./usr/share/doc/tav/changelog.gz
./usr/share/doc/tav/copyright
./usr/share/icons/hicolor/256x256/apps/$id.png
./usr/share/icons/hicolor/48x48/apps/$id.png
./usr/share/icons/hicolor/scalable/apps/$id.svg
./usr/share/man/man1/tav-cli.1.gz
./usr/share/man/man1/tav.1.gz
./usr/share/metainfo/$id.metainfo.xml
./usr/share/tav/help.txt
FILES
diff -u "$work/expected" "$work/files" || fail "the package's files differ from the install layout"

root="$work/root"
dpkg-deb -x "$deb" "$root"

echo "=== lintian"
# Debian's own checks of a package: no errors and no warnings.
lintian --fail-on error,warning --tag-display-limit 0 "$deb" ||
  fail "lintian finds errors or warnings in $deb"
echo "lintian: no errors, no warnings"

echo "=== desktop-file-validate"
desktop-file-validate "$root/usr/share/applications/$id.desktop"
echo "valid: $id.desktop"
exec_program=$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$root/usr/share/applications/$id.desktop")
[ -x "$root/usr/bin/$exec_program" ] || fail "Exec names $exec_program, which the package lacks"

echo "=== appstreamcli validate"
appstreamcli validate --no-net --pedantic "$root/usr/share/metainfo/$id.metainfo.xml"
appstreamcli validate-tree --no-net "$root"

echo "=== manual pages"
for page in tav tav-cli; do
  warnings=$(zcat "$root/usr/share/man/man1/$page.1.gz" | groff -man -ww -z 2>&1)
  [ -z "$warnings" ] || fail "$page.1: $warnings"
done
# Every command tav-cli lists in its usage is documented.
for command in $("$root/usr/bin/tav-cli" --help | sed -n 's/^  \([a-z][a-z]*\) .*/\1/p'); do
  zcat "$root/usr/share/man/man1/tav-cli.1.gz" | grep -q "^\.BI $command " ||
    fail "tav-cli.1 does not describe the command $command"
done
echo "tav.1 and tav-cli.1 format cleanly and cover every command"

echo "=== the unpacked programs"
missing=$(ldd "$root/usr/bin/tav" "$root/usr/bin/tav-cli" "$root/usr/libexec/tav/tav-cli-draw" |
  grep "not found" || true)
[ -z "$missing" ] || fail "libraries not found: $missing"
"$root/usr/bin/tav" --version
"$root/usr/bin/tav-cli" --version
# From a folder without help.txt, so only ../share/tav can answer.
mkdir "$work/elsewhere"
(cd "$work/elsewhere" && "$root/usr/bin/tav-cli" info "$OLDPWD/samples/demo.ged") | tee "$work/info"
grep -q "^$PWD/samples/demo.ged ([0-9]* individuals, [0-9]* families)$" "$work/info" ||
  fail "tav-cli info printed no caption"
(cd "$work/elsewhere" && "$root/usr/bin/tav-cli" help Find) >"$work/help-unpacked"
(cd build/release && ./tav-cli help Find) >"$work/help-built"
[ -s "$work/help-unpacked" ] || fail "tav-cli help Find printed nothing"
cmp -s "$work/help-built" "$work/help-unpacked" || fail "tav-cli help Find differs from the build's"
echo "tav-cli help Find: $(wc -l <"$work/help-unpacked") lines from ../share/tav/help.txt"
# A drawing command runs in the drawing half, found in ../libexec/tav.
(cd "$work/elsewhere" && "$root/usr/bin/tav-cli" export "$OLDPWD/samples/demo.ged" 1 tree.png) ||
  fail "tav-cli export did not run"
[ -s "$work/elsewhere/tree.png" ] || fail "tav-cli export wrote no picture"
echo "tav-cli export: $(wc -c <"$work/elsewhere/tree.png") bytes from ../libexec/tav/tav-cli-draw"

echo "check-package: $deb is sound"

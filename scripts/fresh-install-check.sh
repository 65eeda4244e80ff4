#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Proves the package installs on a fresh Debian 12: makes a minimal Debian 12
# system with debootstrap in a temporary folder, installs dist/tav_*.deb into
# it with `apt install`, then, as an ordinary user of that system, runs the
# command of the installed menu entry on the demo file under Xvfb and saves
# a picture of the main window to screenshots/fresh-install.png.
#
# Needs root, debootstrap and the network to Debian's mirror; takes a few
# minutes, so it is not part of scripts/test.sh.
#
#   scripts/fresh-install-check.sh [DEB]
set -euo pipefail
cd "$(dirname "$0")/.."

[ "$(id -u)" -eq 0 ] || { echo "fresh-install-check: run as root (chroot)" >&2; exit 2; }
deb=${1:-$(ls dist/tav_*.deb 2>/dev/null | tail -1)}
[ -f "$deb" ] || deb=$(scripts/package.sh | tail -1)
command -v debootstrap >/dev/null ||
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq debootstrap >/dev/null

work=$(mktemp -d /tmp/tav-fresh-XXXXXX)
root="$work/root"
cleanup() {
  for m in dev/pts dev proc sys; do umount "$root/$m" 2>/dev/null || true; done
  rm -rf "$work"
}
trap cleanup EXIT

echo "=== debootstrap bookworm (minbase)"
debootstrap --variant=minbase bookworm "$root" http://deb.debian.org/debian >"$work/debootstrap.log" ||
  { tail -20 "$work/debootstrap.log"; exit 1; }
mount -t proc proc "$root/proc"
mount -t sysfs sys "$root/sys"
mount --bind /dev "$root/dev"
mount --bind /dev/pts "$root/dev/pts"
cp /etc/resolv.conf "$root/etc/resolv.conf"

in_root() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }

echo "=== apt install ./$(basename "$deb")"
cp "$deb" "$root/tmp/"
in_root apt-get update -qq
in_root apt-get install -y -q "./tmp/$(basename "$deb")" | tail -3
in_root dpkg -s tav | grep -E "^(Status|Version):"
# The Xvfb to show the window on is not part of the package's needs.
in_root apt-get install -y -qq xvfb xauth >/dev/null

echo "=== the menu entry's command, as an ordinary user"
in_root useradd --create-home genealogist
cp samples/demo.ged "$root/home/genealogist/demo.ged"
chroot "$root" chown genealogist: /home/genealogist/demo.ged
exec_line=$(sed -n 's/^Exec=//p' "$root/usr/share/applications/io.github.wendrake.tav.desktop")
command=${exec_line//%f//home/genealogist/demo.ged}
echo "Exec=$exec_line -> $command"
# TAV_STARTUP_TIME makes the viewer print the caption it shows once started.
chroot "$root" su - genealogist -c \
  "TAV_STARTUP_TIME=1 TAV_SCREENSHOT=/home/genealogist/shot.png xvfb-run -a -s '-screen 0 1280x1024x24' $command" 2>&1 |
  tee "$work/viewer.log"
grep -q 'caption "/home/genealogist/demo.ged (400 individuals, 189 families)"' "$work/viewer.log" ||
  { echo "fresh-install-check: the viewer did not open the file" >&2; exit 1; }
mkdir -p screenshots
cp "$root/home/genealogist/shot.png" screenshots/fresh-install.png
echo "working folder made: $(cd "$root/home/genealogist" && ls -d .local/share/Tav)"
chroot "$root" su - genealogist -c "cd /tmp && tav-cli help QuickStart | head -2"
echo "installed files:"
for file in $(in_root dpkg -L tav); do
  if [ -f "$root$file" ]; then echo "  $file"; fi
done
echo "fresh-install-check: installed and opened in $SECONDS s; picture in screenshots/fresh-install.png"

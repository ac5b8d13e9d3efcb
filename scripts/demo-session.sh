#!/usr/bin/env bash
# Runs Deskmark inside a private X session (tests/x11/xsession.sh: Xvfb, Openbox, two
# monitors, four desktops) with the demo data in a temporary folder and a system tray,
# writes a screenshot of both monitors and keeps running until interrupted.
#
#   scripts/demo-session.sh PROGRAM            (as started by scripts/run.sh)
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
program=$1

if [ -z "${DESKMARK_DEMO_INSIDE:-}" ]; then
  export DESKMARK_DEMO_INSIDE=1
  exec dbus-run-session -- "$here/../tests/x11/xsession.sh" "$0" "$program"
fi

home=$(mktemp -d /tmp/deskmark-demo.XXXXXX)
mkdir -p "$home/data/Deskmark" "$home/config" "$home/runtime"
chmod 700 "$home/runtime"
cp "$here/demo/projects.json" "$here/demo/presets.json" "$home/data/Deskmark/"
export XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" XDG_RUNTIME_DIR="$home/runtime"

# A calm desktop colour instead of black, and a panel strip with a system tray along
# the top of the first monitor.
xsetroot -solid '#3c4a5c'
trayer --edge top --align right --widthtype request --height 28 --monitor 0 \
  --SetDockType true --SetPartialStrut true --tint 0x303030 --transparent true --alpha 0 >/dev/null 2>&1 &
tray=$!
"$program" &
deskmark=$!
trap 'kill $deskmark $tray 2>/dev/null || true' EXIT INT TERM

sleep 3
shot="$home/screenshot.png"
import -window root "$shot"
echo "Deskmark runs on the private display $DISPLAY with demo data in $home."
echo "Screenshot of both monitors: $shot"
echo "Switch desktops with: DISPLAY=$DISPLAY wmctrl -s 1   (Ctrl+C ends the demo)"
wait $deskmark

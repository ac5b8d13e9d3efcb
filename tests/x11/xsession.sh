#!/usr/bin/env bash
# Runs a command inside a private X session: Xvfb with two side-by-side monitors
# (LEFT 1280x800 at 0,0 and RIGHT 1280x800 at 1280,0), Openbox as the EWMH window
# manager and four desktops. DISPLAY is exported to the command; everything started
# here is stopped when the command ends, and the command's exit status is returned.
#
#   tests/x11/xsession.sh COMMAND [ARG...]
set -euo pipefail

workdir=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$workdir"
}
trap cleanup EXIT

# Xvfb picks a free display number itself. Another X server starting at the same moment
# (other sessions on a busy machine) can take the number it picked, and it then gives
# up: it is started again, up to three times.
display=""
for _ in 1 2 3; do
  exec {fd}<> <(:)
  Xvfb -displayfd "$fd" -screen 0 2560x800x24 -nolisten tcp +extension RANDR \
    >"$workdir/xvfb.log" 2>&1 &
  xvfb=$!
  for _ in $(seq 300); do
    read -r -t 0.1 -u "$fd" display && break || true
    kill -0 "$xvfb" 2>/dev/null || break
  done
  exec {fd}<&-
  [ -n "$display" ] && break
  kill "$xvfb" 2>/dev/null || true
  wait "$xvfb" 2>/dev/null || true
done
pids+=($xvfb)
[ -n "$display" ] || { echo "xsession: Xvfb did not start" >&2; cat "$workdir/xvfb.log" >&2; exit 1; }
export DISPLAY=":$display"

# A configuration of Openbox's defaults (an empty file would raise an error dialog).
cat >"$workdir/rc.xml" <<'XML'
<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc"><desktops><number>4</number></desktops></openbox_config>
XML
openbox --config-file "$workdir/rc.xml" >"$workdir/openbox.log" 2>&1 &
pids+=($!)
# A busy machine can take seconds to bring the window manager up.
for _ in $(seq 400); do
  wmctrl -m >/dev/null 2>&1 && break
  sleep 0.05
done
wmctrl -m >/dev/null 2>&1 || { echo "xsession: Openbox did not start" >&2; cat "$workdir/openbox.log" >&2; exit 1; }
wmctrl -n 4
for _ in $(seq 400); do
  [ "$(wmctrl -d | wc -l)" -eq 4 ] && break
  sleep 0.05
done

for _ in $(seq 20); do
  xrandr --setmonitor LEFT 1280/338x800/211+0+0 screen >/dev/null 2>&1 || true
  xrandr --setmonitor RIGHT 1280/338x800/211+1280+0 none >/dev/null 2>&1 || true
  [ "$(xrandr --listmonitors | head -n 1)" = "Monitors: 2" ] && break
  sleep 0.1
done

set +e
"$@"
status=$?
set -e
exit $status

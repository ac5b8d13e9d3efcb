#!/usr/bin/env bash
# Runs a command inside a private X session: Xvfb with two side-by-side monitors
# (LEFT 1280x800 at 0,0 and RIGHT 1280x800 at 1280,0), Openbox as the EWMH window
# manager and four desktops. DISPLAY is exported to the command; everything started
# here is stopped when the command ends, and the command's exit status is returned.
#
#   tests/x11/xsession.sh COMMAND [ARG...]
set -euo pipefail

source "$(dirname "$0")/xvfb-start.sh"

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

set_monitors

set +e
"$@"
status=$?
set -e
exit $status

#!/usr/bin/env bash
# Runs a command inside a private i3 session: Xvfb split into the two RandR monitors of
# xsession.sh (LEFT 1280x800 at 0,0 and RIGHT 1280x800 at 1280,0), which i3 takes as its
# two outputs, and i3 with a minimal configuration and no bar. Workspaces "1:mail" and
# "2:code" belong on LEFT, "3:mail-log" and "4:notes" on RIGHT.
#
# DISPLAY is exported to the command, and DESKMARK_I3_CONFIG (the configuration, for a
# command that restarts i3). I3SOCK is not: programs find i3 through its root window
# property, as in a session whose programs were not started by i3. Everything started
# here is stopped when the command ends, and the command's exit status is returned.
#
#   tests/x11/i3session.sh COMMAND [ARG...]
set -euo pipefail

source "$(dirname "$0")/xvfb-start.sh"
set_monitors
unset I3SOCK SWAYSOCK

cat >"$workdir/i3.config" <<'CONFIG'
# i3 config file (v4)
font pango:DejaVu Sans 8
focus_follows_mouse no
workspace "1:mail" output LEFT
workspace "2:code" output LEFT
workspace "3:mail-log" output RIGHT
workspace "4:notes" output RIGHT
CONFIG
export DESKMARK_I3_CONFIG="$workdir/i3.config"
i3 -c "$DESKMARK_I3_CONFIG" >"$workdir/i3.log" 2>&1 &
pids+=($!)
# A busy machine can take seconds to bring the window manager up.
for _ in $(seq 400); do
  i3-msg -t get_version >/dev/null 2>&1 && break
  sleep 0.05
done
i3-msg -t get_version >/dev/null 2>&1 || { echo "i3session: i3 did not start" >&2; cat "$workdir/i3.log" >&2; exit 1; }

set +e
"$@"
status=$?
set -e
exit $status

#!/usr/bin/env bash
# Runs a command inside a private sway session: sway on its headless backend (software
# rendering, no input devices, no Xwayland) with two outputs side by side, HEADLESS-1
# (1280x800 at 0,0) and HEADLESS-2 (1280x800 at 1280,0), workspace 1 on the first and 2
# on the second. WAYLAND_DISPLAY, SWAYSOCK, XDG_RUNTIME_DIR and QT_QPA_PLATFORM=wayland
# are exported to the command (WAYLAND_DISPLAY as a full path, XDG_RUNTIME_DIR a folder
# of the command's own) and DISPLAY is removed; sway is stopped when the command
# ends, and the command's exit status is returned.
#
#   tests/sway/swaysession.sh COMMAND [ARG...]
#
# SWAY_EXTRA_CONFIG may name a file whose lines are added to sway's configuration.
set -euo pipefail

workdir=$(mktemp -d)
sway_pid=""
cleanup() {
  [ -n "$sway_pid" ] && kill "$sway_pid" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$workdir"
}
trap cleanup EXIT

sway_runtime="$workdir/runtime"
mkdir -m 0700 "$sway_runtime"
unset DISPLAY WAYLAND_DISPLAY SWAYSOCK I3SOCK

cat >"$workdir/config" <<'CONFIG'
xwayland disable
default_border none
output * background #3b4252 solid_color
workspace 1 output HEADLESS-1
workspace 2 output HEADLESS-2
CONFIG
[ -n "${SWAY_EXTRA_CONFIG:-}" ] && cat "$SWAY_EXTRA_CONFIG" >>"$workdir/config"

# sway refuses to run as root: as root, it runs as nobody, in a runtime folder of its
# own that root's clients reach all the same.
as_user=()
if [ "$(id -u)" -eq 0 ]; then
  chown nobody "$sway_runtime"
  chmod 0755 "$workdir"
  as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups --)
fi
XDG_RUNTIME_DIR="$sway_runtime" WLR_BACKENDS=headless WLR_HEADLESS_OUTPUTS=0 WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
  HOME="$workdir" "${as_user[@]}" sway --config "$workdir/config" >"$workdir/sway.log" 2>&1 &
sway_pid=$!

for _ in $(seq 200); do
  SWAYSOCK=$(ls "$sway_runtime"/sway-ipc.*.sock 2>/dev/null | head -n 1 || true)
  [ -n "$SWAYSOCK" ] && swaymsg -s "$SWAYSOCK" -t get_version >/dev/null 2>&1 && break
  kill -0 "$sway_pid" 2>/dev/null || break
  SWAYSOCK=""
  sleep 0.05
done
[ -n "$SWAYSOCK" ] || { echo "swaysession: sway did not start" >&2; cat "$workdir/sway.log" >&2; exit 1; }
export SWAYSOCK
# The command gets a runtime folder of its own (Qt wants one owned by its user) and
# finds sway's display by its full path.
export WAYLAND_DISPLAY="$sway_runtime/$(cd "$sway_runtime" && ls wayland-* | grep -v '\.lock$' | head -n 1)"
export XDG_RUNTIME_DIR="$workdir/client-runtime"
mkdir -m 0700 "$XDG_RUNTIME_DIR"
export QT_QPA_PLATFORM=wayland

swaymsg create_output >/dev/null
swaymsg create_output >/dev/null
swaymsg output HEADLESS-1 mode 1280x800 position 0 0 >/dev/null
swaymsg output HEADLESS-2 mode 1280x800 position 1280 0 >/dev/null
for _ in $(seq 100); do
  [ "$(swaymsg -t get_workspaces -r | grep -c '"output": "HEADLESS-2"')" -ge 1 ] && break
  sleep 0.05
done

set +e
"$@"
status=$?
set -e
exit $status

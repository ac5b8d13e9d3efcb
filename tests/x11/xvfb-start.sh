# Sourced by the session scripts: starts Xvfb (one 2560x800 screen) and exports DISPLAY,
# keeps a work folder in $workdir and stops every process listed in $pids on exit.
# set_monitors splits the screen into two RandR monitors, LEFT 1280x800 at 0,0 and
# RIGHT 1280x800 at 1280,0. The server does not reset when its last client leaves, so
# monitors set before any client stays connected are kept.

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
  Xvfb -displayfd "$fd" -screen 0 2560x800x24 -nolisten tcp +extension RANDR -noreset \
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

set_monitors() {
  for _ in $(seq 20); do
    xrandr --setmonitor LEFT 1280/338x800/211+0+0 screen >/dev/null 2>&1 || true
    xrandr --setmonitor RIGHT 1280/338x800/211+1280+0 none >/dev/null 2>&1 || true
    [ "$(xrandr --listmonitors | head -n 1)" = "Monitors: 2" ] && break
    sleep 0.1
  done
}

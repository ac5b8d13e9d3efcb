#!/usr/bin/env bash
# Installs what is missing, builds Deskmark (release) and starts it. Without an X
# display it starts a private one with demo data instead (scripts/demo-session.sh).
set -euo pipefail
cd "$(dirname "$0")/.."

headless=
[ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && headless=1
# The demo's private X session needs more than a desktop that is already there.
if [ -n "$headless" ]; then scripts/install-deps.sh demo; else scripts/install-deps.sh build; fi
cmake --preset release >/dev/null
cmake --build --preset release
program=$PWD/build/release/src/app/deskmark
if [ -n "$headless" ]; then
  echo "No display found: starting a private X session with demo data."
  exec scripts/demo-session.sh "$program"
fi
exec "$program" "$@"

#!/usr/bin/env bash
# Installs what is missing, builds Deskmark (release) and starts it. Without an X
# display it starts a private one with demo data instead (scripts/demo-session.sh).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake --preset release >/dev/null
cmake --build --preset release
program=$PWD/build/release/src/app/deskmark
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display found: starting a private X session with demo data."
  exec scripts/demo-session.sh "$program"
fi
exec "$program" "$@"

#!/usr/bin/env bash
# Builds Deskmark with AddressSanitizer + UndefinedBehaviorSanitizer and runs the whole
# test suite (unit tests and the X11 tests in a private Xvfb + Openbox session).
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh test
cmake --preset test >/dev/null
cmake --build --preset test
ctest --preset test "$@"

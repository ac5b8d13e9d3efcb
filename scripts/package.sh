#!/usr/bin/env bash
# Builds Deskmark's Debian package: a release build with Debian's hardening flags in
# its own folder, build/package (made when missing, brought up to date otherwise),
# packed by CPack with the dependencies computed from the binary. Install it with
# `sudo apt install ./build/package/deskmark_*.deb`.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh package
build=build/package
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
# No debugging information: CPack strips the program anyway.
export DEB_CXXFLAGS_MAINT_STRIP=-g
options=(
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr
  -DDESKMARK_TESTS=OFF -DDESKMARK_BENCH=OFF
  "-DCMAKE_CXX_FLAGS=$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)"
  "-DCMAKE_EXE_LINKER_FLAGS=$(dpkg-buildflags --get LDFLAGS)"
)
if command -v ccache >/dev/null; then
  options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" -G Ninja "${options[@]}" >/dev/null
cmake --build "$build"
rm -f "$build"/deskmark_*.deb
(cd "$build" && cpack -G DEB >/dev/null)
ls "$build"/deskmark_*.deb

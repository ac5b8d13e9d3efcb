#!/usr/bin/env bash
# Installs the Debian packages Deskmark needs, if any is missing. Works as root; uses
# sudo otherwise.
#
#   scripts/install-deps.sh build   what building and running Deskmark need
#   scripts/install-deps.sh demo    that, and the private X session of the headless demo
#   scripts/install-deps.sh package that, and what making the Debian package needs
#   scripts/install-deps.sh test    that, and everything the test suite uses (the default)
set -euo pipefail

build=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools libqt6dbus6 libqt6svg6 qt6-translations-l10n
  libxcb1-dev libxcb-ewmh-dev libxcb-randr0-dev libxcb-keysyms1-dev libxcb-xkb-dev
  libxcb-xfixes0-dev
  libglib2.0-dev libicu-dev
  qt6-wayland
  fonts-noto-cjk fonts-dejavu-core
)
demo=(
  xvfb openbox wmctrl xdotool x11-xserver-utils x11-utils imagemagick
  dbus dbus-x11 trayer
)
tests=(
  xterm thunar desktop-file-utils at-spi2-core xcompmgr
  i3-wm sway grim
  clang libclang-rt-14-dev
  lintian appstream man-db
)
packaging=(
  dpkg-dev
)

case "${1:-test}" in
  build) packages=("${build[@]}") ;;
  demo) packages=("${build[@]}" "${demo[@]}") ;;
  package) packages=("${build[@]}" "${packaging[@]}") ;;
  test) packages=("${build[@]}" "${demo[@]}" "${tests[@]}" "${packaging[@]}") ;;
  *) echo "usage: $0 [build|demo|package|test]" >&2; exit 2 ;;
esac

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' \
    || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo_cmd=()
[ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
echo "Installing: ${missing[*]}"
"${sudo_cmd[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"

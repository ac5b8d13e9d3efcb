#!/usr/bin/env bash
# Installs the Debian packages Deskmark needs to build, run and test, if any is missing.
# Works as root; uses sudo otherwise.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  qt6-base-dev qt6-base-dev-tools libqt6dbus6
  libxcb1-dev libxcb-ewmh-dev libxcb-randr0-dev libxcb-keysyms1-dev libxcb-xkb-dev
  libglib2.0-dev libicu-dev
  xvfb openbox i3-wm wmctrl xdotool x11-xserver-utils x11-utils imagemagick
  dbus dbus-x11 trayer
  sway grim qt6-wayland
  xterm thunar desktop-file-utils at-spi2-core
  fonts-noto-cjk fonts-dejavu-core
  clang libclang-rt-14-dev
  dpkg-dev librsvg2-bin lintian appstream man-db
)

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

#!/usr/bin/env bash
# Unpacks the Debian package into a throwaway root, as dpkg would install it, and checks
# that everything is where desktops and tools look for it and that the program runs
# from there on the system's libraries alone.
# Usage: install-check.sh PACKAGE.deb VERSION
set -euo pipefail
deb=$1
version=$2
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
fail() { echo "$*" >&2; exit 1; }

dpkg -x "$deb" "$root"
id=io.github.deskmark.Deskmark
for path in usr/bin/deskmark \
            usr/share/applications/$id.desktop \
            usr/share/metainfo/$id.metainfo.xml \
            usr/share/icons/hicolor/scalable/apps/$id.svg \
            usr/share/icons/hicolor/symbolic/apps/$id-symbolic.svg \
            usr/share/icons/hicolor/{16x16,22x22,24x24,32x32,48x48,64x64,128x128,256x256}/apps/$id.png \
            usr/share/man/man1/deskmark.1.gz \
            usr/share/doc/deskmark/copyright \
            usr/share/doc/deskmark/README.md \
            usr/share/doc/deskmark/changelog.Debian.gz; do
  [ -f "$root/$path" ] || fail "the package lacks /$path"
done
[ "$(identify -format '%wx%h' "$root/usr/share/icons/hicolor/48x48/apps/$id.png")" = 48x48 ] \
  || fail "the 48x48 icon has another size"
depends=$(dpkg-deb -f "$deb" Depends)
case $depends in
  *libqt6widgets6*libc6*|*libc6*libqt6widgets6*) ;;
  *) fail "Depends was not computed from the program: $depends" ;;
esac
case $depends in
  *libqt6svg6*) ;;
  *) fail "Depends lacks the SVG plugin the icons need: $depends" ;;
esac
[ "$(dpkg-deb -f "$deb" Package)" = deskmark ] || fail "the package is not called deskmark"

program=$root/usr/bin/deskmark
clean_env=(env -u LD_LIBRARY_PATH -u DISPLAY -u WAYLAND_DISPLAY LANGUAGE=en
           XDG_CONFIG_HOME="$root/config" XDG_DATA_HOME="$root/data")
output=$("${clean_env[@]}" "$program" --version)
[ "$output" = "Deskmark $version" ] || fail "--version printed: $output"
"${clean_env[@]}" "$program" --help | grep -q 'switch NAME' || fail "--help lacks the commands"
# No agent answers on a bus that does not exist: the command says so, with status 1.
status=0
output=$("${clean_env[@]}" DBUS_SESSION_BUS_ADDRESS="unix:path=$root/no-bus" \
           "$program" switcher 2>&1) || status=$?
[ "$status" -eq 1 ] && [ "$output" = "Deskmark is not running." ] \
  || fail "a command without an agent ended with $status: $output"
echo "installed tree and program: OK ($depends)"

#!/bin/bash
# Installs what building, running and testing Zorvel need on Debian, when missing.
# The package manager is asked, not the PATH: another program of the same
# name (a `convert` that is not ImageMagick's) must not stand in for a package.
set -e
packages=(
  g++-mingw-w64-x86-64-posix mingw-w64-tools binutils-mingw-w64-x86-64  # the cross compiler, windres
  cmake make nsis                              # nsis: makensis, for the installer
  wine wine64 fonts-wine
  xvfb x11-utils x11-apps xdotool imagemagick  # display, xdpyinfo, xwd, window search, screenshots
  python3 util-linux                           # zvl's end-to-end test, flock
  locales                                      # the locale tools/wine-run.sh pins
)
need=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || need+=("$package")
done
SUDO=; [ "$(id -u)" = 0 ] || SUDO=sudo
if [ ${#need[@]} -gt 0 ]; then
  echo "Installing: ${need[*]}"
  $SUDO apt-get update
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${need[@]}"
fi
# tools/wine-run.sh pins en_US.UTF-8; without that locale generated Wine
# cannot map a file name with any non-ASCII character ("Invalid name").
if ! locale -a 2>/dev/null | grep -qix 'en_US\.utf-\?8'; then
  echo "Generating the en_US.UTF-8 locale"
  $SUDO localedef -i en_US -c -f UTF-8 -A /usr/share/locale/locale.alias en_US.UTF-8
fi

#!/bin/bash
# Installs what building, running and testing Zorvel need on Debian, when missing.
# The package manager is asked, not the PATH: another program of the same
# name (a `convert` that is not ImageMagick's) must not stand in for a package.
set -e
packages=(
  g++-mingw-w64-x86-64-posix mingw-w64-tools binutils-mingw-w64-x86-64  # the cross compiler, windres
  cmake make
  wine wine64 fonts-wine
  xvfb x11-utils x11-apps xdotool imagemagick  # display, xdpyinfo, xwd, window search, screenshots
  python3 util-linux                           # zvl's end-to-end test, flock
)
need=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || need+=("$package")
done
if [ ${#need[@]} -gt 0 ]; then
  echo "Installing: ${need[*]}"
  SUDO=; [ "$(id -u)" = 0 ] || SUDO=sudo
  $SUDO apt-get update
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${need[@]}"
fi

#!/bin/bash
# Installs what building, running and testing Zorvel need on Debian, when missing.
set -e
need=()
command -v x86_64-w64-mingw32-g++-posix >/dev/null || need+=(g++-mingw-w64-x86-64-posix mingw-w64-tools binutils-mingw-w64-x86-64)
command -v cmake >/dev/null || need+=(cmake)
command -v make >/dev/null || need+=(make)
command -v wine >/dev/null || need+=(wine)
command -v wine64 >/dev/null || [ -x /usr/lib/wine/wine64 ] || need+=(wine64)
command -v Xvfb >/dev/null || need+=(xvfb)
command -v xdpyinfo >/dev/null || need+=(x11-utils)
command -v xwd >/dev/null || need+=(x11-apps)
command -v convert >/dev/null || need+=(imagemagick)
command -v xdotool >/dev/null || need+=(xdotool)
command -v python3 >/dev/null || need+=(python3)
command -v flock >/dev/null || need+=(util-linux)
[ -d /usr/share/wine/fonts ] || dpkg -s fonts-wine >/dev/null 2>&1 || need+=(fonts-wine)
if [ ${#need[@]} -gt 0 ]; then
  echo "Installing: ${need[*]}"
  SUDO=; [ "$(id -u)" = 0 ] || SUDO=sudo
  $SUDO apt-get update
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${need[@]}"
fi

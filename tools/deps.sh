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
# tools/wine-run.sh pins en_US.UTF-8; without that locale generated Wine
# cannot map a file name with any non-ASCII character ("Invalid name").
[ -f /usr/share/i18n/locales/en_US ] || need+=(locales)
SUDO=; [ "$(id -u)" = 0 ] || SUDO=sudo
if [ ${#need[@]} -gt 0 ]; then
  echo "Installing: ${need[*]}"
  $SUDO apt-get update
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${need[@]}"
fi
if ! locale -a 2>/dev/null | grep -qix 'en_US\.utf-\?8'; then
  echo "Generating the en_US.UTF-8 locale"
  $SUDO localedef -i en_US -c -f UTF-8 -A /usr/share/locale/locale.alias en_US.UTF-8
fi

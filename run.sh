#!/bin/bash
# Builds Zorvel, installs it into the private Wine prefix under build/ and
# starts it on its sample lists. Without a display it runs under Xvfb,
# writes build/screenshot.png and stops.
set -e
cd "$(dirname "$0")"
tools/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release
cmake --build build -j"$(nproc)"
cmake --build build --target package
# The installer a Windows user runs, silently.
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/CMakeCache.txt)
tools/wine-run.sh build "build/Zorvel-$version-win64.exe" /S
if [ -n "$DISPLAY" ] && [ -z "$ZV_SCREENSHOT" ]; then
  exec tools/wine-run.sh build 'C:\Program Files\Quenta\Zorvel\Zorvel.exe' "$@"
fi
# No display: run on the build's own Xvfb, take a screenshot, stop.
unset DISPLAY
tools/wine-run.sh build 'C:\Program Files\Quenta\Zorvel\Zorvel.exe' "$@" &
pid=$!
display=":$(cat build/xvfb-wine.display)"
window=
for _ in $(seq 100); do
  window=$(DISPLAY=$display xdotool search --onlyvisible --name '^Zorvel$' 2>/dev/null | head -1) && [ -n "$window" ] && break
  sleep 0.1
done
sleep 1
crop=
if [ -n "$window" ]; then
  eval "$(DISPLAY=$display xdotool getwindowgeometry --shell "$window")"
  crop="${WIDTH}x${HEIGHT}+${X}+${Y}"
fi
tools/screenshot.sh "$display" build/screenshot.png $crop
echo "Screenshot: build/screenshot.png"
WINEPREFIX="$PWD/build/wine" wineserver -k 2>/dev/null || true
wait $pid 2>/dev/null || true

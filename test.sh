#!/bin/bash
# Builds Zorvel and runs every test under Wine (UI tests under Xvfb), in the
# tests' own prefix build/wine-test: ./run.sh's installation is never seen.
set -e
cd "$(dirname "$0")"
tools/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release
cmake --build build -j"$(nproc)"
cmake --build build --target package
status=0
(cd build && ctest --output-on-failure --timeout 900) || status=$?
WINEPREFIX="$PWD/build/wine-test" wineserver -k 2>/dev/null || true
exit $status

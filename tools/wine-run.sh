#!/bin/bash
# Runs one Windows program under Wine in one of the build's private prefixes.
#   tools/wine-run.sh [--prefix NAME] BUILD_DIR PROGRAM.exe [ARGS...]
# NAME is a folder of BUILD_DIR: `wine` (the default) is where ./run.sh
# installs the program; the tests use `wine-test`, so that they never meet an
# installed copy. A prefix is made on first use: 96 dpi, unmanaged windows
# (a bare Xvfb otherwise stalls every window close for 2 s). A persistent
# wineserver and its service processes are started with their output
# detached, so that a caller reading our output (CTest) never waits on them.
# Without a DISPLAY an Xvfb private to the prefix is started and reused; its
# number is kept in BUILD_DIR/xvfb-NAME.display.
set -e
# Descriptors beyond the standard three are closed, so that no lock the
# caller holds (flock) is inherited by the servers Wine leaves running.
exec 3>&- 4>&- 5>&- 6>&- 7>&- 8>&- 9>&-
prefix=wine
if [ "$1" = --prefix ]; then prefix=$2; shift 2; fi
build=$(cd "$1" && pwd); shift
export WINEPREFIX="$build/$prefix"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
# Wine takes its locale from LC_ALL even when the host lacks that locale;
# only Wine's processes get it (the shell would complain).
locale="${ZV_LOCALE:-en_US.UTF-8}"
wine() { env LC_ALL="$locale" wine "$@"; }
export WINEARCH=win64

ensure_display() {
  [ -n "$DISPLAY" ] && return 0
  local f="$build/xvfb-$prefix.display" n
  if [ -f "$f" ]; then
    n=$(cat "$f")
    if xdpyinfo -display ":$n" >/dev/null 2>&1; then export DISPLAY=":$n"; return 0; fi
  fi
  n=$(( ( $(printf '%s' "$WINEPREFIX" | cksum | cut -d' ' -f1) % 400 ) + 100 ))
  while [ -e "/tmp/.X$n-lock" ]; do
    if xdpyinfo -display ":$n" >/dev/null 2>&1 && [ "$(cat "$f" 2>/dev/null)" = "$n" ]; then break; fi
    n=$((n + 1))
  done
  if ! xdpyinfo -display ":$n" >/dev/null 2>&1; then
    setsid Xvfb ":$n" -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 </dev/null &
    for _ in $(seq 50); do xdpyinfo -display ":$n" >/dev/null 2>&1 && break; sleep 0.1; done
  fi
  echo "$n" > "$f"
  export DISPLAY=":$n"
}

ensure_prefix() {
  exec 9>"$WINEPREFIX.lock"
  flock 9
  # Bump when the prefix settings below change: existing prefixes pick them up.
  local version=4
  if [ ! -d "$WINEPREFIX/drive_c" ]; then
    rm -rf "$WINEPREFIX"
    wineboot -i >/dev/null 2>&1 </dev/null
  fi
  if [ "$(cat "$WINEPREFIX/.zv-ready" 2>/dev/null)" != "$version" ]; then
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1 </dev/null
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d 96 /f >/dev/null 2>&1 </dev/null
    # A crash ends the program with a report on stderr instead of a dialog
    # that would wait for a click that never comes.
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 </dev/null
    # The caption buttons are drawn with Marlett; Debian keeps it outside the prefix.
    [ -f /usr/share/wine/fonts/marlett.ttf ] && cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    # Wine links the user's Documents, Desktop and the like to the host's
    # home: the installer's lists would land there, shared by every prefix.
    local link
    for link in "$WINEPREFIX"/drive_c/users/*/*; do
      [ -L "$link" ] && rm -f "$link" && mkdir -p "$link"
    done
    echo "$version" > "$WINEPREFIX/.zv-ready"
  fi
  # A persistent server and its services, started detached from our output.
  setsid wineserver -p >/dev/null 2>&1 </dev/null || true
  wine cmd /c exit >/dev/null 2>&1 </dev/null || true
  flock -u 9
}

ensure_display
ensure_prefix
prog="$1"; shift
if [ ! -p /dev/stdout ] && [ ! -p /dev/stderr ]; then
  exec env LC_ALL="$locale" wine "$prog" "$@"
fi
# Wine starts helper processes (the desktop, console hosts) that outlive the
# program and keep whatever output they inherited: a pipe to a caller (CTest)
# would then never close. The program writes to files that are passed on.
out=$(mktemp); err=$(mktemp)
trap 'rm -f "$out" "$err"' EXIT
status=0
env LC_ALL="$locale" wine "$prog" "$@" >"$out" 2>"$err" || status=$?
cat "$out"
cat "$err" >&2
exit $status

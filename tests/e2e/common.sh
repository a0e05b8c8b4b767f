# Shared by the end-to-end scripts, which take BUILD_DIR INSTALLER.exe and
# work in the tests' own Wine prefix on the program the installer put there.
set -u
build=$(cd "$1" && pwd)
installer=$2
source_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
run() { "$source_dir/tools/wine-run.sh" --prefix wine-test "$build" "$@"; }
[ -f "$installer" ] || { echo "FAIL no installer at $installer: cmake --build build --target package"; exit 1; }
unset DISPLAY
drive_c="$build/wine-test/drive_c"
lists="$drive_c/users/$(id -un)/Documents/Zorvel Lists"

failed=0
# Waits up to fifteen seconds for a condition on the files or the screen.
expect() {
  local what="$1"; shift
  for _ in $(seq 75); do "$@" >/dev/null && { echo "ok   $what"; return 0; }; sleep 0.2; done
  echo "FAIL $what"; failed=1
}

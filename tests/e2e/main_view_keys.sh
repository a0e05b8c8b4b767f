#!/bin/bash
# A user's day in the main view, driven from outside with real keys (xdotool
# through XTEST) on the installed program in the tests' own Wine prefix:
# make a category, make a list in it from a template, add an item, save,
# leave, rename the list, delete it. The files on disk follow each step.
#   tests/e2e/main_view_keys.sh BUILD_DIR INSTALLER.exe
source "$(dirname "$0")/common.sh"
run "$installer" /S >/dev/null 2>&1 || { echo "FAIL install"; exit 1; }
rm -rf "$lists/E2E" "$lists/New Category"*
export DISPLAY=":$(cat "$build/xvfb-wine-test.display")"

run 'C:\Program Files\Quenta\Zorvel\Zorvel.exe' >"$build/e2e-zorvel.log" 2>&1 &
zorvel=$!
trap 'kill $zorvel 2>/dev/null' EXIT
window=
for _ in $(seq 150); do
  window=$(xdotool search --onlyvisible --name '^Zorvel$' 2>/dev/null | head -1) && [ -n "$window" ] && break
  sleep 0.2
done
[ -n "$window" ] || { echo "FAIL the main window did not appear"; exit 1; }
sleep 1

key() { xdotool key --delay 150 "$@"; sleep 1; }
type_text() { xdotool type --delay 120 "$1"; sleep 0.5; }
holds() { python3 -c "import sys; sys.exit(0 if sys.argv[2].encode('utf-16-le') in open(sys.argv[1],'rb').read() else 1)" "$1" "$2" 2>/dev/null; }

key F2 2                      # New Category: the label edit opens on the default name
type_text E2E; key Return
expect "new category E2E" test -d "$lists/E2E"

key Home Down Down Down       # Root, Business, its list, E2E
key F2 1                      # New List: the templates, then Create
key End; key F1
type_text Trip; key F1        # the list's name, OK: the list window opens
expect "new list Trip" test -f "$lists/E2E/Trip.zvl"
key F2 1                      # Add Item
type_text Milk; key F1        # Done
key F1                        # Save
expect "item saved" holds "$lists/E2E/Trip.zvl" Milk
key Escape                    # leave the list window

key Down                      # the new list under E2E
key F2 4                      # Rename
type_text Weekly; key Return
expect "renamed to Weekly" test -f "$lists/E2E/Weekly.zvl"
expect "old name gone" test ! -e "$lists/E2E/Trip.zvl"
key F2 3                      # Delete, then OK
key Return
expect "list deleted" test ! -e "$lists/E2E/Weekly.zvl"

key F2 9                      # Exit
for _ in $(seq 50); do xdotool search --onlyvisible --name '^Zorvel$' >/dev/null 2>&1 || break; sleep 0.2; done
xdotool search --onlyvisible --name '^Zorvel$' >/dev/null 2>&1 && { echo "FAIL Exit left the window open"; failed=1; }
exit $failed

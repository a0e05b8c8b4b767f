#!/bin/bash
# The installer as a user meets it, in the tests' own Wine prefix: a silent
# install in German, the files and registry values it leaves, a first start,
# lists and templates opened from the shell from another drive, then a silent
# uninstall that removes the program and keeps every list and every template
# the user made or changed.
#   tests/e2e/installer.sh BUILD_DIR INSTALLER.exe
source "$(dirname "$0")/common.sh"
program="$drive_c/Program Files/Quenta/Zorvel"
check() {
  local what="$1"; shift
  if "$@"; then echo "ok   $what"; else echo "FAIL $what"; failed=1; fi
}
# A string value of a key; no name: its default value.
value() {
  if [ -n "$2" ]; then run reg query "$1" /v "$2"; else run reg query "$1" /ve; fi 2>/dev/null |
    tr -d '\r' | sed -n "s/^ *${2:-(Default)} *REG_SZ *//p"
}
is() { [ "$1" = "$2" ] || { echo "     got '$1', wanted '$2'"; return 1; }; }
key_gone() { ! run reg query "$1" >/dev/null 2>&1; }
windows() { DISPLAY=$display xdotool search --onlyvisible --name "$1" 2>/dev/null; }
keys() { DISPLAY=$display xdotool key --delay 200 "$@"; sleep 0.5; }

# A copy left by an earlier run goes first, as a user's would.
run taskkill /f /im Zorvel.exe >/dev/null 2>&1
[ -f "$program/Uninstall.exe" ] && run "C:\\Program Files\\Quenta\\Zorvel\\Uninstall.exe" /S
for _ in $(seq 75); do [ -e "$program/Uninstall.exe" ] || break; sleep 0.2; done
rm -rf "$lists" "$program"

run "$installer" /S /LANGUAGE=German >/dev/null 2>&1 \
  || { echo "FAIL the silent install"; exit 1; }
display=":$(cat "$build/xvfb-wine-test.display")"

for f in Zorvel.exe zvl.exe LangEng.dll LangGer.dll ZVLowDpiRes.dll ZVHighDpiRes.dll Uninstall.exe; do
  check "installed $f" test -f "$program/$f"
done
check "icons installed" test "$(ls "$program/Icons/"*.tga | wc -l)" = "$(ls "$build/bin/Icons/"*.tga | wc -l)"
for t in "$build"/bin/samples/vga/templates/*.zvt; do
  name=$(basename "$t")
  check "template $name in both variants" test -f "$program/Templates/${name}_vga" -a -f "$program/Templates/${name}_qvga"
done
for l in "$build"/bin/samples/vga/lists/*/*.zvl; do
  category=$(basename "$(dirname "$l")"); name=$(basename "$l")
  check "sample $category/$name in both variants" test -f "$lists/$category/${name}_vga" -a -f "$lists/$category/${name}_qvga"
done
check "Start-menu shortcut" test -f "$drive_c/users/$(id -un)/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Zorvel.lnk"

key='HKCU\Software\Quenta\Zorvel'
check "InstallPath" is "$(value "$key" InstallPath)" '\Program Files\Quenta\Zorvel'
check "TemplatePath" is "$(value "$key" TemplatePath)" '\Program Files\Quenta\Zorvel\Templates'
check "ListsPath in the user's Documents, without a drive" is "$(value "$key" ListsPath)" "\\users\\$(id -un)\\Documents\\Zorvel Lists"
check "the German module chosen" is "$(value "$key" SelectedLangResFile)" '\Program Files\Quenta\Zorvel\LangGer.dll'
check ".zvl machine-wide" is "$(value 'HKLM\Software\Classes\.zvl' '')" listfile
for kind in listfile templatefile; do
  check "$kind opens with the full path" is "$(value "HKLM\\Software\\Classes\\$kind\\Shell\\Open\\Command" '')" \
    '"C:\Program Files\Quenta\Zorvel\Zorvel.exe" %1'
done
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Zorvel'
check "listed among installed programs" is "$(value "$uninstall_key" UninstallString)" '"C:\Program Files\Quenta\Zorvel\Uninstall.exe"'
version=$(basename "$installer" | sed 's/^Zorvel-\(.*\)-win64\.exe$/\1/')
check "its version" is "$(value "$uninstall_key" DisplayVersion)" "$version"

# The first start keeps the sample variant that fits and shows the tree.
run 'C:\Program Files\Quenta\Zorvel\Zorvel.exe' >/dev/null 2>&1 &
expect "the main window opens" windows '^Zorvel$'
expect "the samples are placed" test -f "$lists/Personal/Grocery - weekly.zvl" -a ! -e "$lists/Personal/Grocery - weekly.zvl_vga"
expect "the templates are placed" test -f "$program/Templates/Goals.zvt" -a ! -e "$program/Templates/Goals.zvt_qvga"
keys F2 9                                   # Exit
expect "Exit ends Zorvel" test -z "$(windows '^Zorvel$')"

# The user's own files: a list, a template, a shipped template changed.
cp "$lists/Personal/Grocery - weekly.zvl" "$lists/Personal/Mine.zvl"
cp "$program/Templates/Goals.zvt" "$program/Templates/Mine.zvt"
touch -d '+1 minute' "$program/Templates/Packing.zvt"

# The shell opens them in Zorvel from another drive (the host's Z:).
(cd /tmp && run start /unix "$lists/Personal/Mine.zvl" >/dev/null 2>&1)
expect "a list opens from the shell (its backup is made)" test -f "$lists/Personal/Mine.BAK"
keys Escape                                 # leaves the list, and Zorvel ends
expect "the list window closes" test -z "$(windows '^Zorvel$')"
(cd /tmp && run start /unix "$program/Templates/Mine.zvt" >/dev/null 2>&1)
expect "a template opens from the shell in the template editor" windows '^Edit Template$'
keys Escape
expect "the template editor closes" test -z "$(windows '^Edit Template$')"

run "C:\\Program Files\\Quenta\\Zorvel\\Uninstall.exe" /S
expect "the uninstaller ends" test ! -e "$program/Uninstall.exe"
for f in Zorvel.exe zvl.exe LangEng.dll LangGer.dll ZVLowDpiRes.dll ZVHighDpiRes.dll Setup.ini Icons Templates/Goals.zvt; do
  check "removed $f" test ! -e "$program/$f"
done
check "shortcut removed" test ! -e "$drive_c/users/$(id -un)/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Zorvel.lnk"
check "program key removed" key_gone "$key"
check "associations removed" key_gone 'HKLM\Software\Classes\.zvl'
check "template association removed" key_gone 'HKLM\Software\Classes\templatefile'
check "per-user associations removed" key_gone 'HKCU\Software\Classes\.zvl'
check "no longer listed" key_gone "$uninstall_key"
check "the user's list kept" test -f "$lists/Personal/Mine.zvl"
check "the lists folder kept" test -f "$lists/Personal/Grocery - weekly.zvl"
check "the user's template kept" test -f "$program/Templates/Mine.zvt"
check "a changed template kept" test -f "$program/Templates/Packing.zvt"
exit $failed

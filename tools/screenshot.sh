#!/bin/bash
# Screenshot of an X display as a person sees it: the root window with every
# mapped top-level window drawn over it from its own contents, bottom to top
# (on a bare Xvfb some windows, popup menus among them, read back black from
# the root window but whole from themselves).
#   tools/screenshot.sh DISPLAY OUT.png [WIDTHxHEIGHT+X+Y]
set -e
display="$1"; out="$2"; crop="$3"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
xwd -root -display "$display" -silent | convert xwd:- "$tmp/root.png"
args=("$tmp/root.png")
i=0
# xwininfo lists children top first; draw them bottom first.
for line in $(xwininfo -display "$display" -root -children | awk '/^ +0x/ {print $1}' | tac); do
  info=$(xwininfo -display "$display" -id "$line" 2>/dev/null) || continue
  echo "$info" | grep -q 'Map State: IsViewable' || continue
  w=$(echo "$info" | awk '/Width:/ {print $2}'); h=$(echo "$info" | awk '/Height:/ {print $2}')
  x=$(echo "$info" | awk '/Absolute upper-left X:/ {print $4}'); y=$(echo "$info" | awk '/Absolute upper-left Y:/ {print $4}')
  [ "$w" -gt 2 ] && [ "$h" -gt 2 ] || continue
  xwd -display "$display" -id "$line" -silent 2>/dev/null | convert xwd:- "$tmp/w$i.png" 2>/dev/null || continue
  args+=("$tmp/w$i.png" -geometry "+$x+$y" -composite)
  i=$((i + 1))
done
if [ -n "$crop" ]; then
  convert "${args[@]}" -crop "$crop" +repage "$out"
else
  convert "${args[@]}" "$out"
fi

#!/usr/bin/env bash
# End-to-end: the notification icon in a real tray host (trayer). A left click flips
# clipboard monitoring, and the icon's picture and tip follow (the picture checked in the
# icon's own pixels); a second click puts both back. A right click opens the tray menu at
# the pointer, Esc closes it and changes nothing; a double click is two left clicks.
# Usage: tray_e2e.sh BIN_DIR
set -u
bin="$1"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
log="$home/sonamark.log"
wait_for 10 xdotool search --class trayer || fail "no tray host"
sleep 0.5
QT_LOGGING_RULES="sonamark.tray.info=true" "$bin/sonamark" /h 2>"$log" &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
sleep 1

icon_window() {
  local t w
  for t in $(xdotool search --class trayer); do
    w=$(xwininfo -tree -id "$t" | grep '("sonamark" "Sonamark")' | awk '{print $1}' | head -1)
    [ -n "$w" ] && { echo "$w"; return 0; }
  done
  return 1
}
icon=$(icon_window) || fail "icon window not found"
read -r ix iy < <(tray_icon_centre)
pixels() { xwd -id "$icon" -silent | convert xwd:- rgb:- | md5sum | cut -d' ' -f1; }
tips() { grep -a '^sonamark.tray: tip ' "$log" | sed 's/^sonamark.tray: tip //'; }
last_tip() { tips | tail -1; }
last_picture() { grep -a '^sonamark.tray: picture ' "$log" | tail -1 | sed 's/^sonamark.tray: picture //'; }

[ "$(last_tip)" = "Sonamark - Idle" ] || fail "tip at start: [$(last_tip)]"
idle=$(pixels)

xdotool mousemove "$ix" "$iy" click 1
monitoring() { [ "$(last_tip)" = "Monitoring Clipboard.." ]; }
idle_tip() { [ "$(last_tip)" = "Sonamark - Idle" ]; }
wait_for 5 monitoring || fail "no monitoring tip after a left click: [$(last_tip)]"
[ "$(last_picture)" = "monitoring" ] || fail "picture after a left click: $(last_picture)"
sleep 0.5
[ "$(pixels)" != "$idle" ] || fail "the icon looks the same while monitoring"
echo "ok - a left click turns monitoring on: tip \"Monitoring Clipboard..\" and the monitoring picture"

xdotool mousemove "$ix" "$iy" click 1
wait_for 5 idle_tip || fail "tip after the second click: [$(last_tip)]"
sleep 0.5
[ "$(last_picture)" = "idle" ] || fail "picture after the second click: $(last_picture)"
[ "$(pixels)" = "$idle" ] || fail "the idle picture did not come back"
echo "ok - a second left click turns it off: tip \"Sonamark - Idle\" and the idle picture again"

before=$(xdotool search --onlyvisible --class sonamark | sort)
xdotool mousemove "$ix" "$iy" click 3
menu_window() { comm -13 <(echo "$before") <(xdotool search --onlyvisible --class sonamark | sort) | head -1; }
wait_for 5 menu_window || fail "no menu after a right click"
menu=$(menu_window)
geo=$(xdotool getwindowgeometry "$menu")
mx=$(echo "$geo" | awk '/Position/ {split($2, p, ","); print p[1]}')
my=$(echo "$geo" | awk '/Position/ {split($2, p, ","); print p[2]}')
mw=$(echo "$geo" | awk '/Geometry/ {split($2, g, "x"); print g[1]}')
mh=$(echo "$geo" | awk '/Geometry/ {split($2, g, "x"); print g[2]}')
# The menu opens at the pointer: one of its corners lies within a few pixels of it
# (near the screen's corner it opens up and to the left).
near() { [ $(( $1 - $2 )) -le 24 ] && [ $(( $2 - $1 )) -le 24 ]; }
{ near "$mx" "$ix" || near $((mx + mw)) "$ix"; } && { near "$my" "$iy" || near $((my + mh)) "$iy"; } \
  || fail "the menu at $mx,$my (${mw}x$mh) is not at the pointer $ix,$iy"
xdotool key Escape
wait_for 5 sh -c "! xdotool search --onlyvisible --class sonamark | grep -qx '$menu'" || fail "Esc did not close the menu"
[ "$(last_tip)" = "Sonamark - Idle" ] || fail "the menu changed the state: [$(last_tip)]"
echo "ok - a right click opens the tray menu at the pointer and Esc closes it"

count=$(tips | wc -l)
xdotool mousemove "$ix" "$iy" click --repeat 2 --delay 120 1
flipped_twice() { [ "$(tips | wc -l)" -ge $((count + 2)) ]; }
wait_for 5 flipped_twice || fail "a double click did not flip twice: $(tips | tail -3 | tr '\n' '|')"
sleep 0.5
[ "$(last_tip)" = "Sonamark - Idle" ] || fail "after a double click: [$(last_tip)]"
[ "$(tips | tail -2 | head -1)" = "Monitoring Clipboard.." ] || fail "the double click's first click did not turn monitoring on"
echo "ok - a double click is two left clicks: on, then off again"

#!/usr/bin/env bash
# End-to-end: the resident program under a real X server with a window manager and a
# tray host. Start hidden, icon in the tray, main window not shown, a second start asks
# "Already Running", and quitting from the tray menu removes the icon.
# Usage: startup_e2e.sh BIN_DIR
set -u
bin="$1"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"

"$bin/sonamark" /h &
first=$!
pids+=("$first")
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
managed_sonamark_window && fail "a Sonamark window is shown after a hidden start"
[ "$(cat "$home/sonamark.lock" 2>/dev/null)" = "$first" ] || fail "lock file does not hold the pid"
grep -q '"Mary"' "$home/options.def" || fail "options.def was not written with defaults"
echo "ok - hidden start: icon in tray, no window, settings written"

"$bin/sonamark" &
second=$!
pids+=("$second")
answer "Already Running" alt+n
wait_for 10 bash -c "! kill -0 $second" || fail "second instance did not end after No"
kill -0 "$first" || fail "first instance ended"
echo "ok - second start asks Already Running; No ends it"

# Right click on the icon, last entry of the menu ("Quit Sonamark"), then Yes.
for t in $(xdotool search --class trayer); do
  geo=$(xwininfo -tree -id "$t" | grep '("sonamark" "Sonamark")' | grep -oE '\+[0-9]+\+[0-9]+$' | head -1)
  [ -n "$geo" ] && break
done
x=$(echo "$geo" | cut -d+ -f2); y=$(echo "$geo" | cut -d+ -f3)
visible_windows() { xdotool search --onlyvisible --class sonamark 2>/dev/null | wc -l; }
export -f visible_windows
before=$(visible_windows)
xdotool mousemove $((x + 8)) $((y + 8)) click 3
wait_for 10 bash -c "[ \$(visible_windows) -gt $before ]" \
  || fail "the tray menu did not open"
xdotool key Up Return
answer "End Program" alt+y
wait_for 10 bash -c "! kill -0 $first" || fail "program did not end after Yes"
icon_in_tray && fail "icon still in the tray after quitting"
[ -e "$home/sonamark.lock" ] && fail "lock file left behind"
echo "ok - quit from the tray menu removes the icon and the lock"

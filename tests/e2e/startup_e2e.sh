#!/usr/bin/env bash
# End-to-end: the resident program under a real X server with a window manager and a
# tray host. Start hidden, icon in the tray, main window not shown, a second start asks
# "Already Running", and quitting from the tray menu removes the icon.
# Usage: startup_e2e.sh BIN_DIR
set -u
bin="$1"
[ -n "${DISPLAY:-}" ] || { echo "FAIL: no DISPLAY (run through scripts/with-desktop.sh)"; exit 1; }
home=$(mktemp -d /tmp/sonamark-e2e-XXXXXX)
export SONAMARK_HOME="$home"
export QT_QPA_PLATFORM=xcb
printf '0\r\n' > "$home/ShowInstructions.flg"
pids=()
cleanup() { for p in "${pids[@]}"; do kill -9 "$p" 2>/dev/null; done; rm -rf "$home"; }
trap cleanup EXIT

fail() { echo "FAIL: $*"; xwininfo -root -tree | grep -iE 'sonamark|trayer|Running|Program' | head -20; exit 1; }
# wait_for SECONDS COMMAND...: retries the command until it succeeds.
wait_for() {
  local limit=$(( $1 * 10 )); shift
  for _ in $(seq "$limit"); do "$@" >/dev/null 2>&1 && return 0; sleep 0.1; done
  return 1
}
icon_in_tray() {
  local t
  for t in $(xdotool search --class trayer 2>/dev/null); do
    xwininfo -tree -id "$t" 2>/dev/null | grep -q '("sonamark" "Sonamark")' && return 0
  done
  return 1
}
managed_window_named() {
  local w
  for w in $(xprop -root _NET_CLIENT_LIST | sed 's/.*# //; s/,/ /g'); do
    xprop -id "$w" WM_NAME 2>/dev/null | grep -q "= \"$1\"" && { echo "$w"; return 0; }
  done
  return 1
}
managed_sonamark_window() {
  local w
  for w in $(xprop -root _NET_CLIENT_LIST | sed 's/.*# //; s/,/ /g'); do
    xprop -id "$w" WM_CLASS 2>/dev/null | grep -q '"sonamark"' && return 0
  done
  return 1
}

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
wait_for 15 managed_window_named "Already Running" || fail "second start did not ask Already Running"
w=$(managed_window_named "Already Running")
xdotool windowactivate --sync "$w" key --clearmodifiers alt+n
wait_for 10 bash -c "! kill -0 $second" || fail "second instance did not end after No"
kill -0 "$first" || fail "first instance ended"
echo "ok - second start asks Already Running; No ends it"

# Right click on the icon, last entry of the menu ("Quit Sonamark"), then Yes.
for t in $(xdotool search --class trayer); do
  geo=$(xwininfo -tree -id "$t" | grep '("sonamark" "Sonamark")' | grep -oE '\+[0-9]+\+[0-9]+$' | head -1)
  [ -n "$geo" ] && break
done
x=$(echo "$geo" | cut -d+ -f2); y=$(echo "$geo" | cut -d+ -f3)
xdotool mousemove $((x + 8)) $((y + 8)) click 3
sleep 1
xdotool key Up Return
wait_for 10 managed_window_named "End Program" || fail "Quit Sonamark did not ask End Program"
w=$(managed_window_named "End Program")
xdotool windowactivate --sync "$w" key --clearmodifiers alt+y
wait_for 10 bash -c "! kill -0 $first" || fail "program did not end after Yes"
icon_in_tray && fail "icon still in the tray after quitting"
[ -e "$home/sonamark.lock" ] && fail "lock file left behind"
echo "ok - quit from the tray menu removes the icon and the lock"

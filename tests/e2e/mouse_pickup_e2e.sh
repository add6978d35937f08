#!/usr/bin/env bash
# End-to-end: the Hotkeys editor's mouse pick-up on the real X server. A left click made
# with the real pointer over another program's window gives "[LEFTDOWN X Y]" and
# "[LEFTUP X Y]" with its screen position, and never reaches that window; a drag takes
# two points; Esc ends the pick-up with nothing pasted; the class name of the window
# clicked is that window's WM_CLASS.
# Usage: mouse_pickup_e2e.sh BIN_DIR PICKUP_DRIVER
set -u
bin="$1"
driver="$2"
source "$(dirname "$0")/e2e_lib.sh"
rec_out="$home/recorded.txt"
"$bin/key_recorder" "$rec_out" &
pids+=($!)
wait_for 10 managed_window_named "Sonamark key recorder" || fail "the key recorder did not open"
rec=$(managed_window_named "Sonamark key recorder")
xdotool windowmove --sync "$rec" 300 300
sleep 0.3
marked() { grep -qx "mark $1" "$rec_out" 2>/dev/null; }

# start_pickup ENTRY TITLE: runs the driver on the entry and waits for the pick-up window.
start_pickup() {
  out="$home/driver-$1.txt"
  "$driver" "$1" > "$out" 2> "$home/driver-$1.log" &
  pids+=($!)
  wait_for 20 managed_window_named "$2" || fail "no \"$2\" window: $(cat "$home/driver-$1.log")"
  # The recorder above the editor, under the pick-up window (which stays on top).
  xdotool windowactivate --sync "$rec"
  sleep 0.5   # the capture begins once the mouse has settled
}
finished() { wait_for 15 grep -qx END "$out" || fail "the driver did not finish: $(cat "$out" "$home"/driver-*.log)"; }
code() { sed -n 's/^CODE //p' "$out"; }

start_pickup mnuPUMouseLeftClick "Define Left Click"
xdotool mousemove 421 456 click 1
finished
[ "$(code)" = "$(printf '[LEFTDOWN 421 456]\n[LEFTUP 421 456]')" ] || fail "pasted: $(code)"
# The click was taken from the recorder: after F11 its file has a mark and no press.
xdotool windowactivate --sync "$rec" key F11
wait_for 10 marked 1 || fail "the recorder did not answer"
grep -q '^press' "$rec_out" && fail "the picked click reached the window under it: $(cat "$rec_out")"
echo "ok - a real left click is picked up as [LEFTDOWN 421 456] and [LEFTUP 421 456] and kept from the window"

start_pickup mnuPUMouseLeftDrag "Define Left Down"
xdotool mousemove 350 320 click 1
wait_for 10 managed_window_named "Define Left Up" || fail "no \"Define Left Up\" window after the first point"
sleep 0.5
xdotool mousemove 600 500 click 1
finished
[ "$(code)" = "$(printf '[LEFTDOWN 350 320]\n[LEFTUP 600 500]')" ] || fail "drag pasted: $(code)"
echo "ok - a drag takes its two points"

start_pickup mnuPUMouseLeftClick "Define Left Click"
picker=$(managed_window_named "Define Left Click")
xdotool windowactivate --sync "$picker" key Escape
finished
[ -z "$(code)" ] || fail "Esc pasted: $(code)"
xdotool mousemove 430 460 click 1
xdotool windowactivate --sync "$rec" key F11
wait_for 10 marked 2 || fail "the recorder did not answer"
grep -q '^press' "$rec_out" || fail "after Esc a click does not reach the window: $(cat "$rec_out")"
echo "ok - Esc ends the pick-up with nothing pasted, and clicks reach windows again"

start_pickup class "Get Class Name"
xdotool mousemove 500 400 click 1
finished
expected=$(xprop -id "$rec" WM_CLASS | sed 's/.*, "\(.*\)"$/\1/')
grep -qx "CLASS $expected" "$out" || fail "class: $(cat "$out"), expected $expected"
echo "ok - the window clicked has the class $expected"

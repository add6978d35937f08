#!/usr/bin/env bash
# End-to-end: "Make Hotkeys Macro" on the real X server. Keys typed and two clicks made
# in another program's window reach it and are recorded in the macro notation, with a
# [WAIT] line before each mouse statement and a key after a click on a new line; hotkeys
# do not fire meanwhile; a left click on the tray icon ends the recording without
# itself being recorded, and the Hotkeys editor opens on a new macro with the recorded
# text, which is named, given a key and saved to the Hotkeys file.
# Usage: recording_e2e.sh BIN_DIR XTEST_KEYS
set -u
bin="$1"
keys="$2"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
printf '"12"\r\n"Mary"\r\n"0"\r\n"100"\r\n"0"\r\n"1"\r\n"1"\r\n"%s"\r\n' "$home/Hotkeys.txt" > "$home/options.def"
printf '"<Hotkeys Macros v1.2>"\r\n#TRUE#,"^%%k","Waiter","[WAIT 30]"\r\n' > "$home/Hotkeys.txt"
keylog="$home/xev.log"

"$bin/sonamark" /h &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
read -r trayx trayy < <(tray_icon_centre)

xev -name keysink -geometry 300x200+100+100 > "$keylog" 2>&1 &
pids+=($!)
wait_for 10 managed_window_named keysink || fail "xev did not open"
sink=$(managed_window_named keysink)
received() { grep -A2 '^KeyPress' "$keylog" | grep -c "keysym 0x[0-9a-f]*, $1)"; }

# Tray menu: Options (third from the bottom), Hotkeys, Make Hotkeys Macro (below Edit).
xdotool mousemove "$trayx" "$trayy" click 3
sleep 1
xdotool key Up Up Up Right Down Right Down Return
answer "Make Hotkeys Macro" Return   # Yes, with "Include Mouse Events" checked
sleep 0.5

xdotool windowactivate --sync "$sink"
sleep 0.3
"$keys" tap h tap i down Control_L down Alt_L tap k up Alt_L up Control_L
sleep 0.4
xdotool mousemove 200 200 click 1
sleep 0.6
xdotool mousemove 250 220 click 1
sleep 0.3
"$keys" tap x
sleep 0.5
xdotool mousemove "$trayx" "$trayy" click 1
editor() { xdotool search --onlyvisible --name '^Hotkeys - ' 2>/dev/null | head -1; }
wait_for 10 editor || fail "the editor did not open on the recording"

[ "$(received k)" = 1 ] || fail "a key typed during the recording was swallowed"
[ "$(received x)" = 1 ] || fail "the key after the clicks did not reach the window"
[ "$(grep -c '^ButtonPress' "$keylog")" = 2 ] || fail "the recorded clicks did not reach the window"
managed_window_named "ERROR REPORT" >/dev/null && fail "a hotkey fired during the recording"
echo "ok - keys and clicks reach the window during the recording; hotkeys do not fire"

# The new macro: its key pressed into the key field, a name, then Save.
ed=$(editor)
xdotool windowactivate --sync "$ed"
sleep 0.5
"$keys" down Control_L down Alt_L tap r up Alt_L up Control_L
sleep 0.3
xdotool key Tab
xdotool type --delay 30 "Recorded"
xdotool key alt+s
# A click shorter than 0.05 s is recorded as "[WAIT 0.]", which the checker refuses:
# the errors are kept (No to viewing them instead).
savebox() { xwininfo -root -tree | awk '/ "Save \"/ {print $1; exit}' | grep .; }
if wait_for 3 savebox; then xdotool windowactivate --sync "$(savebox)" key --clearmodifiers alt+n; fi
wait_for 10 grep -q Recorded "$home/Hotkeys.txt" || fail "Save did not write the recorded macro"
expected='#TRUE#,"^%r","Recorded","hi^%k
[WAIT n]
[LEFTDOWN 200 200]
[WAIT n]
[LEFTUP 200 200]
[WAIT n]
[LEFTDOWN 250 220]
[WAIT n]
[LEFTUP 250 220]
x
"'
got=$(tr -d '\r' < "$home/Hotkeys.txt" | sed -n '/Recorded/,$p' | sed -E 's/\[WAIT [0-9]+\.[0-9]?\]/[WAIT n]/')
[ "$got" = "$expected" ] || fail "recorded macro differs:
$got"
grep -q $'\[LEFTUP 250 220\]\r\nx\r\n"' "$home/Hotkeys.txt" || fail "the recording's lines are not CR LF"
echo "ok - the recording has the keys, a [WAIT] and a statement for each press and release, and the tray click is cut"

xdotool windowactivate --sync "$ed" key --clearmodifiers ctrl+w
sleep 0.5
xdotool windowactivate --sync "$sink"
sleep 0.3
"$keys" down Control_L down Alt_L tap k up Alt_L up Control_L
sleep 0.5
[ "$(received k)" = 1 ] || fail "the hotkey was not restored after the recording"
echo "ok - hotkeys work again after the recording"

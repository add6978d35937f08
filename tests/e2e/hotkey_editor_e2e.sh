#!/usr/bin/env bash
# End-to-end: the Hotkeys editor on the real X server. It opens from the tray menu; a new
# macro gets its key pressed into the key field (a hotkey pressed there is taken as text
# and fires nothing), a name and a text to type; Save writes the Hotkeys file. Once the
# editor is closed the new hotkey types the text into another program (our key
# recorder), and sonamark-cli runs the same macro from the saved file.
# Usage: hotkey_editor_e2e.sh BIN_DIR XTEST_KEYS
set -u
bin="$1"
keys="$2"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
# Option 7 ("1"): hotkeys enabled at start.
printf '"12"\r\n"Mary"\r\n"0"\r\n"100"\r\n"0"\r\n"1"\r\n"1"\r\n"%s"\r\n' "$home/Hotkeys.txt" > "$home/options.def"
printf '"<Hotkeys Macros v1.2>"\r\n#TRUE#,"^%%k","Waiter","[WAIT 30]"\r\n' > "$home/Hotkeys.txt"
out="$home/recorded.txt"
wait_for 10 xdotool search --class trayer || fail "no tray host"
"$bin/key_recorder" "$out" &
pids+=($!)
wait_for 10 managed_window_named "Sonamark key recorder" || fail "the key recorder did not open"
rec=$(managed_window_named "Sonamark key recorder")
QT_LOGGING_RULES="sonamark.hooks.debug=true" "$bin/sonamark" /h 2> "$home/hooks.log" &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
text() { sed -n '/^--- text ---$/,$p' "$out" | tail -n +2; }
marked() { grep -qx "mark $1" "$out" 2>/dev/null; }
editor() { xdotool search --onlyvisible --name '^Hotkeys - ' 2>/dev/null | head -1; }

# Tray menu: Options (third from the bottom), Hotkeys, Edit Hotkeys.
# shellcheck disable=SC2046
xdotool mousemove $(tray_icon_centre) click 3
sleep 1
xdotool key Up Up Up Right Down Right Return
wait_for 15 editor || fail "the editor did not open from the tray menu"
ed=$(editor)
xdotool getwindowname "$ed" | grep -q '^Hotkeys - 1 hotkeys defined. ' || fail "caption: $(xdotool getwindowname "$ed")"
echo "ok - the editor opens from the tray menu on the Hotkeys file"

xdotool windowactivate --sync "$ed" key --clearmodifiers alt+n
answer "New Macro" alt+n   # a blank macro, not a recording
sleep 0.5
xdotool windowactivate --sync "$ed"
sleep 0.3
# Waiter's own hotkey pressed in the key field: taken as text, not fired.
"$keys" down Control_L down Alt_L tap k up Alt_L up Control_L
sleep 0.5
"$keys" down Control_L down Alt_L tap e up Alt_L up Control_L
sleep 0.3
xdotool key Tab
xdotool type --delay 30 "Greeting"
xdotool key Tab
xdotool type --delay 30 "Hello from the editor{F11}"
sleep 0.3
xdotool key alt+s
sleep 1
grep -q 'swallowed key' "$home/hooks.log" && fail "a hotkey pressed in the key field fired"
tr -d '\r' < "$home/Hotkeys.txt" | grep -qx '#TRUE#,"^%e","Greeting","Hello from the editor{F11}"' \
  || fail "the new macro is not in the Hotkeys file: $(cat "$home/Hotkeys.txt")"
xdotool getwindowname "$ed" | grep -q '^Hotkeys - 2 hotkeys defined. ' || fail "caption after the save: $(xdotool getwindowname "$ed")"
echo "ok - a macro made in the editor is saved to the Hotkeys file; its key pressed in the key field fired nothing"

xdotool windowactivate --sync "$ed" key --clearmodifiers ctrl+w
wait_for 10 bash -c "! xdotool search --onlyvisible --name '^Hotkeys - '" || fail "the editor did not close"
xdotool windowactivate --sync "$rec"
sleep 0.3
"$keys" down Control_L down Alt_L tap e up Alt_L up Control_L
wait_for 15 marked 1 || fail "the new hotkey did not type its text"
[ "$(text)" = "Hello from the editor" ] || fail "typed text differs: [$(text)]"
echo "ok - the new hotkey types its text into another program"

"$bin/sonamark-cli" run --hotkeys "$home/Hotkeys.txt" --macro Greeting 2> "$home/cli.err" >/dev/null
grep -q 'Hello from the editor' "$home/cli.err" || fail "sonamark-cli ran something else: $(cat "$home/cli.err")"
echo "ok - sonamark-cli runs the same macro from the saved file"

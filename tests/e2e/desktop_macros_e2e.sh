#!/usr/bin/env bash
# End-to-end: macros act on a real desktop. A hotkey pressed on the X server runs a macro
# that types into another program's text box (our key recorder): plain, shifted and
# braced keys, characters the keyboard map does not have, and a 2,000-character text,
# also while the hotkey's own modifiers are still held down. A [LEFTDOWN]/[LEFTUP] pair
# clicks at the right pixel, and [SETFOCUS] brings a window forward by its class.
# Usage: desktop_macros_e2e.sh BIN_DIR XTEST_KEYS
set -u
bin="$1"
keys="$2"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
# Option 7 ("1"): hotkeys enabled at start.
printf '"12"\r\n"Mary"\r\n"0"\r\n"100"\r\n"0"\r\n"1"\r\n"1"\r\n"%s"\r\n' "$home/Hotkeys.txt" > "$home/options.def"
out="$home/recorded.txt"
wait_for 10 xdotool search --class trayer || fail "no tray host"
"$bin/key_recorder" "$out" &
pids+=($!)
wait_for 10 managed_window_named "Sonamark key recorder" || fail "the key recorder did not open"
rec=$(managed_window_named "Sonamark key recorder")
sleep 0.5
# The box's top left corner on the screen; the click goes 40 right and 30 down from it.
ax=$(xwininfo -id "$rec" | awk '/Absolute upper-left X/ {print $4}')
ay=$(xwininfo -id "$rec" | awk '/Absolute upper-left Y/ {print $4}')
cx=$((ax + 40)); cy=$((ay + 30))
long=$(python3 -c "import string; s=string.ascii_letters+string.digits+',.;:!?-_=/<>@#\$*'; print((s*40)[:2000])")
q=$'\xc3\xa0'   # quotes inside a macro are stored as this marker
{
  printf '"<Hotkeys Macros v1.2>"\r\n'
  printf '#TRUE#,"^%%t","Typing","[SENDKEYS %sHello World{ENTER}%s]\r\nabc+(xyz)~\r\n[SENDKEYS %s\xc3\xa9 \xe2\x82\xac \xc3\x9f \xce\xa9 \xe6\x97\xa5\xe6\x9c\xac%s]\r\n{F11}"\r\n' "$q" "$q" "$q" "$q"
  printf '#TRUE#,"^%%l","Long","[SENDKEYS %s%s%s]\r\n{F11}"\r\n' "$q" "$long" "$q"
  printf '#TRUE#,"^%%m","Click","[LEFTDOWN %d %d]\r\n[LEFTUP %d %d]\r\n{F11}"\r\n' "$cx" "$cy" "$cx" "$cy"
  printf '#TRUE#,"^%%f","Focus","[SETFOCUS %skey_recorder%s A]\r\n[IF A=%sYES%s]\r\nfound{F11}\r\n[ENDIF]"\r\n' "$q" "$q" "$q" "$q"
  printf '#TRUE#,"^%%z","Trap","[CLICKZONE %d %d %d %d TRUE]\r\ntrapped{F11}"\r\n' "$ax" "$ay" $((ax + 300)) $((ay + 300))
  printf '#TRUE#,"^%%y","Pass","[CLICKZONE %d %d %d %d FALSE]\r\npassed{F11}"\r\n' "$ax" "$ay" $((ax + 300)) $((ay + 300))
  printf '#TRUE#,"^%%k","Log","[KEYLOG K]\r\n[WAIT 3]\r\n[KEYLOG K]\r\n[SENDKEYS K]\r\n{F11}"\r\n'
} > "$home/Hotkeys.txt"

"$bin/sonamark" /h &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
focus() { xdotool windowactivate --sync "$rec" >/dev/null 2>&1; sleep 0.3; }
text() { sed -n '/^--- text ---$/,$p' "$out" | tail -n +2; }
marked() { grep -qx "mark $1" "$out" 2>/dev/null; }
clear_box() { focus; "$keys" tap F12; sleep 0.5; }

focus
"$keys" down Control_L down Alt_L tap t up Alt_L up Control_L
wait_for 15 marked 1 || fail "the typing macro did not finish: $(cat "$out" 2>/dev/null)"
expected=$(printf 'Hello World\nabcXYZ\n\xc3\xa9 \xe2\x82\xac \xc3\x9f \xce\xa9 \xe6\x97\xa5\xe6\x9c\xac')
[ "$(text)" = "$expected" ] || fail "typed text differs: [$(text)]"
echo "ok - a hotkey's macro types plain, shifted, braced and unmapped characters exactly"

# The same hotkey with Ctrl and Alt held down all through the typing.
clear_box
"$keys" down Control_L down Alt_L tap t
wait_for 15 marked 2 || { "$keys" up Alt_L up Control_L; fail "typing with held modifiers did not finish"; }
"$keys" up Alt_L up Control_L
[ "$(text)" = "$expected" ] || fail "typed text differs with the modifiers held: [$(text)]"
echo "ok - the text arrives as written while the hotkey's modifiers are still held"

clear_box
"$keys" down Control_L down Alt_L tap l up Alt_L up Control_L
wait_for 60 marked 3 || fail "the long text did not finish"
[ "$(text)" = "$long" ] || fail "the 2,000 characters differ: $(text | wc -c) bytes arrived"
echo "ok - 2,000 characters arrive in order with nothing lost or doubled"

clear_box
"$keys" down Control_L down Alt_L tap m up Alt_L up Control_L
wait_for 15 marked 4 || fail "the click macro did not finish"
grep -qx "press left 40 30" "$out" || fail "the click landed elsewhere: $(grep press "$out")"
echo "ok - [LEFTDOWN] and [LEFTUP] click at the pixel given"

# Another window in front; [SETFOCUS] by the recorder's class brings it back.
xev -name other -geometry 300x200+0+0 > /dev/null 2>&1 &
pids+=($!)
wait_for 10 managed_window_named other || fail "xev did not open"
xdotool windowactivate --sync "$(managed_window_named other)"
sleep 0.5
clear_box
xdotool windowactivate --sync "$(managed_window_named other)"
sleep 0.3
"$keys" down Control_L down Alt_L tap f up Alt_L up Control_L
wait_for 15 marked 5 || fail "[SETFOCUS] did not bring the recorder forward"
[ "$(text)" = "found" ] || fail "after [SETFOCUS] the box holds [$(text)]"
echo "ok - [SETFOCUS] brings a window forward by its class"

# [CLICKZONE ... TRUE] keeps the click from the window; FALSE lets it through.
clear_box
"$keys" down Control_L down Alt_L tap z up Alt_L up Control_L
sleep 1
xdotool mousemove "$cx" "$cy" click 1
wait_for 15 marked 6 || fail "[CLICKZONE ... TRUE] did not see the click"
[ "$(text)" = "trapped" ] || fail "after the trapping zone the box holds [$(text)]"
! grep -q '^press' "$out" || fail "a trapped click reached the window: $(grep press "$out")"
clear_box
"$keys" down Control_L down Alt_L tap y up Alt_L up Control_L
sleep 1
xdotool mousemove "$cx" "$cy" click 1
wait_for 15 marked 7 || fail "[CLICKZONE ... FALSE] did not see the click"
grep -qx "press left 40 30" "$out" || fail "the click did not pass through the zone"
echo "ok - [CLICKZONE] traps the click with TRUE and lets it through with FALSE"

# [KEYLOG] hands back what was typed while the macro waited.
clear_box
"$keys" down Control_L down Alt_L tap k up Alt_L up Control_L
sleep 0.5
xdotool type --delay 50 abc
wait_for 15 marked 8 || fail "the key log macro did not finish"
[ "$(text)" = "abcabc" ] || fail "the key log gave [$(text)]"
echo "ok - [KEYLOG] returns what was typed"

#!/usr/bin/env bash
# End-to-end: global hotkeys on the real X server. A hotkey typed into another program's
# window runs its macro and never reaches that window; right Ctrl does not make a
# left-Ctrl hotkey and its key goes through; Esc ends a macro's [WAIT] at once and is not
# passed on, while with no macro running it belongs to the window. Releases always pass. The other program is
# xev, which prints every key it receives.
# Usage: hotkeys_e2e.sh BIN_DIR XTEST_KEYS
set -u
bin="$1"
keys="$2"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
# Option 7 ("1"): hotkeys enabled at start.
printf '"12"\r\n"Mary"\r\n"0"\r\n"100"\r\n"0"\r\n"1"\r\n"1"\r\n"%s"\r\n' "$home/Hotkeys.txt" > "$home/options.def"
# "Waiter" waits 30 seconds; Esc ends the wait, and the report then tells "WAIT aborted by user".
# "Quick" only sets a variable.
printf '"<Hotkeys Macros v1.2>"\r\n#TRUE#,"^%%k","Waiter","[WAIT 30]"\r\n#TRUE#,"^%%q","Quick","[X=1]"\r\n' \
  > "$home/Hotkeys.txt"
keylog="$home/xev.log"

# The hooks' log tells each swallowed hotkey.
QT_LOGGING_RULES="sonamark.hooks.debug=true" "$bin/sonamark" /h 2> "$home/hooks.log" &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"

xev -name keysink -geometry 300x200+100+100 > "$keylog" 2>&1 &
pids+=($!)
wait_for 10 managed_window_named keysink || fail "xev did not open"
sink=$(managed_window_named keysink)
focus_sink() { xdotool windowactivate --sync "$sink" >/dev/null 2>&1; sleep 0.3; }
# received KEYSYM: how many presses of KEYSYM reached xev
received() { grep -A2 '^KeyPress' "$keylog" | grep -c "keysym 0x[0-9a-f]*, $1)"; }
released() { grep -A2 '^KeyRelease' "$keylog" | grep -c "keysym 0x[0-9a-f]*, $1)"; }
closed() { ! managed_window_named "$1" >/dev/null; }
# dismiss TITLE: presses the default button of the message titled TITLE. The message is
# given the input focus directly: the window manager does not activate a window while a
# modal one of the same program is open.
dismiss() {
  sleep 0.3
  xdotool windowfocus --sync "$(managed_window_named "$1")" key --clearmodifiers Return
  wait_for 10 closed "$1" || fail "the \"$1\" message did not close"
}

focus_sink
"$keys" down Control_R down Alt_L tap k up Alt_L up Control_R
sleep 1
"$keys" tap Escape
sleep 1
[ "$(received k)" = 1 ] || fail "right Ctrl+Alt+k did not reach the other window"
[ "$(received Escape)" = 1 ] || fail "Esc was swallowed: right Ctrl started the left-Ctrl hotkey's macro"
managed_window_named "ERROR REPORT" >/dev/null && fail "a macro ran on right Ctrl"
echo "ok - right Ctrl does not fire a left-Ctrl hotkey, and the key goes through"

focus_sink
# Held a moment, as a person types, so that the release comes after the decision.
"$keys" down Control_L down Alt_L down k
sleep 0.3
"$keys" up k up Alt_L up Control_L
sleep 1
managed_window_named "ERROR REPORT" >/dev/null && fail "the macro did not wait"
focus_sink
start=$(date +%s.%N)
"$keys" tap Escape
# The swallowed Esc also restarts RunTimer while the hotkey's macro is still pending and
# running: "A macro is already running" comes up, over the report or just before it.
wait_for 10 managed_window_named "Run Macro" || fail "Esc brought up no \"A macro is already running\""
dismiss "Run Macro"
wait_for 10 managed_window_named "ERROR REPORT" || fail "Esc did not end the macro's [WAIT 30]"
elapsed=$(echo "$(date +%s.%N) - $start" | bc)
[ "$(received k)" = 1 ] || fail "the hotkey's k reached the other window"
[ "$(received Escape)" = 1 ] || fail "Esc reached the other window while the macro ran"
[ "$(released k)" = 2 ] || fail "the release of the hotkey's k was swallowed"
[ "$(released Control_L)" = 1 ] || fail "the release of left Ctrl was swallowed"
echo "ok - a hotkey typed into another window runs its macro and is swallowed; its releases pass"
echo "ok - Esc ends the macro's wait after ${elapsed}s and is swallowed"

# The report is modal: the run lasts until the user closes it, so Esc is still the
# macro's and brings up "A macro is already running" again.
focus_sink
"$keys" tap Escape
wait_for 10 managed_window_named "Run Macro" || fail "the run ended before its report was closed"
[ "$(received Escape)" = 1 ] || fail "Esc reached the other window while the report was open"
dismiss "Run Macro"
managed_window_named "ERROR REPORT" >/dev/null || fail "the report closed with the message"
xdotool windowfocus --sync "$(managed_window_named "ERROR REPORT")" key --clearmodifiers alt+F4
wait_for 10 closed "ERROR REPORT" || fail "the report window did not close"
echo "ok - the run lasts while its report is open"

sleep 0.5
focus_sink
"$keys" tap Escape
sleep 0.5
[ "$(received Escape)" = 2 ] || fail "Esc did not reach the other window once the macro had ended"
echo "ok - Esc passes on when no macro runs"

# Held down, a hotkey fires again on each auto-repeat (about 25 a second after 0.66 s).
focus_sink
"$keys" down Control_L down Alt_L down q
sleep 1.5
"$keys" up q up Alt_L up Control_L
sleep 0.5
fired=$(grep -c 'swallowed key 81 pending macro 2' "$home/hooks.log")
[ "$fired" -ge 5 ] || fail "a held hotkey fired $fired times"
[ "$(received q)" = 0 ] || fail "a repeat of the held hotkey reached the other window"
echo "ok - a held hotkey fires on each auto-repeat ($fired times in 1.5 s)"

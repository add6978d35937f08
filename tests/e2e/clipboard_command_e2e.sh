#!/usr/bin/env bash
# End-to-end: sonamark-launch puts the clipboard command on the real clipboard; the
# running program takes it within a second, clears the clipboard, waits the given
# seconds and runs the named macro, whose report opens in the "ERROR REPORT" window.
# Usage: clipboard_command_e2e.sh BIN_DIR
set -u
bin="$1"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
printf '"12"\r\n"Mary"\r\n"0"\r\n"100"\r\n"0"\r\n"1"\r\n"0"\r\n"%s"\r\n' "$home/Hotkeys.txt" > "$home/options.def"
# "My Macro" passes the check but types a variable that was never set: its run ends with
# a report. "Broken" fails the check, so the program asks before running it.
printf '"<Hotkeys Macros v1.2>"\r\n#TRUE#,"^%%A","Other","x"\r\n#TRUE#,"^%%B","My Macro","[SENDKEYS Missing]"\r\n#TRUE#,"^%%C","Broken","[WAIT 0.01]"\r\n' \
  > "$home/Hotkeys.txt"

"$bin/sonamark" /h &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"

start=$(date +%s.%N)
"$bin/sonamark-launch" 'My$Macro' 2 || fail "sonamark-launch failed"
# Taken off the clipboard within about a second.
wait_for 5 bash -c '[ -z "$(xclip -selection clipboard -o 2>/dev/null)" ]' \
  || fail "the command stayed on the clipboard: $(xclip -selection clipboard -o 2>/dev/null)"
wait_for 15 managed_window_named "ERROR REPORT" || fail "no report window after the macro ran"
elapsed=$(echo "$(date +%s.%N) - $start" | bc)
[ "$(echo "$elapsed >= 2" | bc)" = 1 ] || fail "the macro ran after $elapsed s, before its 2-second wait"
echo "ok - sonamark-launch runs \"My Macro\" after its wait (${elapsed}s) and the report opens"


# A macro with errors is not run without asking; Cancel leaves it unrun.
xdotool windowactivate --sync "$(managed_window_named "ERROR REPORT")" key --clearmodifiers alt+F4
report_closed() { ! managed_window_named "ERROR REPORT" >/dev/null; }
wait_for 10 report_closed || fail "the report window did not close"
sleep 0.5
"$bin/sonamark-launch" 'Broken' || fail "sonamark-launch failed"
wait_for 15 managed_window_named 'Run Hotkey 3 "Broken"' || fail "no question before running a macro with errors"
answer 'Run Hotkey 3 "Broken"' Escape
sleep 2
! managed_window_named "ERROR REPORT" >/dev/null || fail "the macro with errors ran after Cancel"
echo "ok - a macro with errors asks first, and Cancel does not run it"

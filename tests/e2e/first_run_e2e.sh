#!/usr/bin/env bash
# End-to-end: a first start opens the help viewer on page 1; asking it to quit Sonamark
# travels back through the clipboard ("QuitMe") and the program asks "Quit Sonamark?".
# Usage: first_run_e2e.sh BIN_DIR
set -u
bin="$1"
source "$(dirname "$0")/e2e_lib.sh"

"$bin/sonamark" &
prog=$!
pids+=("$prog")
page1="Sonamark Help - 1) Reading the Clipboard"
wait_for 15 managed_window_named "$page1" || fail "the help viewer did not open on page 1 on a first run"
[ "$(tr -d '\r\n' < "$home/ShowInstructions.flg")" = "1" ] || fail "first-run flag not written"
help=$(managed_window_named "$page1")
# Tick "Quit Sonamark when this window closes" (alt+q), then close the viewer.
xdotool windowactivate --sync "$help" key --clearmodifiers alt+q
sleep 0.3
xdotool windowactivate --sync "$help" key --clearmodifiers alt+c
answer "End Program" alt+y
wait_for 10 bash -c "! kill -0 $prog" || fail "program did not end after Yes"
echo "ok - first-run help answers QuitMe through the clipboard and the program ends"

#!/usr/bin/env bash
# End-to-end: the main window's document commands on the real program. A text file is
# opened through File > Open, rewritten by Exceptions > Apply To Current Text with the
# pairs of exceptions.txt loaded at start-up, printed through File > Print (no printer
# here, so into a PDF file, read back with pdftotext), and saved back by File > Save.
# Usage: documents_e2e.sh BIN_DIR
set -u
bin="$1"
source "$(dirname "$0")/e2e_lib.sh"
command -v pdftotext >/dev/null || { echo "SKIP: pdftotext is not installed"; exit 0; }
printf '0\r\n' > "$home/ShowInstructions.flg"
printf '"Dr","Doctor"\r\n' > "$home/exceptions.txt"
doc="$home/letter.txt"
pdf="$home/letter.pdf"
printf 'Dr Smith reads the report aloud.\r\n' > "$doc"

main_window() { xdotool search --onlyvisible --name '^Sonamark' 2>/dev/null | head -1; }
# menu KEY MOVES...: opens a menu of the main window by its Alt key, moves from its first
# entry by the keys given (Down, Up) and takes the entry reached.
menu() {
  local w
  w=$(main_window) || return 1
  xdotool windowactivate --sync "$w" key --clearmodifiers "alt+$1"
  sleep 0.4
  shift
  [ $# -gt 0 ] && xdotool key "$@"
  xdotool key Return
}
# file_dialog TITLE PATH: types a path into the file dialog titled TITLE.
file_dialog() {
  wait_for 15 managed_window_named "$1" || fail "no \"$1\" dialog"
  xdotool windowactivate --sync "$(managed_window_named "$1")"
  sleep 0.3
  xdotool key ctrl+a type --delay 20 "$2"
  xdotool key Return
}

wait_for 10 xdotool search --class trayer || fail "no tray host"
sleep 0.5
"$bin/sonamark" /h &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
# The main window through the tray menu: Options > Sonamark (enabled entries from the
# bottom: Quit Sonamark, Cancel, Options).
for t in $(xdotool search --class trayer); do
  geo=$(xwininfo -tree -id "$t" | grep '("sonamark" "Sonamark")' | grep -oE '\+[0-9]+\+[0-9]+$' | head -1)
  [ -n "$geo" ] && break
done
x=$(echo "$geo" | cut -d+ -f2); y=$(echo "$geo" | cut -d+ -f3)
xdotool mousemove $((x + 8)) $((y + 8)) click 3
sleep 1
xdotool key Up Up Up Right
sleep 0.4
xdotool key Return
wait_for 15 main_window || fail "the main window is not shown"
sleep 1

menu f   # File > Open
file_dialog "Open a Text File" "$doc"
wait_for 10 managed_window_named "Sonamark - $doc" || fail "caption does not name the file"
echo "ok - File > Open loads the text and names the file in the caption"

menu x   # Exceptions > Apply To Current Text
sleep 0.5
menu f Down   # File > Save
wait_for 10 grep -q '^Doctor Smith reads the report aloud\.' "$doc" \
  || fail "the rewritten text was not saved: $(cat "$doc")"
echo "ok - the exceptions loaded at start-up rewrite the text, and File > Save writes it back"

menu f Up Up   # File > Print, above Exit
answer "Print Text" alt+y
file_dialog "Print To PDF File" "$pdf"
wait_for 20 test -s "$pdf" || fail "no PDF was printed"
sleep 1
pdftotext "$pdf" - | grep -q 'Doctor Smith reads the report aloud' \
  || fail "the PDF does not hold the text: $(pdftotext "$pdf" - | head -3)"
echo "ok - File > Print without a printer prints the text into a PDF file"

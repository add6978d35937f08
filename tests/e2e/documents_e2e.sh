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

start_with_main_window

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

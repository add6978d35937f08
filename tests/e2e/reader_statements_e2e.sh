#!/usr/bin/env bash
# End-to-end: macros drive the reader in the running program. [SETCLIP] puts text on the
# X clipboard and [GETCLIP] reads what another program copied; [CLIP ON] makes the next
# copy speak at the PulseAudio null sink; [MAKEMP3 File] opens Read To MP3 with the name
# filled in and makes an MP3 that mpg123 decodes; [PRINT File] prints a document into a
# PDF (no printer here) that pdftotext reads back, and the reader's own text comes back.
# Usage: reader_statements_e2e.sh BIN_DIR XTEST_KEYS
set -u
bin="$1"
keys="$2"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
printf '"12"\r\n"Mary"\r\n"0"\r\n"100"\r\n"0"\r\n"1"\r\n"1"\r\n"%s"\r\n' "$home/Hotkeys.txt" > "$home/options.def"
q=$'\xc3\xa0'
doc="$home/report.txt"
printf 'Quarterly numbers printed from a macro.\r\n' > "$doc"
{
  printf '"<Hotkeys Macros v1.2>"\r\n'
  printf '#TRUE#,"^%%s","Set","[SETCLIP %sset by a macro%s]"\r\n' "$q" "$q"
  printf '#TRUE#,"^%%g","Get","[GETCLIP G]\r\n[OPEN 1 %s%s/got.txt%s]\r\n[WRITE 1 G]\r\n[CLOSE 1]"\r\n' "$q" "$home" "$q"
  printf '#TRUE#,"^%%c","ClipOn","[CLIP ON]"\r\n'
  printf '#TRUE#,"^%%o","ClipOff","[CLIP OFF]"\r\n'
  printf '#TRUE#,"^%%m","Mp3","[LOADFILE %s%s%s]\r\n[MAKEMP3 %s%s/out.mp3%s]"\r\n' "$q" "$doc" "$q" "$q" "$home" "$q"
  printf '#TRUE#,"^%%p","Print","[PRINT %s%s%s]"\r\n' "$q" "$doc" "$q"
  printf '#TRUE#,"^%%l","List","[LISTHOTKEYS]\r\n[SETCLIP %slist closed%s]"\r\n' "$q" "$q"
  printf '#TRUE#,"^%%d","Dialog","[USERINPUT %sdialog+Open+Pick a report+%s+txt%s F]\r\n[SETCLIP F]"\r\n' "$q" "$home" "$q"
} > "$home/Hotkeys.txt"
hotkey() { "$keys" down Control_L down Alt_L tap "$1" up Alt_L up Control_L; }
clip() { xclip -selection clipboard -o 2>/dev/null; }

start_with_main_window
xdotool windowunmap "$(main_window)"
sleep 0.5

hotkey s
wait_for 10 sh -c '[ "$(xclip -selection clipboard -o 2>/dev/null)" = "set by a macro" ]' \
  || fail "[SETCLIP] did not reach the X clipboard: [$(clip)]"
echo "ok - [SETCLIP] puts the text on the X clipboard, where xclip reads it"

printf 'copied by another program' | xclip -selection clipboard -i
sleep 0.5
hotkey g
wait_for 10 test -s "$home/got.txt" || fail "[GETCLIP] wrote nothing"
[ "$(tr -d '\r' < "$home/got.txt")" = "copied by another program" ] || fail "[GETCLIP] got [$(cat "$home/got.txt")]"
echo "ok - [GETCLIP] reads what another program copied"

audio="$home/sink.raw"
parec -d sonamark_null.monitor --format=s16le --rate=16000 --channels=1 --latency-msec=10 > "$audio" &
pids+=($!)
wait_for 10 test -s "$audio" || fail "parec records nothing from sonamark_null.monitor"
hotkey c
sleep 1.5
start=$(stat -c %s "$audio")
printf 'Spoken after the macro switched monitoring on.' | xclip -selection clipboard -i
loud() { tail -c +$(( start + 1 )) "$audio" | od -An -td2 -v -w2 | awk '$1 > 200 || $1 < -200 { f=1; exit } END { exit !f }'; }
wait_for 15 loud || fail "no speech reached the null sink after [CLIP ON] and a copy"
hotkey o
echo "ok - [CLIP ON] makes the next copy speak at the null sink"
sleep 3

hotkey m
wait_for 15 managed_window_named "Sonamark - Read To MP3" || fail "[MAKEMP3] did not open Read To MP3"
dialog=$(managed_window_named "Sonamark - Read To MP3")
sleep 0.5
[ -n "${SHOT:-}" ] && xwd -id "$dialog" -silent | convert xwd:- "$SHOT-mp3.png"
xdotool windowactivate --sync "$dialog" key --clearmodifiers alt+r   # &Read To File
answer "File Saved" Return
wait_for 20 test -s "$home/out.mp3" || fail "no MP3 was made"
mpg123 -q -t "$home/out.mp3" 2>/dev/null || fail "mpg123 cannot decode the MP3"
# The dialog closes by its Close button (Esc would abort the macro that opened it), and
# the macro ends with it.
xdotool windowactivate --sync "$dialog" key --clearmodifiers alt+c
wait_for 10 sh -c '! xwininfo -id '"$dialog"' >/dev/null 2>&1' || fail "Read To MP3 did not close"
echo "ok - [MAKEMP3] opens Read To MP3 with the file named, and its MP3 decodes"
sleep 1
hotkey p
answer "Print Text" Return
file_dialog "Print To PDF File" "$home/printed.pdf"
wait_for 20 test -s "$home/printed.pdf" || fail "[PRINT] made no PDF"
sleep 1
pdftotext "$home/printed.pdf" - | grep -q "Quarterly numbers printed from a macro." \
  || fail "the PDF does not hold the document: $(pdftotext "$home/printed.pdf" - | head -3)"
echo "ok - [PRINT] prints the file into a PDF that pdftotext reads back"

hotkey l
wait_for 15 managed_window_named "Hotkeys : Hotkeys.txt" || fail "[LISTHOTKEYS] did not open the hotkey list"
list=$(managed_window_named "Hotkeys : Hotkeys.txt")
[ -n "${SHOT:-}" ] && xwd -id "$list" -silent | convert xwd:- "$SHOT-list.png"
xdotool windowactivate --sync "$list" key --clearmodifiers alt+q   # &Quit
wait_for 10 sh -c '[ "$(xclip -selection clipboard -o 2>/dev/null)" = "list closed" ]' \
  || fail "the macro did not go on after the hotkey list closed"
echo "ok - [LISTHOTKEYS] opens the hotkey list modally and the macro goes on when it closes"

hotkey d
file_dialog "Pick a report" "$doc"
wait_for 10 sh -c '[ "$(xclip -selection clipboard -o 2>/dev/null)" = "'"$doc"'" ]' \
  || fail "the dialog's file did not reach the variable: [$(clip)]"
echo "ok - [USERINPUT \"dialog+Open+...\" F] opens a file dialog and F gets the file chosen"

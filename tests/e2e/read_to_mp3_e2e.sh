#!/usr/bin/env bash
# End-to-end: File > Save To MP3 on the real program. A text file is opened, the Read To
# MP3 dialog is opened from the File menu (a screenshot of the desktop is kept when
# SHOT is set), a name is typed, "Read To File" makes the MP3 (read back by ffprobe) and
# the temporary wave in the data folder is gone.
# Usage: read_to_mp3_e2e.sh BIN_DIR
set -u
bin="$1"
source "$(dirname "$0")/e2e_lib.sh"
command -v ffprobe >/dev/null || { echo "SKIP: ffprobe is not installed"; exit 0; }
printf '0\r\n' > "$home/ShowInstructions.flg"
doc="$home/article.txt"
mp3="$home/article.mp3"
printf 'Sonamark reads this article into a sound file for the road.\r\n' > "$doc"

start_with_main_window
menu f   # File > Open
file_dialog "Open a Text File" "$doc"
wait_for 10 managed_window_named "Sonamark - $doc" || fail "the text was not opened"

menu f Down Down Down   # File > Save To MP3, below Open, Save and Save As..
wait_for 15 managed_window_named "Sonamark - Read To MP3" || fail "no Read To MP3 dialog"
dialog=$(managed_window_named "Sonamark - Read To MP3")
sleep 0.5
xdotool windowactivate --sync "$dialog" type --delay 20 "$mp3"
sleep 0.5
[ -n "${SHOT:-}" ] && xwd -root -silent | convert xwd:- "$SHOT"
xdotool key --clearmodifiers alt+r   # &Read To File
answer "File Saved" Return
wait_for 10 test -s "$mp3" || fail "no MP3 was made"
probe=$(ffprobe -v error -show_entries stream=codec_name,sample_rate,channels -of csv=p=0 "$mp3")
[ "$probe" = "mp3,44100,1" ] || fail "ffprobe says $probe"
[ ! -e "$home/article.wav" ] || fail "the temporary wave was left in the data folder"
echo "ok - File > Save To MP3 reads the text into a mono 44.1 kHz MP3 and removes the wave"

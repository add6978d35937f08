#!/usr/bin/env bash
# End-to-end: the clipboard monitor on the real X clipboard and audio.
# - A left click on the tray icon switches monitoring on.
# - Another program (xclip) copies a sentence: Sonamark takes it and empties the
#   clipboard within 300 ms, speech reaches the PulseAudio null sink, and the clip shows
#   in the tray menu and in the "&Clipboard" menu.
# The menus are read from the program's "sonamark.clips.menu" log, which prints both
# menus' visible rows after each change.
# - Before that, with monitoring off and picture clips enabled, a copied PNG becomes a
#   picture clip.
# Usage: clip_monitor_e2e.sh BIN_DIR CLIP_OWNER
set -u
bin="$1"
owner_tool="$2"
source "$(dirname "$0")/e2e_lib.sh"
printf '0\r\n' > "$home/ShowInstructions.flg"
printf '"12"\r\n"Mary"\r\n"0"\r\n"100"\r\n"0"\r\n"0"\r\n"0"\r\n""\r\n' > "$home/options.def"
log="$home/sonamark.log"
audio="$home/sink.raw"

QT_LOGGING_RULES="sonamark.clips.menu.info=true" "$bin/sonamark" /h 2>"$log" &
pids+=($!)
wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
pactl info >/dev/null 2>&1 || fail "no PulseAudio server (run through scripts/with-desktop.sh)"

icon_xy() {
  local t geo
  for t in $(xdotool search --class trayer); do
    geo=$(xwininfo -tree -id "$t" | grep '("sonamark" "Sonamark")' | grep -oE '\+[0-9]+\+[0-9]+$' | head -1)
    [ -n "$geo" ] && { echo "$(( $(echo "$geo" | cut -d+ -f2) + 8 )) $(( $(echo "$geo" | cut -d+ -f3) + 8 ))"; return 0; }
  done
  return 1
}
read -r ix iy < <(icon_xy) || fail "icon not found"
clipboard_empty() { [ -z "$(xclip -selection clipboard -o 2>/dev/null)" ]; }
now_ms() { date +%s%3N; }

# Collecting (monitoring off): picture clips on through the main window's menu, opened
# from the tray menu's Options > Sonamark (third entry from the bottom while nothing is
# stored); "Enable Picture Clips" is second from the bottom of "&Clipboard".
xdotool mousemove "$ix" "$iy" click 3
sleep 0.5
xdotool key Up Up Up Right Return
wait_for 10 managed_window_named "Sonamark" || fail "the main window did not open from Options"
xdotool windowactivate --sync "$(managed_window_named "Sonamark")" key --clearmodifiers alt+c
sleep 0.3
xdotool key Up Up Return
convert -size 40x30 xc:red "$home/red.png" || fail "no picture made"
xclip -selection clipboard -t image/png -i "$home/red.png"
wait_for 5 grep -qF "1 Pic Stored | Pic 1 (40x30) | Cancel" "$log" \
  || fail "no picture clip in the tray menu: $(grep 'tray:' "$log" | tail -1)"
grep -qF "clipboard: 1 Pic Stored | Pic 1 (40x30) | Enable Picture Clips" "$log" \
  || fail "Clipboard menu rows: $(grep 'clipboard:' "$log" | tail -1)"
echo "ok - a copied PNG is stored as picture clip \"Pic 1 (40x30)\" in both menus"
xdotool windowunmap "$(managed_window_named "Sonamark")"  # back to the tray, as it usually runs

# Monitoring on: the clipboard holds no text, so the click asks nothing.
xdotool mousemove "$ix" "$iy" click 1
sleep 0.5

parec -d sonamark_null.monitor --format=s16le --rate=16000 --channels=1 --latency-msec=10 > "$audio" &
pids+=($!)
wait_for 10 test -s "$audio" || fail "parec records nothing from sonamark_null.monitor"
# The null sink's monitor records in real time: the first sample louder than silence
# behind byte offset $1 tells, by its position, when speech reached the sink.
first_sound() { tail -c +$(( $1 + 1 )) "$audio" | od -An -td2 -v -w2 | awk '$1 > 200 || $1 < -200 { print NR; exit }'; }
sentence="Sonamark reads what another program copies."
recorded=$(stat -c %s "$audio"); recorded_ms=$(now_ms)
# clip_owner owns the clipboard from "owned <ms>" to "lost <ms>": the time Sonamark took.
"$owner_tool" "$sentence" > "$home/owner.out" &
pids+=($!)
wait_for 5 grep -q '^owned' "$home/owner.out" || fail "clip_owner could not take the clipboard"
owned=$(awk '/^owned/ { print $2 }' "$home/owner.out")
taken=""
while [ $(( $(now_ms) - owned )) -lt 5000 ]; do
  grep -q '^lost .* cleared' "$home/owner.out" && { taken=$(( $(awk '/^lost/ { print $2 }' "$home/owner.out") - owned )); break; }
  sleep 0.01
done
sleep 1.5
sample=$(first_sound "$recorded")
heard=""
[ -n "$sample" ] && heard=$(( recorded_ms + sample * 1000 / 16000 - owned ))
[ -n "$taken" ] || fail "the clipboard still holds the sentence after 5 s"
clipboard_empty || fail "the clipboard was not emptied: $(xclip -selection clipboard -o 2>/dev/null)"
[ "$taken" -le 300 ] || fail "the sentence was taken after $taken ms (limit 300 ms)"
[ -n "$heard" ] || fail "no audio reached the null sink"
[ "$heard" -le 300 ] || fail "audio reached the sink after $heard ms (limit 300 ms)"
echo "ok - copied sentence taken and cleared after ${taken} ms; audio at the sink after ${heard} ms"

caption='1. "Sonamark r...am copies."'
wait_for 5 grep -qF "1 Clip Stored | $caption | 1 Pic Stored | Pic 1 (40x30) | Cancel | Quit Sonamark" "$log" \
  || fail "tray menu rows: $(grep 'tray:' "$log" | tail -1)"
wait_for 5 grep -qF "clipboard: 1 Clip Stored | $caption | 1 Pic Stored | Pic 1 (40x30) | Enable Picture Clips | Clear All Clips" "$log" \
  || fail "clipboard menu rows: $(grep 'clipboard:' "$log" | tail -1)"
echo "ok - the clip shows in the tray menu and the Clipboard menu: $caption"


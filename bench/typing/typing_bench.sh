#!/usr/bin/env bash
# Typing into another program: X11KeySender (through bench/typing/type_text) against
# `xdotool type --delay 0`, the same text into the key_recorder window in the same run.
# For each: characters a second, from the start of the typing program until the recorder
# holds everything (a mark key pressed after the text has arrived), and the characters
# lost and extra (the received text set against the text sent). Needs a display:
#   scripts/with-desktop.sh bench/typing/typing_bench.sh BUILD_DIR [CHARS] [RUNS]
# Goals: zero characters lost or extra for ours; ours at least as fast as xdotool.
set -euo pipefail
build=${1:?usage: typing_bench.sh BUILD_DIR [CHARS] [RUNS]}
chars=${2:-5000}
runs=${3:-3}
[ -n "${DISPLAY:-}" ] || { echo "typing_bench: no DISPLAY (run it through scripts/with-desktop.sh)" >&2; exit 1; }
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
out="$work/recorded.txt"
pids=()
cleanup() { for p in "${pids[@]}"; do kill "$p" 2>/dev/null; done; rm -rf "$work"; }
trap cleanup EXIT

QT_QPA_PLATFORM=xcb "$build/bin/key_recorder" "$out" --title "Sonamark typing bench" &
pids+=($!)
for _ in $(seq 100); do xdotool search --name '^Sonamark typing bench$' >/dev/null 2>&1 && break; sleep 0.1; done
window=$(xdotool search --name '^Sonamark typing bench$' | head -1)
[ -n "$window" ] || { echo "typing_bench: the recorder did not open" >&2; exit 1; }
sleep 0.5

mark() { head -1 "$out" 2>/dev/null | awk '{print $2}'; }
# wait_mark N: until the recorder has written mark N (at most 120 s).
wait_mark() {
  for _ in $(seq 12000); do [ "$(mark)" = "$1" ] && return 0; sleep 0.01; done
  echo "typing_bench: the recorder did not reach mark $1" >&2; return 1
}
marks=0
# measure NAME TEXTFILE COMMAND...: prints "NAME chars seconds chars/s lost extra".
measure() {
  local name=$1 text=$2; shift 2
  xdotool windowactivate --sync "$window"; sleep 0.2
  xdotool key F12 F11; marks=$((marks + 1)); wait_mark "$marks"
  local start end
  start=$(date +%s.%N)
  "$@"
  xdotool key F11; marks=$((marks + 1)); wait_mark "$marks"
  end=$(date +%s.%N)
  sed '1,/^--- text ---$/d' "$out" > "$work/got.txt"
  python3 - "$name" "$text" "$work/got.txt" "$start" "$end" <<'PY'
import difflib, sys
name, sent_path, got_path, start, end = sys.argv[1:6]
sent = open(sent_path, encoding="utf-8").read()
got = open(got_path, encoding="utf-8", errors="replace").read()
matched = sum(b.size for b in difflib.SequenceMatcher(None, sent, got, autojunk=False).get_matching_blocks())
seconds = float(end) - float(start)
print(f"{name:24} {len(sent):6} {seconds:8.3f} {len(sent) / seconds:9.0f} {len(sent) - matched:6} {len(got) - matched:6}")
PY
}

for kind in ascii unicode; do
  n=$chars
  [ "$kind" = unicode ] && n=$((chars / 5))
  python3 "$here/make_typing_text.py" "$kind" "$n" > "$work/$kind.txt"
done
echo "# name                     chars  seconds   chars/s   lost  extra   ($runs run(s) each)"
for ((i = 0; i < runs; i++)); do
  for kind in ascii unicode; do
    measure "sonamark-$kind" "$work/$kind.txt" "$build/bench/type_text" "$work/$kind.txt"
    measure "xdotool-$kind" "$work/$kind.txt" xdotool type --delay 0 --file "$work/$kind.txt"
  done
done

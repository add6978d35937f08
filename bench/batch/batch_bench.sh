#!/usr/bin/env bash
# Batch conversion of 20 texts of 2,000 words to MP3 at 128 kbps, three ways in the same
# run: the single-file path (sonamark-cli to-file) 20 times in a row, sonamark-cli batch
# (one job per core), and the window's batch logic (gui_batch_bench, no display).
# Usage: bench/batch/batch_bench.sh BUILD_DIR [FILES] [WORDS]
# Goals on 2 cores: batch >= 1.7x faster than the serial runs; the window's batch >= 1.3x.
set -euo pipefail
build=${1:?usage: batch_bench.sh BUILD_DIR [FILES] [WORDS]}
files=${2:-20}
words=${3:-2000}
cli="$build/bin/sonamark-cli"
gui="$build/bench/gui_batch_bench"
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PULSE_SERVER=unix:/nonexistent  # files only: no sound device is opened
export SONAMARK_HOME="$work/home"
mkdir -p "$work/home" "$work/docs"

python3 "$here/../to_file/make_text.py" "$words" > "$work/text.txt"
docs=()
for i in $(seq 1 "$files"); do
  { echo "Document number $i."; cat "$work/text.txt"; } > "$work/docs/doc$i.txt"
  docs+=("$work/docs/doc$i.txt")
done

now() { date +%s.%N; }
t0=$(now)
for d in "${docs[@]}"; do
  "$cli" to-file --quality 3 "$d" "${d%.txt}.serial.mp3" > /dev/null
done
t1=$(now)
"$cli" batch --quality 3 "${docs[@]}" > /dev/null
t2=$(now)
"$gui" "$cli" "${docs[@]}" > /dev/null
t3=$(now)

serial=$(echo "$t1 - $t0" | bc -l)
batch=$(echo "$t2 - $t1" | bc -l)
window=$(echo "$t3 - $t2" | bc -l)
printf 'serial to-file x%d: %.2f s\n' "$files" "$serial"
printf 'cli batch (%d cores): %.2f s  speed-up %.2fx (goal >= 1.7)\n' "$(nproc)" "$batch" "$(echo "$serial / $batch" | bc -l)"
printf 'window batch: %.2f s  speed-up %.2fx (goal >= 1.3)\n' "$window" "$(echo "$serial / $window" | bc -l)"

#!/usr/bin/env bash
# Reading a text to MP3 at 128 kbps: sonamark-cli to-file against the plain pipeline
# `espeak-ng -w tmp.wav -f text && lame -b 128 tmp.wav out.mp3`, timed in the same run,
# with the peak resident memory of each (GNU time). Usage:
#   bench/to_file/to_file_bench.sh BUILD_DIR [WORDS] [RUNS]
# Goals: time ratio <= 0.9 (stretch 0.75); sonamark-cli peak RSS < 80 MB for any length.
set -euo pipefail
build=${1:?usage: to_file_bench.sh BUILD_DIR [WORDS] [RUNS]}
words=${2:-10000}
runs=${3:-1}
cli="$build/bin/sonamark-cli"
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PULSE_SERVER=unix:/nonexistent  # files only: no sound device is opened

python3 "$here/make_text.py" "$words" > "$work/text.txt"

# measure NAME COMMAND...: prints "NAME seconds peak-KB" for each run.
measure() {
  local name=$1; shift
  for ((i = 0; i < runs; i++)); do
    /usr/bin/time -f "%e %M" -o "$work/time" "$@" > /dev/null 2>&1
    echo "$name $(cat "$work/time")"
  done
}
pipeline() { espeak-ng -w "$work/tmp.wav" -f "$work/text.txt" && lame --quiet -b 128 "$work/tmp.wav" "$work/plain.mp3"; }
pipeline44() { espeak-ng -w "$work/tmp.wav" -f "$work/text.txt" && lame --quiet -b 128 -m m --resample 44.1 "$work/tmp.wav" "$work/plain44.mp3"; }
export -f pipeline pipeline44
export work

echo "# $words words, $runs run(s) each: name seconds peak-KB"
measure plain-pipeline bash -c pipeline
measure plain-pipeline-44k bash -c pipeline44
for row in 0 1 2 3; do
  measure "sonamark-quality$row-128k" "$cli" to-file --quality "$row" --bitrate 128 "$work/text.txt" "$work/ours.mp3"
done

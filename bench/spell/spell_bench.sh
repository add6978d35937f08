#!/usr/bin/env bash
# Spell checking a 1 MB English text: sonamark-cli spell (unknown words with their
# suggestions, each distinct word looked up once) against `hunspell -l` (unknown words
# only), on the same text in the same run. Usage:
#   bench/spell/spell_bench.sh BUILD_DIR [BYTES] [RUNS]
# Goal: words-a-second ratio sonamark-cli / hunspell >= 0.8. Suggestions cost Hunspell
# some 20 ms a distinct unknown word, so the ratio depends on how many there are: the
# figures are given for the text as written, with one word in 150 misspelled, and for
# the check alone (--no-suggestions, which is what hunspell -l does).
# The window's walk over 200,000 words (no event-loop stall over 100 ms) is
# build/bench/spell_window_bench, run by this script too when a display is available.
set -euo pipefail
build=${1:?usage: spell_bench.sh BUILD_DIR [BYTES] [RUNS]}
bytes=${2:-1000000}
runs=${3:-3}
cli="$build/bin/sonamark-cli"
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
command -v hunspell >/dev/null || { echo "spell_bench: the hunspell program is needed (apt-get install hunspell)" >&2; exit 2; }

best() { sort -n | head -1; }
time_runs() {  # time_runs TEXT OUT COMMAND...: the best of the runs, in seconds
  local text=$1 out=$2; shift 2
  for ((i = 0; i < runs; i++)); do
    /usr/bin/time -f "%e" -o "$work/t" "$@" < "$text" > "$out" 2>/dev/null || true
    tail -1 "$work/t"
  done | best
}
# compare NAME TEXT [sonamark-cli options]: one line of figures against hunspell -l.
compare() {
  local name=$1 text=$2; shift 2
  local words ours theirs
  words=$(wc -w < "$text")
  ours=$(time_runs "$text" "$work/ours.txt" "$cli" spell --dict en_US "$@" -)
  theirs=$(time_runs "$text" "$work/theirs.txt" hunspell -d /usr/share/hunspell/en_US -l)
  python3 - "$name" "$words" "$ours" "$theirs" "$(wc -l < "$work/ours.txt")" \
    "$(cut -f2 "$work/ours.txt" | sort -u | wc -l)" "$(wc -l < "$work/theirs.txt")" <<'PY'
import sys
name, words, ours, theirs, listed, distinct, hl = sys.argv[1], int(sys.argv[2]), float(sys.argv[3]), float(sys.argv[4]), sys.argv[5], sys.argv[6], sys.argv[7]
ours = max(ours, 0.01); theirs = max(theirs, 0.01)
print(f"{name}: {words} words; sonamark-cli {ours:.2f} s ({listed} unknown, {distinct} distinct), "
      f"hunspell -l {theirs:.2f} s ({hl} unknown); words/s {words/ours:,.0f} vs {words/theirs:,.0f}, "
      f"ratio {theirs/ours:.2f} (goal >= 0.8)")
PY
}

python3 "$here/make_text.py" "$bytes" > "$work/clean.txt"
python3 "$here/make_text.py" --typos 150 "$bytes" > "$work/typos.txt"
compare "licence texts as written, with suggestions" "$work/clean.txt"
compare "licence texts as written, check only     " "$work/clean.txt" --no-suggestions
compare "one word in 150 misspelled, with suggestions" "$work/typos.txt"
compare "one word in 150 misspelled, check only     " "$work/typos.txt" --no-suggestions

if [ -n "${DISPLAY:-}" ] && [ -x "$build/bench/spell_window_bench" ]; then
  python3 "$here/make_text.py" --typos 150 --words 200000 > "$work/words.txt"
  "$build/bench/spell_window_bench" "$work/words.txt"
else
  echo "spell window: skipped (no display; run under scripts/with-desktop.sh)"
fi

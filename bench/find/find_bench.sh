#!/usr/bin/env bash
# sonamark-cli find against find(1) over the same tree of 100,000 files in 5,000 folders,
# pattern *.txt, warm cache. Goal: time ratio <= 1.1. Also runs the window's first-hit
# benchmark (goal: the first row within 100 ms of Search) when it has been built.
# Usage: bench/find/find_bench.sh [BUILD_DIR] [ROUNDS]
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
build="${1:-$here/../../build}"
rounds="${2:-7}"
cli="$build/bin/sonamark-cli"
[ -x "$cli" ] || { echo "no $cli: build sonamark-cli first" >&2; exit 2; }

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
tree="$work/tree"
echo "building the tree in $tree ..."
python3 "$here/make_tree.py" "$tree"

# Warm the cache and check that both find the same files.
ours="$("$cli" find "$tree" '*.txt' | sort | md5sum)"
theirs="$(find "$tree" -name '*.txt' | sort | md5sum)"
[ "$ours" = "$theirs" ] || { echo "the two lists differ" >&2; exit 1; }
count="$("$cli" find "$tree" '*.txt' | wc -l)"

# Best of N wall-clock runs each, alternating, output thrown away.
best() { sort -n | head -1; }
now() { date +%s%N; }
: >"$work/ours" ; : >"$work/theirs"
for _ in $(seq "$rounds"); do
  t0=$(now); "$cli" find "$tree" '*.txt' >/dev/null; t1=$(now)
  echo $(( (t1 - t0) / 1000 )) >>"$work/ours"
  t0=$(now); find "$tree" -name '*.txt' >/dev/null; t1=$(now)
  echo $(( (t1 - t0) / 1000 )) >>"$work/theirs"
done
o=$(best <"$work/ours"); t=$(best <"$work/theirs")
ratio=$(awk -v o="$o" -v t="$t" 'BEGIN { printf "%.3f", o / t }')
echo "files found: $count"
echo "sonamark-cli find: ${o} us (best of $rounds)"
echo "find -name:        ${t} us (best of $rounds)"
echo "ratio:             $ratio (goal <= 1.1)"

if [ -x "$build/bench/find_first_hit_bench" ]; then
  QT_QPA_PLATFORM=offscreen SONAMARK_FIND_TREE="$tree" "$build/bench/find_first_hit_bench"
fi
awk -v r="$ratio" 'BEGIN { exit !(r <= 1.1) }'

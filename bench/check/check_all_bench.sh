#!/usr/bin/env bash
# Checking a whole Hotkeys file: `sonamark-cli check --all` on 500 macros of 40 lines
# (goal < 1 s for the run, start-up included). Timed with hyperfine when it is installed,
# else RUNS runs timed with date. Usage:
#   bench/check/check_all_bench.sh BUILD_DIR [MACROS] [RUNS]
set -euo pipefail
build=${1:?usage: check_all_bench.sh BUILD_DIR [MACROS] [RUNS]}
macros=${2:-500}
runs=${3:-5}
cli="$build/bin/sonamark-cli"
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen
unset DISPLAY  # mouse positions against the default screen width, as on a server

python3 "$here/make_hotkeys.py" "$macros" > "$work/Hotkeys.txt"
# The file must read and the faulty macros be reported: exit status 1, one report each.
set +e
"$cli" check --all --hotkeys "$work/Hotkeys.txt" > "$work/report.txt" 2>&1
status=$?
set -e
reports=$(grep -c '^Error Check for' "$work/report.txt" || true)
echo "# $macros macros of 40 lines: exit status $status, $reports macros reported"
[ "$status" -eq 1 ] && [ "$reports" -eq $((macros / 5)) ] || { echo "unexpected result" >&2; exit 1; }

command=("$cli" check --all --hotkeys "$work/Hotkeys.txt")
if command -v hyperfine > /dev/null; then
  hyperfine --warmup 1 --runs "$runs" -i "${command[*]}"
  exit 0
fi
best=
for ((i = 0; i < runs; i++)); do
  start=$(date +%s.%N)
  "${command[@]}" > /dev/null 2>&1 || true
  end=$(date +%s.%N)
  seconds=$(printf '%.3f' "$(echo "$end - $start" | bc)")
  echo "run $((i + 1)): ${seconds}s"
  if [ -z "$best" ] || [ "$(echo "$seconds < $best" | bc)" -eq 1 ]; then best=$seconds; fi
done
echo "best of $runs: ${best}s (goal < 1 s)"

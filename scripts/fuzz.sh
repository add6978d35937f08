#!/usr/bin/env bash
# Builds the fuzz targets with clang, libFuzzer, ASan and UBSan in build-fuzz/ and runs
# one target, a comma-separated list of them or all of them, one after another,
# printing executions, time, coverage and findings for each.
# Usage: scripts/fuzz.sh [TARGET[,TARGET...]|all] [SECONDS | --runs N]
#   (default: all, 60 seconds each; --runs N runs each target for N executions instead)
# CMAKE_BUILD_PARALLEL_LEVEL sets the build's job count (default: every core);
# FUZZ_FLAGS adds libFuzzer options, e.g. FUZZ_FLAGS=-max_len=1024.
# FUZZ_FRESH=1 starts each target from its seeds alone, in a corpus thrown away after:
# the speed on small inputs.
# Each target runs from a copy of its binary, so rebuilding during a long run is safe.
set -euo pipefail
cd "$(dirname "$0")/.."
target=${1:-all}
limit=(-max_total_time="${2:-60}")
if [ "${2:-}" = --runs ]; then
  [[ "${3:-}" =~ ^[0-9]+$ ]] || { echo "usage: $0 [TARGET[,TARGET...]|all] [SECONDS | --runs N]" >&2; exit 2; }
  limit=(-runs="$3")
fi
all=(rtf_fuzz hotkeys_file_fuzz options_fuzz exceptions_fuzz sapi_fuzz macro_fuzz wav_fuzz check_format_fuzz folder_history_fuzz)

bash scripts/install-deps.sh
if ! dpkg-query -W -f='${Status}' clang libclang-rt-14-dev 2>/dev/null | grep -q 'install ok installed'; then
  SUDO=; [ "$(id -u)" -ne 0 ] && SUDO=sudo
  $SUDO apt-get install -y -qq --no-install-recommends clang libclang-rt-14-dev >/dev/null
fi
[ -f build-fuzz/CMakeCache.txt ] || cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++ -DSONAMARK_FUZZ=ON -DSONAMARK_BUILD_TESTS=OFF -DSONAMARK_BUILD_BENCH=OFF >/dev/null
targets=("${all[@]}")
[ "$target" != all ] && IFS=, read -ra targets <<<"$target"
cmake --build build-fuzz -j "${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}" --target "${targets[@]}"

# Without the allocation stacks of every block (malloc_context_size=0) the targets run
# about a fifth faster; a finding is run again with them for its report.
full_asan=detect_leaks=1:allocator_may_return_null=1
export ASAN_OPTIONS=$full_asan:malloc_context_size=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export QT_LOGGING_RULES="*.debug=false;*.warning=false"
# Copies left by runs that were killed go; those of runs still going stay.
for copy in build-fuzz/running/*_fuzz.*; do
  [ -e "$copy" ] && ! kill -0 "${copy##*.}" 2>/dev/null && rm -f "$copy"
done
status=0
for t in "${targets[@]}"; do
  name=${t%_fuzz}
  seeds=fuzz/corpus/$name
  corpus=build-fuzz/corpus/$name
  [ -n "${FUZZ_FRESH:-}" ] && corpus=$(mktemp -d)
  findings=build-fuzz/findings/$name
  mkdir -p "$corpus" "$findings"
  dict=(); [ -f "fuzz/$name.dict" ] && dict=(-dict="fuzz/$name.dict")
  log=build-fuzz/$name${FUZZ_FRESH:+.fresh}.log
  bin=build-fuzz/running/$t.$$
  mkdir -p build-fuzz/running && cp "build-fuzz/fuzz/$t" "$bin"
  start=$(date +%s)
  set +e
  # shellcheck disable=SC2086
  "$bin" "${limit[@]}" ${FUZZ_FLAGS:-} -timeout=10 -rss_limit_mb=4096 -print_final_stats=1 \
    -artifact_prefix="$findings/" "${dict[@]}" "$corpus" "$seeds" >"$log" 2>&1
  rc=$?
  if [ $rc -ne 0 ]; then
    for finding in $(find "$findings" -type f -newer "$bin"); do
      echo "=== $finding again, with allocation stacks" >>"$log"
      ASAN_OPTIONS=$full_asan "$bin" -timeout=10 "$finding" >>"$log" 2>&1
    done
  fi
  set -e
  rm -f "$bin"
  [ -n "${FUZZ_FRESH:-}" ] && rm -rf "$corpus"
  seconds=$(( $(date +%s) - start )); [ "$seconds" -gt 0 ] || seconds=1
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo '?')
  cov=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | grep -o '[0-9]*' || echo '?')
  found=$(find "$findings" -type f | wc -l)
  printf '%-20s %10s runs in %ss (%s/s), coverage %s, findings %s%s\n' "$t" "$runs" "$seconds" \
    "$([ "$runs" != '?' ] && echo $((runs / seconds)) || echo '?')" "$cov" "$found" \
    "$([ $rc -ne 0 ] && echo " (stopped: see $log)")"
  [ $rc -ne 0 ] && status=1
done
exit $status

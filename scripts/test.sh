#!/usr/bin/env bash
# Builds Sonamark and runs every test: unit and widget tests (offscreen) and the
# end-to-end tests, all under a private Xvfb desktop with a tray host and a null sink.
#   scripts/test.sh [CTEST ARGS...]          the normal build in build/
#   scripts/test.sh --sanitize [CTEST ARGS]  the unit and widget tests built with the
#                                            address and undefined behaviour sanitizers
#                                            in build-asan/ (the end-to-end tests are left out)
# CMAKE_BUILD_PARALLEL_LEVEL sets the sanitizer build's job count (default: every core).
set -euo pipefail
cd "$(dirname "$0")/.."
export QT_LOGGING_RULES="${QT_LOGGING_RULES:-*.debug=false}"
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d /tmp/sonamark-runtime-XXXXXX)}"
chmod 700 "$XDG_RUNTIME_DIR"

if [ "${1:-}" = "--sanitize" ]; then
  shift
  bash scripts/install-deps.sh
  [ -f build-asan/CMakeCache.txt ] || cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DSONAMARK_SANITIZE=ON -DSONAMARK_BUILD_BENCH=OFF >/dev/null
  cmake --build build-asan -j "${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc 2>/dev/null || echo 2)}"
  export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
  export LSAN_OPTIONS="suppressions=$PWD/tests/sanitizer/lsan.supp:print_suppressions=0"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:suppressions=$PWD/tests/sanitizer/ubsan.supp"
  exec bash scripts/with-desktop.sh ctest --test-dir build-asan --output-on-failure -j 2 -E '^e2e_' "$@"
fi

bash scripts/build.sh
# A desktop test that fails is run once more before it counts (window-manager timing).
exec bash scripts/with-desktop.sh ctest --test-dir build --output-on-failure -j 2 --repeat until-pass:2 "$@"

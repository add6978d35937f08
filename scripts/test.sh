#!/usr/bin/env bash
# Builds Sonamark and runs every test: unit and widget tests (offscreen) and the
# end-to-end tests, all under a private Xvfb desktop with a tray host and a null sink.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
export QT_LOGGING_RULES="${QT_LOGGING_RULES:-*.debug=false}"
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d /tmp/sonamark-runtime-XXXXXX)}"
chmod 700 "$XDG_RUNTIME_DIR"
# A desktop test that fails is run once more before it counts (window-manager timing).
exec bash scripts/with-desktop.sh ctest --test-dir build --output-on-failure -j 2 --repeat until-pass:2 "$@"

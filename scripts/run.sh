#!/usr/bin/env bash
# Builds Sonamark and starts the resident program. Without a desktop session it runs
# inside a private Xvfb desktop with a window manager and a tray host.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
if [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1; then
  exec build/bin/sonamark "$@"
fi
echo "run: no X display found; starting Sonamark in a private Xvfb desktop (with a tray host)."
echo "run: its screen can be captured with: DISPLAY=<shown below> xwd -root | convert xwd:- shot.png"
exec bash scripts/with-desktop.sh bash -c 'echo "run: private desktop on DISPLAY=$DISPLAY"; exec build/bin/sonamark "$@"' run "$@"

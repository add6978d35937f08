#!/usr/bin/env bash
# Runs a command inside a private X desktop: Xvfb, the fluxbox window manager, the
# trayer notification area, and (when available) a PulseAudio daemon with a null sink.
# Usage: with-desktop.sh COMMAND [ARGS...]
# The desktop ends with the command; its exit status is the command's.
set -u

pick_display() {
  local n
  for n in $(seq 90 140); do
    [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ] || { echo "$n"; return; }
  done
  echo 99
}

pids=()
cleanup() {
  for p in "${pids[@]}"; do kill "$p" 2>/dev/null; done
  sleep 0.3
  for p in "${pids[@]}"; do kill -9 "$p" 2>/dev/null; done
  [ -n "${PULSE_STARTED:-}" ] && pulseaudio --kill 2>/dev/null
  [ -n "${fbdir:-}" ] && rm -rf "$fbdir"
  wait 2>/dev/null
}
trap cleanup EXIT INT TERM

num=$(pick_display)
export DISPLAY=":$num"
Xvfb "$DISPLAY" -screen 0 1280x800x24 -nolisten tcp >/dev/null 2>&1 &
pids+=($!)
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
if ! xdpyinfo >/dev/null 2>&1; then
  echo "with-desktop: Xvfb did not start on $DISPLAY" >&2
  exit 1
fi

# A private fluxbox configuration: no wallpaper setter, no toolbar over the tray.
fbdir=$(mktemp -d /tmp/sonamark-fluxbox-XXXXXX)
printf 'background: none\n' > "$fbdir/overlay"
printf 'session.styleOverlay: %s/overlay\nsession.screen0.toolbar.visible: false\n' "$fbdir" > "$fbdir/init"
fluxbox -rc "$fbdir/init" >/dev/null 2>&1 &
pids+=($!)
trayer --edge bottom --align right --widthtype request --height 32 --SetDockType true \
  --transparent false --tint 0x303030 >/dev/null 2>&1 &
pids+=($!)
# Wait for the tray host to take the system-tray selection.
for _ in $(seq 50); do
  xprop -root _NET_SUPPORTING_WM_CHECK >/dev/null 2>&1 && \
    xdotool search --class trayer >/dev/null 2>&1 && break
  sleep 0.1
done
sleep 0.5

if command -v pulseaudio >/dev/null 2>&1 && ! pactl info >/dev/null 2>&1; then
  export PULSE_RUNTIME_PATH="${XDG_RUNTIME_DIR:-/tmp}/sonamark-pulse-$num"
  mkdir -p "$PULSE_RUNTIME_PATH"
  if pulseaudio --daemonize=yes --exit-idle-time=-1 --system=false \
       -n --load="module-null-sink sink_name=sonamark_null" \
       --load="module-native-protocol-unix" >/dev/null 2>&1; then
    PULSE_STARTED=1
    pactl set-default-sink sonamark_null >/dev/null 2>&1
  fi
fi

"$@"

# Shared helpers of the end-to-end scripts (sourced).
[ -n "${DISPLAY:-}" ] || { echo "FAIL: no DISPLAY (run through scripts/with-desktop.sh)"; exit 1; }
home=$(mktemp -d /tmp/sonamark-e2e-XXXXXX)
export SONAMARK_HOME="$home"
export QT_QPA_PLATFORM=xcb
pids=()
cleanup() { for p in "${pids[@]}"; do kill -9 "$p" 2>/dev/null; done; rm -rf "$home"; }
trap cleanup EXIT

fail() { echo "FAIL: $*"; xwininfo -root -tree | grep -iE 'sonamark|trayer|Running|Program|Help' | head -20; exit 1; }
# wait_for SECONDS COMMAND...: retries the command until it succeeds.
wait_for() {
  local limit=$(( $1 * 10 )); shift
  for _ in $(seq "$limit"); do "$@" >/dev/null 2>&1 && return 0; sleep 0.1; done
  return 1
}
icon_in_tray() {
  local t
  for t in $(xdotool search --class trayer 2>/dev/null); do
    xwininfo -tree -id "$t" 2>/dev/null | grep -q '("sonamark" "Sonamark")' && return 0
  done
  return 1
}
# Prints the id of the managed (top-level) window whose title is $1.
managed_window_named() {
  local w
  for w in $(xprop -root _NET_CLIENT_LIST | sed 's/.*# //; s/,/ /g'); do
    xprop -id "$w" WM_NAME 2>/dev/null | grep -q "= \"$1\"" && { echo "$w"; return 0; }
  done
  return 1
}
managed_sonamark_window() {
  local w
  for w in $(xprop -root _NET_CLIENT_LIST | sed 's/.*# //; s/,/ /g'); do
    xprop -id "$w" WM_CLASS 2>/dev/null | grep -q '"sonamark"' && return 0
  done
  return 1
}
# answer TITLE KEYS...: waits for the window titled TITLE and types the keys into it.
answer() {
  local title="$1"; shift
  wait_for 15 managed_window_named "$title" || fail "no window \"$title\""
  xdotool windowactivate --sync "$(managed_window_named "$title")" key --clearmodifiers "$@"
}

# The main window: "Sonamark" or "Sonamark - FILE", never the help viewer ("Sonamark Help ...").
main_window() {
  local w
  w=$(xdotool search --onlyvisible --name '^Sonamark($| - )' 2>/dev/null | head -1)
  [ -n "$w" ] && echo "$w"
}
# menu KEY MOVES...: opens a menu of the main window by its Alt key, moves from its first
# entry by the keys given (Down, Up) and takes the entry reached.
menu() {
  local w
  w=$(main_window) || return 1
  xdotool windowactivate --sync "$w" key --clearmodifiers "alt+$1"
  sleep 0.4
  shift
  [ $# -gt 0 ] && xdotool key "$@"
  xdotool key Return
}
# file_dialog TITLE PATH: types a path into the file dialog titled TITLE.
file_dialog() {
  wait_for 15 managed_window_named "$1" || fail "no \"$1\" dialog"
  xdotool windowactivate --sync "$(managed_window_named "$1")"
  sleep 0.3
  xdotool key ctrl+a type --delay 20 "$2"
  xdotool key Return
}
# start_with_main_window: starts "$bin/sonamark /h" and shows its main window through the
# tray menu: Options > Sonamark (enabled entries from the bottom: Quit Sonamark, Cancel,
# Options).
# tray_icon_centre: prints "X Y", a point inside our icon in the tray host.
tray_icon_centre() {
  local t geo
  for t in $(xdotool search --class trayer); do
    geo=$(xwininfo -tree -id "$t" | grep '("sonamark" "Sonamark")' | grep -oE '\+[0-9]+\+[0-9]+$' | head -1)
    [ -n "$geo" ] && break
  done
  echo "$(( $(echo "$geo" | cut -d+ -f2) + 8 )) $(( $(echo "$geo" | cut -d+ -f3) + 8 ))"
}
start_with_main_window() {
  wait_for 10 xdotool search --class trayer || fail "no tray host"
  sleep 0.5
  "$bin/sonamark" /h &
  pids+=($!)
  wait_for 15 icon_in_tray || fail "the icon did not appear in the tray host"
  # shellcheck disable=SC2046
  xdotool mousemove $(tray_icon_centre) click 3
  sleep 1
  xdotool key Up Up Up Right
  sleep 0.4
  xdotool key Return
  wait_for 15 main_window || fail "the main window is not shown"
  sleep 1
}

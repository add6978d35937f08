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

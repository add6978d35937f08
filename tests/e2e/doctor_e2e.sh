#!/usr/bin/env bash
# End-to-end: sonamark-cli doctor on the private desktop (everything in place: exit 0),
# without an X display (exit 1, the display line with its fix), on an X server with no
# tray host, and with a data folder that cannot be written.
# Usage: doctor_e2e.sh BIN_DIR
set -u
bin="$1"
source "$(dirname "$0")/e2e_lib.sh"

expect_line() {  # expect_line TEXT PATTERN WHAT
  grep -qE "$2" <<<"$1" || { echo "$1"; fail "$3"; }
}

out=$("$bin/sonamark-cli" doctor 2>&1); rc=$?
[ "$rc" -eq 0 ] || { echo "$out"; fail "doctor on a working desktop exited $rc"; }
expect_line "$out" "^\[ok\] +X display: The X display $DISPLAY can be opened\.$" "display not found reachable"
expect_line "$out" '^\[ok\] +Global hotkeys: XTest and XInput 2\.2 are present' "XTest or XInput 2.2 not found"
expect_line "$out" '^\[ok\] +Notification area: A tray host is present' "the tray host was not seen"
expect_line "$out" '^\[ok\] +Audio output: A test tone played on ' "the test tone did not play"
expect_line "$out" '^\[ok\] +Voices: espeak-ng offers [0-9]+ voices\.$' "no voices"
expect_line "$out" '^\[ok\] +Spelling dictionaries: Hunspell dictionaries: ' "no dictionaries"
expect_line "$out" '[ ,]en_US[,.]' "en_US dictionary not listed"
expect_line "$out" "^\[ok\] +Data folder: $home/ can be written\.$" "data folder not named or not writable"
expect_line "$out" '^Everything Sonamark needs is in place' "no closing verdict"
grep -q PROBLEM <<<"$out" && { echo "$out"; fail "a problem reported on a working desktop"; }
echo "ok - doctor on the desktop: every check passes, exit 0"

out=$(env -u DISPLAY -u WAYLAND_DISPLAY XDG_SESSION_TYPE=tty "$bin/sonamark-cli" doctor 2>&1); rc=$?
[ "$rc" -eq 1 ] || { echo "$out"; fail "doctor without a display exited $rc, not 1"; }
expect_line "$out" '^\[PROBLEM\] +X display: No X display: DISPLAY is not set\.' "no display line"
expect_line "$out" '^ +Fix: Start Sonamark from inside your desktop session' "no fix for the display"
expect_line "$out" '^\[not checked\] Notification area: ' "the tray was asked without a display"
expect_line "$out" '^1 problem to fix before Sonamark can work fully\.$' "wrong verdict"
echo "ok - doctor without DISPLAY: the display line and its fix, exit 1"

out=$(DISPLAY=:1999 "$bin/sonamark-cli" doctor 2>&1); rc=$?
[ "$rc" -eq 1 ] || fail "doctor on a display that does not exist exited $rc"
expect_line "$out" '^\[PROBLEM\] +X display: The X display :1999 \(from DISPLAY\) cannot be opened\.$' \
  "an unreachable display not named"
echo "ok - doctor names a display that cannot be opened"

# A bare X server: no window manager, no tray host.
for n in $(seq 150 199); do
  [ -e "/tmp/.X11-unix/X$n" ] || [ -e "/tmp/.X$n-lock" ] || break
done
Xvfb ":$n" -screen 0 640x480x24 -nolisten tcp >/dev/null 2>&1 &
pids+=($!)
wait_for 10 env DISPLAY=":$n" xdpyinfo || fail "the bare Xvfb :$n did not start"
out=$(DISPLAY=":$n" "$bin/sonamark-cli" doctor 2>&1); rc=$?
[ "$rc" -eq 1 ] || { echo "$out"; fail "doctor without a tray host exited $rc"; }
expect_line "$out" '^\[PROBLEM\] +Notification area: No tray host: nobody owns' \
  "a missing tray host not reported"
expect_line "$out" '^ +Fix: Add a notification area' "no fix for the tray"
expect_line "$out" '^\[ok\] +Global hotkeys: ' "XTest and XInput 2.2 not seen on a bare Xvfb"
echo "ok - doctor on an X server without a tray host: the tray line and its fix, exit 1"

out=$(SONAMARK_HOME=/proc/sonamark-nowhere "$bin/sonamark-cli" doctor 2>&1); rc=$?
[ "$rc" -eq 1 ] || fail "doctor with a data folder that cannot be written exited $rc"
expect_line "$out" '^\[PROBLEM\] +Data folder: /proc/sonamark-nowhere/ cannot be created' \
  "an unwritable data folder not reported"
echo "ok - doctor reports a data folder that cannot be written"

"$bin/sonamark-cli" doctor --help | grep -q '^Usage: sonamark-cli doctor$' || fail "doctor --help shows no usage"
"$bin/sonamark-cli" doctor now >/dev/null 2>&1; rc=$?
[ "$rc" -eq 2 ] || fail "doctor with a stray argument exited $rc, not 2"
echo "ok - doctor --help, and a stray argument is a usage error"

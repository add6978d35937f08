"""Idle cost of clipboard polling (goal: under 1 CPU-second an hour beyond Qt's own).

Sonamark runs on the private desktop while nothing is copied, in three states, each
measured over a window (default 60 s) from /proc/<pid>/stat:
  collecting, clipboard empty          Timer3 every second
  collecting, a text on the clipboard  Timer3 every second, the text already stored
  monitoring, clipboard empty          Timer1 every 100 ms
The "sonamark.clipboard" log counts selection transfers during each window; a tick with
no change notice must cost none.

    scripts/with-desktop.sh python3 bench/clipboard/clip_idle.py build/bin [SECONDS]
"""
import os
import sys
import time

import clip_probe


def measure(pid, log_path, seconds):
    transfers_before = count_transfers(log_path)
    cpu_before = clip_probe.cpu_seconds(pid)
    time.sleep(seconds)
    cpu = clip_probe.cpu_seconds(pid) - cpu_before
    return cpu * 3600 / seconds, count_transfers(log_path) - transfers_before


def count_transfers(log_path):
    with open(log_path) as f:
        return sum(1 for line in f if "transfer" in line)


def main():
    bin_dir = sys.argv[1] if len(sys.argv) > 1 else "build/bin"
    seconds = float(sys.argv[2]) if len(sys.argv) > 2 else 60
    log_path = "/tmp/sonamark-idle-%d.log" % os.getpid()
    proc = clip_probe.start_sonamark(bin_dir, extra_env={"QT_LOGGING_RULES": "sonamark.clipboard.debug=true"},
                                     stderr_path=log_path)
    rows = []
    try:
        time.sleep(5)  # start-up settles
        rows.append(("collecting, clipboard empty",) + measure(proc.pid, log_path, seconds))
        clip_probe.copy("A text that stays on the clipboard.")
        time.sleep(3)  # stored by Timer3
        rows.append(("collecting, a text on the clipboard",) + measure(proc.pid, log_path, seconds))
        clip_probe.copy("")
        time.sleep(1)
        clip_probe.left_click_icon()
        time.sleep(3)
        rows.append(("monitoring, clipboard empty",) + measure(proc.pid, log_path, seconds))
    finally:
        proc.kill()
        os.unlink(log_path)
    print("idle CPU of sonamark over %.0f s windows, as CPU-seconds an hour:" % seconds)
    for name, per_hour, transfers in rows:
        print("  %-38s %6.2f s/h   selection transfers: %d" % (name, per_hour, transfers))
    print("  monitoring beyond collecting: %.2f s/h" % (rows[2][1] - rows[0][1]))
    return 0


if __name__ == "__main__":
    sys.exit(main())

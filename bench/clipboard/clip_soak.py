"""Soak of the clipboard monitor: a new text copied every 200 ms for a few minutes while
monitoring is on. Reports the program's memory (VmRSS from /proc) over the run, and what
became of each copy: taken by Sonamark (the clipboard was emptied), replaced by the next
copy before Sonamark took it, or never taken. A copy made while a sentence is still
being spoken waits for its end and may be replaced unread; short texts at the fastest
rate keep every stream shorter than the copy interval.

    scripts/with-desktop.sh python3 bench/clipboard/clip_soak.py build/bin build/tests/e2e/clip_owner [SECONDS]
"""
import os
import statistics
import subprocess
import sys
import time

import clip_probe

INTERVAL = float(os.environ.get("SOAK_INTERVAL", "0.2"))  # seconds between copies
WARM_UP = 20  # seconds before the first memory figure that counts
WORDS = ["one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten"]


def main():
    bin_dir = sys.argv[1]
    owner_tool = sys.argv[2]
    seconds = float(sys.argv[3]) if len(sys.argv) > 3 else 150
    log_path = "/tmp/sonamark-soak-%d.log" % os.getpid()
    proc = clip_probe.start_sonamark(
        bin_dir, rate="10",
        extra_env={"QT_LOGGING_RULES": "sonamark.clipboard.monitor.debug=true"}, stderr_path=log_path)
    owners = []
    memory = []  # (seconds since start, KiB)
    try:
        clip_probe.left_click_icon()
        time.sleep(1)
        start = time.monotonic()
        next_copy = start
        n = 0
        while time.monotonic() - start < seconds:
            n += 1
            text = "%s %d." % (WORDS[n % len(WORDS)], n)
            owners.append(subprocess.Popen([owner_tool, text], stdout=subprocess.PIPE, text=True))
            if n % 25 == 0:
                memory.append((time.monotonic() - start, clip_probe.rss_kib(proc.pid)))
            next_copy += INTERVAL
            time.sleep(max(0.0, next_copy - time.monotonic()))
        time.sleep(2)
        alive = proc.poll() is None
    finally:
        for o in owners:
            if o.poll() is None:
                o.kill()
        proc.kill()
    outcomes = {"cleared": 0, "replaced": 0, "never taken": 0}
    for o in owners:
        out = o.communicate()[0]
        lost = [line.split() for line in out.splitlines() if line.startswith("lost")]
        outcomes[lost[0][2] if lost else "never taken"] += 1
    with open(log_path) as f:
        spoken = sum(1 for line in f if "clip of" in line)
    os.unlink(log_path)
    counted = [kib for when, kib in memory if when >= WARM_UP]
    print("soak: %d copies in %.0f s, every %d ms; program %s" %
          (len(owners), seconds, INTERVAL * 1000, "alive" if alive else "ENDED"))
    print("copies taken %d, replaced before taken %d, never taken %d; clips read by the monitor %d" %
          (outcomes["cleared"], outcomes["replaced"], outcomes["never taken"], spoken))
    if counted:
        print("VmRSS after %d s: first %d KiB, last %d KiB, min %d, max %d, median %d" %
              (WARM_UP, counted[0], counted[-1], min(counted), max(counted), statistics.median(counted)))
        print("VmRSS samples (s, KiB): " + ", ".join("%.0f:%d" % m for m in memory))
    ok = alive and outcomes["never taken"] <= 1  # the last copy may still be on the clipboard
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main())

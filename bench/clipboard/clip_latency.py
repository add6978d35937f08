"""Copy-to-first-audio latency of the clipboard monitor (goal: under 200 ms).

Another program (xclip) copies a sentence while monitoring is on; the time until the
first audible sample arrives at the PulseAudio null sink is measured, over several
copies. Run inside the private desktop:
    scripts/with-desktop.sh python3 bench/clipboard/clip_latency.py build/bin
"""
import statistics
import sys
import time

import clip_probe

ROUNDS = 10


def main():
    bin_dir = sys.argv[1] if len(sys.argv) > 1 else "build/bin"
    proc = clip_probe.start_sonamark(bin_dir)
    sink = clip_probe.SinkWatch()
    try:
        clip_probe.copy("")
        clip_probe.left_click_icon()
        time.sleep(1.5)
        results = []
        for n in range(ROUNDS):
            t0 = time.monotonic()
            clip_probe.copy("Latency round %d of the clipboard bench." % (n + 1))
            heard = sink.first_sound_after(t0)
            if heard is None:
                print("round %d: no audio within 5 s" % (n + 1))
            else:
                results.append((heard - t0) * 1000)
            time.sleep(4)  # the sentence ends before the next copy
        if results:
            print("copy-to-first-audio over %d copies: median %.0f ms, min %.0f ms, max %.0f ms"
                  % (len(results), statistics.median(results), min(results), max(results)))
            print("each copy, in order: " + ", ".join("%.0f" % r for r in results))
        return 0 if len(results) == ROUNDS else 1
    finally:
        sink.stop()
        proc.kill()


if __name__ == "__main__":
    sys.exit(main())

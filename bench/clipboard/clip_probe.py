"""Shared helpers of the clipboard benchmarks: start Sonamark on the private desktop,
switch monitoring on from the tray, copy with xclip, watch the null sink with parec,
and read a process's CPU time and memory from /proc."""
import os
import re
import subprocess
import tempfile
import threading
import time

SINK_RATE = 16000
CLK_TCK = os.sysconf("SC_CLK_TCK")


def start_sonamark(bin_dir, rate="0", extra_env=None, stderr_path=None):
    home = tempfile.mkdtemp(prefix="sonamark-bench-")
    with open(os.path.join(home, "ShowInstructions.flg"), "w") as f:
        f.write("0\r\n")
    with open(os.path.join(home, "options.def"), "w", newline="") as f:
        f.write('"12"\r\n"Mary"\r\n"%s"\r\n"100"\r\n"0"\r\n"0"\r\n"0"\r\n""\r\n' % rate)
    env = dict(os.environ, SONAMARK_HOME=home, QT_QPA_PLATFORM="xcb")
    env.update(extra_env or {})
    stderr = open(stderr_path, "w") if stderr_path else subprocess.DEVNULL
    proc = subprocess.Popen([os.path.join(bin_dir, "sonamark"), "/h"], env=env,
                            stdout=subprocess.DEVNULL, stderr=stderr)
    deadline = time.time() + 40
    while time.time() < deadline:
        if icon_position():
            return proc
        if proc.poll() is not None:
            raise RuntimeError("sonamark ended at start with status %s" % proc.returncode)
        time.sleep(0.1)
    proc.kill()
    raise RuntimeError("the tray icon did not appear")


def icon_position():
    try:
        trayers = subprocess.run(["xdotool", "search", "--class", "trayer"], capture_output=True,
                                 text=True).stdout.split()
    except OSError:
        return None
    for t in trayers:
        tree = subprocess.run(["xwininfo", "-tree", "-id", t], capture_output=True, text=True).stdout
        for line in tree.splitlines():
            if '("sonamark" "Sonamark")' in line:
                m = re.search(r"\+(-?\d+)\+(-?\d+)$", line.strip())
                if m:
                    return int(m.group(1)) + 8, int(m.group(2)) + 8
    return None


def left_click_icon():
    x, y = icon_position()
    subprocess.run(["xdotool", "mousemove", str(x), str(y), "click", "1"], check=True)


def copy(text):
    """Puts text on the clipboard through xclip, which stays as the owner."""
    subprocess.run(["xclip", "-selection", "clipboard", "-i"], input=text.encode(), check=True)


def clipboard_text():
    r = subprocess.run(["xclip", "-selection", "clipboard", "-o"], capture_output=True)
    return r.stdout.decode(errors="replace") if r.returncode == 0 else ""


class SinkWatch:
    """Records the null sink's monitor and stamps each chunk with its arrival time."""

    def __init__(self):
        self.proc = subprocess.Popen(
            ["parec", "-d", "sonamark_null.monitor", "--format=s16le", "--rate=%d" % SINK_RATE,
             "--channels=1", "--latency-msec=5"], stdout=subprocess.PIPE)
        self.chunks = []  # (arrival time, loudest sample)
        self.lock = threading.Lock()
        threading.Thread(target=self._read, daemon=True).start()

    def _read(self):
        while True:
            data = self.proc.stdout.read1(320) if hasattr(self.proc.stdout, "read1") else self.proc.stdout.read(320)
            if not data:
                return
            now = time.monotonic()
            loud = max((abs(int.from_bytes(data[i:i + 2], "little", signed=True))
                        for i in range(0, len(data) - 1, 2)), default=0)
            with self.lock:
                self.chunks.append((now, loud))

    def first_sound_after(self, t0, threshold=200, timeout=5.0):
        deadline = t0 + timeout
        while time.monotonic() < deadline:
            with self.lock:
                for when, loud in self.chunks:
                    if when >= t0 and loud > threshold:
                        return when
            time.sleep(0.002)
        return None

    def stop(self):
        self.proc.kill()


def cpu_seconds(pid):
    """User plus system CPU time of a process, from /proc/<pid>/stat."""
    with open("/proc/%d/stat" % pid) as f:
        fields = f.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / CLK_TCK


def rss_kib(pid):
    with open("/proc/%d/status" % pid) as f:
        for line in f:
            if line.startswith("VmRSS:"):
                return int(line.split()[1])
    return 0

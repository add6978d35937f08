#!/usr/bin/env python3
"""Random whole macros through `sonamark-cli run`.

Generates Hotkeys files of random macros from a grammar of the macro language (every
statement, operators, nested blocks, deep [HOTKEY n] chains, junk lines and long lines)
and runs macro 1 of each in a scratch folder without a display. A run must end on its
own, within the interpreter's limits, with exit status 0 (no report) or 1 (a report):
a crash, a hang past the time-out below, status 3 ("FAILURE ...") or a report missing its
header is a finding. Each finding's Hotkeys file is kept in the output folder.

Usage: random_macros.py SONAMARK_CLI [--seconds N] [--count N] [--seed N] [--keep DIR]
"""
import argparse
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

RUN_TIMEOUT = 180  # seconds; 1,000,000 statements end far sooner

NAMES = ["A", "B", "X", "Y", "NAME", "REC", "ANS", "S", "N", "CLIPVAR", "Z_", "ab"]
FILES = ["a.txt", "b.txt", "out file.txt", "sub/c.txt", "missing.txt", "sub", "."]
STRINGS = ["", "hello", "one two", "~", "{ENTER}", "x\u00e9y", "\u65e5\u672c", "a,b", "99", "-3.5", "[", "]"]
OPS = ["=", "<>", "<", ">", "<=", ">="]
ARITH = ["+", "-", "*", "/", "&"]
FUNCS = ["LEN({v})", "STR({n})", "VAL({v})", "UCASE({s})", "MID({v} {n} {n})", "TIMER", "SONAMARKTEXT"]


class Gen:
    def __init__(self, rng, macro_count):
        self.r = rng
        self.macro_count = macro_count

    def name(self):
        return self.r.choice(NAMES)

    def number(self):
        return self.r.choice(["0", "1", "2", "3", "5", "10", "0.5", "-1", "1000000", "2147483648", "1e3", ".2"])

    def literal(self):
        return '"' + self.r.choice(STRINGS) + '"'

    def operand(self):
        k = self.r.random()
        if k < 0.4:
            return self.name()
        if k < 0.7:
            return self.number()
        if k < 0.9:
            return self.literal()
        f = self.r.choice(FUNCS)
        return f.format(v=self.name(), n=self.number(), s=self.literal())

    def expression(self):
        parts = [self.operand()]
        for _ in range(self.r.randint(0, 3)):
            parts += [self.r.choice(ARITH), self.operand()]
        return "".join(parts)

    def condition(self):
        if self.r.random() < 0.25:
            return "%s=%s" % (self.name(), self.r.choice(["1,3-5", "1-3", "2", "0.5,1", "1-100"]))
        terms = []
        for _ in range(self.r.randint(1, 3)):
            t = "%s%s%s" % (self.operand(), self.r.choice(OPS), self.operand())
            if self.r.random() < 0.2:
                t = "(" + t + ")"
            terms.append(t)
        return self.r.choice([" AND ", " OR "]).join(terms)

    def file(self):
        return '"' + self.r.choice(FILES) + '"' if self.r.random() < 0.7 else self.name()

    def statement(self, in_loop=False):
        r = self.r
        n = self.name
        forms = [
            lambda: "[%s=%s]" % (n(), self.expression()),
            lambda: "[SENDKEYS %s]" % r.choice([self.literal(), n(), "hello{TAB}^a"]),
            lambda: "hello %s world" % r.choice(["{ENTER}", "+a", "{F5}", "{{}"]),
            # A wait runs as long as it says (its time is not counted against the time-out),
            # so only short or void ones.
            lambda: "[WAIT %s]" % r.choice(["0.1", ".2", "0", "-1", '"2000-01-01 00:00:00"', '"soon"']),
            lambda: "[CLIP %s]" % r.choice(["ON", "OFF", "MAYBE"]),
            lambda: "[SPELLCHECKMODE %s]" % r.choice(["ON", "OFF"]),
            lambda: "[SPELLCHECK]",
            lambda: "[CANCEL IF %s]" % self.condition(),
            lambda: "[LOADFILE %s]" % self.file(),
            lambda: "[SAVEFILE %s]" % self.file(),
            lambda: "[OPEN %s %s]" % (r.choice(["1", "2", "9", "10", "0", n()]), self.file()),
            lambda: "[CLOSE %s]" % r.choice(["1", "2", "9", "0", n()]),
            lambda: "[READ %s %s]" % (r.choice(["1", "2", "3"]), n()),
            lambda: "[WRITE %s %s]" % (r.choice(["1", "2", "3"]), self.operand()),
            lambda: "[KILLFILE %s]" % self.file(),
            lambda: "[COPYFILE %s %s]" % (self.file(), r.choice([self.file(), "RENAME"])),
            lambda: "[PATHEXISTS %s %s]" % (self.file(), n()),
            lambda: "[SHORTPATH %s %s]" % (self.file(), n()),
            lambda: "[FINDSTRING %s %s %s]" % (self.operand(), self.operand(), n()),
            lambda: "[DATEDIFF %s %s %s]" % (self.literal(), r.choice(['"2024-03-01"', n()]), n()),
            lambda: '[FINDFILES "." %s]' % r.choice(['"*.txt"', n()]),
            lambda: "[GETCLIP %s]" % n(),
            lambda: "[SETCLIP %s]" % self.operand(),
            lambda: "[GETMULTICLIP %s %s]" % (r.choice(["1", "5", "6", n()]), n()),
            lambda: "[SETMULTICLIP %s %s]" % (r.choice(["1", "5", "0"]), self.operand()),
            lambda: "[LOADCLIP %s]" % self.file(),
            lambda: "[SAVECLIP %s]" % self.file(),
            lambda: "[COMMAND %s]" % r.choice(['"true"', '"echo hi"', n()]),
            lambda: "[USERINPUT %s %s]" % (self.literal(), n()),
            lambda: "[YESNOCANCEL %s %s]" % (r.choice(['"Go on?"', '"Note"']), n()),
            lambda: "[KEYLOG %s]" % r.choice([n(), "RESET"]),
            lambda: "[%s %s %s]" % (r.choice(["LEFTDOWN", "LEFTUP", "RIGHTDOWN", "RIGHTUP"]), self.number(), n()),
            lambda: "[CLICKZONE 0 0 10 10 %s]" % r.choice(["TRUE", "FALSE"]),
            lambda: "[SETFOCUS %s %s]" % (self.literal(), n()),
            # A fetch that gets no answer waits out its 59 seconds by design: kept to bad addresses.
            lambda: "[WEBSOURCE %s %s]" % (r.choice(['"not a url"', '""', n()]), n()),
            lambda: "[MAKEMP3 %s]" % self.file(),
            lambda: "[PRINT %s]" % self.file(),
            lambda: "[PRINTSELECTED]",
            lambda: "[LISTHOTKEYS]",
            lambda: "[HOTKEY %s]" % r.choice([str(r.randint(0, self.macro_count + 1)), n(), '"m2"', '"nobody"']),
            lambda: "[QUITLOOP]",
            lambda: "# a comment",
            lambda: "",
        ]
        # Starting a program or waiting is slow by nature: a loop of them runs into the
        # line limit only after hours, so they stay out of loops.
        while True:
            text = r.choice(forms)()
            if not (in_loop and text.startswith(("[WAIT", "[COMMAND"))):
                return text

    def junk(self):
        r = self.r
        pool = "[]{}()\"=<>+-*/&,.~^%#ABCxyz0123456789 \u00e0\u00c0\t"
        return "".join(r.choice(pool) for _ in range(r.randint(1, 60)))

    def block(self, depth, lines, in_loop=False):
        r = self.r
        out = []
        for _ in range(lines):
            k = r.random()
            if k < 0.12 and depth < 12:
                out.append("[IF %s]" % self.condition())
                out += self.block(depth + 1, r.randint(0, 4), in_loop)
                if r.random() < 0.5:
                    out.append("[ELSE]")
                    out += self.block(depth + 1, r.randint(0, 3), in_loop)
                if r.random() < 0.95:
                    out.append("[ENDIF]")
            elif k < 0.22 and depth < 12:
                out.append("[LOOP %s]" % self.condition())
                out += self.block(depth + 1, r.randint(0, 4), True)
                if r.random() < 0.95:
                    out.append("[ENDLOOP]")
            elif k < 0.26:
                out.append(self.junk())
            elif k < 0.27:
                out.append("[A=" + '"' + "x" * r.randint(1000, 70000) + '"]')
            else:
                out.append(self.statement(in_loop))
        return out

    def hotkeys_file(self):
        """The text of a Hotkeys file: macro 1 is the one run; some macros chain onwards."""
        records = []
        for i in range(1, self.macro_count + 1):
            lines = self.block(0, self.r.randint(1, 25))
            if self.r.random() < 0.3 and i < self.macro_count:
                lines.append("[HOTKEY %d]" % (i + 1))  # a deep chain
            code = "\r\n".join(lines).replace('"', "\u00e0")
            records.append('#TRUE#,"^%%F%d","m%d","%s"' % (i % 12 + 1, i, code))
        return '"<Hotkeys Macros v1.2>"\r\n' + "\r\n".join(records) + "\r\n"


def run_one(cli, folder, text, answers):
    os.makedirs(os.path.join(folder, "sub"), exist_ok=True)
    with open(os.path.join(folder, "a.txt"), "w") as f:
        f.write("first line\r\nsecond line\r\n")
    hotkeys = os.path.join(folder, "Hotkeys.txt")
    with open(hotkeys, "w", encoding="utf-8", newline="") as f:
        f.write(text)
    env = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
    env["SONAMARK_HOME"] = os.path.join(folder, "home")
    env["PULSE_SERVER"] = "unix:/nonexistent"
    args = [cli, "run", "--hotkeys", hotkeys, "--number", "1"]
    for a in answers:
        args += ["--answer", a]
    start = time.monotonic()
    try:
        p = subprocess.run(args, cwd=folder, env=env, stdin=subprocess.DEVNULL, capture_output=True,
                           timeout=RUN_TIMEOUT)
    except subprocess.TimeoutExpired:
        return "hang (no end within %d s)" % RUN_TIMEOUT, time.monotonic() - start
    took = time.monotonic() - start
    if p.returncode < 0:
        return "killed by signal %d" % -p.returncode, took
    if p.returncode == 3 or b"FAILURE" in p.stderr:
        return "internal failure: " + p.stderr.decode("utf-8", "replace")[-300:], took
    if p.returncode not in (0, 1):
        return "exit status %d: %s" % (p.returncode, p.stderr.decode("utf-8", "replace")[-300:]), took
    if p.returncode == 1 and not p.stdout.strip():
        return "a report was announced but nothing was printed", took
    return None, took


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("cli")
    ap.add_argument("--seconds", type=float, default=600)
    ap.add_argument("--count", type=int, default=0, help="stop after this many macros (0: by time)")
    ap.add_argument("--seed", type=int, default=None)
    ap.add_argument("--keep", default="random-macro-findings")
    ap.add_argument("--slow", type=float, default=0, help="also keep macros whose run takes this long")
    o = ap.parse_args()
    seed = o.seed if o.seed is not None else int(time.time())
    rng = random.Random(seed)
    print("seed %d" % seed, flush=True)
    findings = 0
    runs = 0
    slowest = 0.0
    deadline = time.monotonic() + o.seconds
    while time.monotonic() < deadline and (not o.count or runs < o.count):
        text = Gen(rng, rng.randint(1, 40)).hotkeys_file()
        answers = [rng.choice(["yes", "no", "cancel", "ok"]) for _ in range(rng.randint(0, 3))]
        folder = tempfile.mkdtemp(prefix="sonamark-random-")
        try:
            problem, took = run_one(o.cli, folder, text, answers)
        finally:
            shutil.rmtree(folder, ignore_errors=True)
        runs += 1
        slowest = max(slowest, took)
        if o.slow and took >= o.slow and not problem:
            os.makedirs(o.keep, exist_ok=True)
            kept = os.path.join(o.keep, "slow-%d-%d.txt" % (seed, runs))
            with open(kept, "w", encoding="utf-8", newline="") as f:
                f.write(text)
            print("slow run %d: %.1f s (kept in %s)" % (runs, took, kept), flush=True)
        if problem:
            findings += 1
            os.makedirs(o.keep, exist_ok=True)
            kept = os.path.join(o.keep, "finding-%d-%d.txt" % (seed, runs))
            with open(kept, "w", encoding="utf-8", newline="") as f:
                f.write(text)
            print("FINDING run %d: %s (kept in %s, answers %s)" % (runs, problem, kept, answers), flush=True)
    print("%d macros run, %d findings, slowest run %.1f s" % (runs, findings, slowest), flush=True)
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())

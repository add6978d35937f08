#!/usr/bin/env python3
"""Writes a Hotkeys file of N macros (default 500) of 40 lines each to standard output:
the usual mix of blocks, assignments, keystrokes, comments and file and mouse
statements, every fifth macro with two faulty lines; the same file on every run."""
import random
import sys

LINES = 40
HEADER = '"<Hotkeys Macros v1.2>"'
QUOTE = "\u00e0"  # how the file writes a double quote inside a macro
MODIFIERS = ["^", "%", "+", "^%", "^+", "%+", "^%+"]
KEYS = [chr(c) for c in range(ord("a"), ord("z") + 1)] + [f"{{F{n}}}" for n in range(1, 13)]

BLOCK = [
    "[IF  counter = {n} AND name = \"a b\"]",
    "  Hello {{ENTER}} world {n}",
    "    [Total = Total + {n}]",
    "# note {n}",
    "[ELSE]",
    "    [SENDKEYS \"^c\"]",
    "[ENDIF]",
    "[LOOP I=1,3]",
    "    [WAIT 1]",
    "    [T = MID(name,1,2) & name]",
    "    [CANCEL IF T=\"ab\"]",
    "[ENDLOOP]",
    "[OPEN 1 \"notes{n}.txt\"]",
    "[READ 1 Line]",
    "[CLOSE 1]",
    "[LEFTDOWN 100 {n}]",
    "[LEFTUP 300 400]",
    "[N = LEN(Line) * 2]",
    "[SETCLIP Line]",
    "[HOTKEY 1]",
]
FAULTS = ["[WAIT 0.01]", "[ENDIF]"]


def macro(number, rng):
    lines = [BLOCK[i % len(BLOCK)].format(n=rng.randint(1, 999)) for i in range(LINES)]
    if number % 5 == 0:
        for fault in FAULTS:
            lines[rng.randrange(LINES)] = fault
    return "\r\n".join(lines).replace('"', QUOTE)


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 500
    rng = random.Random(23)
    out = [HEADER]
    for n in range(1, count + 1):
        keys = MODIFIERS[n % len(MODIFIERS)] + KEYS[n % len(KEYS)]
        out.append(f'#TRUE#,"{keys}","Macro {n}","{macro(n, rng)}"')
    sys.stdout.buffer.write(("\r\n".join(out) + "\r\n").encode("utf-8"))


if __name__ == "__main__":
    main()

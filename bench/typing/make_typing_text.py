#!/usr/bin/env python3
"""Writes a text of N characters (default 5,000) to standard output, the same on every
run, in lines of up to 72 (short lines keep the receiving text box fast). "ascii":
letters, digits, punctuation and blanks of a US keyboard; "unicode": the same with one
character in five off that keyboard (accents, symbols, Greek, CJK)."""
import random
import string
import sys


def main():
    kind = sys.argv[1] if len(sys.argv) > 1 else "ascii"
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 5000
    rng = random.Random(11)
    plain = string.ascii_letters + string.digits + "     .,;:!?'\"-_/\\@#$&*=<>[]|`+^%~(){}"
    extra = "\u00e9\u00e8\u00e0\u00e7\u00fc\u00f6\u00df\u20ac\u00a3\u03a9\u03b1\u03b2\u65e5\u672c\u8a9e"
    out = []
    for i in range(count):
        if i % 72 == 71:
            out.append("\n")
        else:
            out.append(rng.choice(extra) if kind == "unicode" and rng.random() < 0.2 else rng.choice(plain))
    sys.stdout.write("".join(out))


if __name__ == "__main__":
    main()

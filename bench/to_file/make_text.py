#!/usr/bin/env python3
"""Writes an English text of N words (default 10,000) to standard output: varied
sentences from a fixed vocabulary, the same text on every run."""
import random
import sys

WORDS = ("the reader turns long articles into sound files so that people can listen on the road "
         "while driving walking or cooking every morning news stories essays and letters arrive "
         "a voice reads them aloud at an even pace with pauses between sentences and paragraphs "
         "numbers like twenty three or nineteen eighty four are spoken as words and names too").split()


def main():
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 10000
    rng = random.Random(17)
    out, written = [], 0
    while written < count:
        n = min(rng.randint(8, 20), count - written)
        sentence = " ".join(rng.choice(WORDS) for _ in range(n))
        out.append(sentence[0].upper() + sentence[1:] + ".")
        written += n
        if rng.random() < 0.15:
            out.append("\n\n")
    sys.stdout.write(" ".join(out) + "\n")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Writes an English text of about SIZE bytes (default 1,000,000) or WORDS words (with
--words) on standard output: the licence texts of /usr/share/common-licenses, over and
over. With --typos N, one word in N is misspelled by swapping two letters (the same
words each run); the misspellings repeat as the text does, as a writer's habits do.
Usage: make_text.py [--typos N] [SIZE | --words WORDS]"""
import glob, os, re, sys

def source_words():
    words = []
    for path in sorted(glob.glob('/usr/share/common-licenses/*')):
        if os.path.isfile(path) and not os.path.islink(path):
            with open(path, encoding='utf-8', errors='replace') as f:
                words += f.read().split()
    return words

def misspell(word, n):
    letters = [i for i, c in enumerate(word) if c.isalpha()]
    if len(letters) < 4:
        return word
    i = letters[1 + n % (len(letters) - 2)]
    j = i + 1 if i + 1 < len(word) and word[i + 1].isalpha() else i - 1
    w = list(word)
    w[i], w[j] = w[j], w[i]
    return ''.join(w)

def main():
    args = sys.argv[1:]
    typos = 0
    if args[:1] == ['--typos']:
        typos = int(args[1])
        args = args[2:]
    words_wanted = None
    size = 1_000_000
    if args and args[0] == '--words':
        words_wanted = int(args[1])
    elif args:
        size = int(args[0])
    src = source_words()
    out, length, n = [], 0, 0
    while (words_wanted is None and length < size) or (words_wanted is not None and n < words_wanted):
        w = src[n % len(src)]
        if typos and n % typos == typos - 1:
            w = misspell(w, n // typos)
        out.append(w)
        length += len(w.encode('utf-8')) + 1
        n += 1
        if n % 12 == 0:
            out.append('\n')
    text = ' '.join(out).replace(' \n ', '\n')
    sys.stdout.write(text + '\n')

main()

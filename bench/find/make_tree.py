#!/usr/bin/env python3
"""Builds the search benchmark's tree: 100,000 files in 5,000 folders.

50 top folders of 99 sub-folders each, plus the 50 top folders themselves, make 5,000
folders; each holds 20 files, half of them *.txt. Usage: make_tree.py ROOT
"""
import os
import sys

TOP_FOLDERS = 50
SUB_FOLDERS = 99
FILES_PER_FOLDER = 20


def fill(folder):
    os.makedirs(folder, exist_ok=True)
    for i in range(FILES_PER_FOLDER):
        ext = "txt" if i % 2 == 0 else "dat"
        with open(os.path.join(folder, f"file{i:02d}.{ext}"), "w") as f:
            f.write("x")


def main():
    root = sys.argv[1]
    for top in range(TOP_FOLDERS):
        top_folder = os.path.join(root, f"top{top:02d}")
        fill(top_folder)
        for sub in range(SUB_FOLDERS):
            fill(os.path.join(top_folder, f"sub{sub:02d}"))


if __name__ == "__main__":
    main()

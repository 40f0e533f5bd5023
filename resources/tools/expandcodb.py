#!/usr/bin/env python3
"""Writes a CODB catalogue with its copy lines expanded.

The sources keep families of alike objects short: "$1401=1400" stands for all lines of 0x1400 again
under the index 0x1401. The program loads its catalogues without object copies, so the catalogues it
carries must list every object itself.
"""
import re
import sys

COPY = re.compile(r"^\$([0-9A-Fa-f]{4})=([0-9A-Fa-f]{4})")


def expand(lines):
    by_index = {}
    out = []
    for line in lines:
        match = COPY.match(line)
        if match:
            target, source = match.group(1).upper(), match.group(2).upper()
            for original in by_index.get(source, []):
                copied = target + original[4:]
                out.append(copied)
                by_index.setdefault(target, []).append(copied)
            continue
        out.append(line)
        if line and not line.startswith("#"):
            by_index.setdefault(line[:4].upper(), []).append(line)
    return out


def main():
    source, target = sys.argv[1], sys.argv[2]
    with open(source, encoding="utf-8") as handle:
        lines = handle.read().split("\n")
    with open(target, "w", encoding="utf-8", newline="\n") as handle:
        handle.write("\n".join(expand(lines)))


if __name__ == "__main__":
    main()

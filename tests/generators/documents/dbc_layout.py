"""Prints what an independent DBC reader finds in a file: one line per message and per signal.

Usage: dbc_layout.py FILE

Numbers are printed as C's "%.11g" prints them, so that the lines compare with those of the tests.
"""
import logging
import sys

logging.disable(logging.CRITICAL)

import canmatrix.formats  # noqa: E402


def number(value):
    return "%.11g" % float(value)


def main(path):
    database = canmatrix.formats.loadp_flat(path, dbcImportEncoding="utf-8")
    for frame in database.frames:
        kind = "ext" if frame.arbitration_id.extended else "std"
        print("message %d %s %s dlc %d \"%s\"" % (frame.arbitration_id.id, kind, frame.name, frame.size,
                                                 frame.comment or ""))
        for signal in frame.signals:
            print("  signal %s %d|%d %s %s (%s,%s) [%s|%s] \"%s\" \"%s\"" % (
                signal.name, signal.start_bit, signal.size,
                "intel" if signal.is_little_endian else "motorola",
                "signed" if signal.is_signed else "unsigned",
                number(signal.factor), number(signal.offset), number(signal.min), number(signal.max),
                signal.unit or "", signal.comment or ""))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))

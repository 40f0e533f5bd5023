#!/usr/bin/env python3
"""Hash of the logical content of a project file, computed without the program: SHA-256 over every
table in name order, the name and a line feed, then each row in rowid order with every column as
text followed by '|' and a line feed behind each row. FileHash and TamperLog rows are left out."""
import hashlib
import sqlite3
import sys


def text(value):
    if value is None:
        return b""
    if isinstance(value, bytes):
        return value.decode("utf-8", errors="replace").encode("utf-8")
    if isinstance(value, float):
        return repr(value).encode("utf-8")
    return str(value).encode("utf-8")


def main(path):
    db = sqlite3.connect(path)
    digest = hashlib.sha256()
    tables = [row[0] for row in db.execute("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name")]
    for table in tables:
        digest.update(table.encode("utf-8") + b"\n")
        statement = 'SELECT * FROM "%s" ORDER BY rowid' % table
        if table == "MiscSettings":
            statement = ('SELECT * FROM "%s" WHERE item NOT IN (\'FileHash\',\'TamperLog\') ORDER BY rowid' % table)
        for row in db.execute(statement):
            for value in row:
                digest.update(text(value) + b"|")
            digest.update(b"\n")
    print(digest.hexdigest())


if __name__ == "__main__":
    main(sys.argv[1])

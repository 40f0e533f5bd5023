#!/usr/bin/env python3
"""Reads an EDS file with Python's own INI parser and prints its objects as JSON.

This is the independent reading that the import test compares the store with: every object section,
its entries (sub-index sections, sub-index 0 of a single object, the elements of a compact array),
with name, data type, access type, default value and limits as the file gives them.
"""
import configparser
import json
import re
import sys


def number(text):
    text = text.strip()
    try:
        return int(text, 0)
    except ValueError:
        # A leading zero without octal digits behind it, such as "08", is meant decimal.
        return int(text, 10)


def entry(section, object_type=7):
    data_type = section.get("datatype")
    return {
        "name": section.get("parametername", ""),
        "datatype": number(data_type) if data_type is not None else (15 if object_type == 2 else None),
        "access": section.get("accesstype", "ro").strip().lower(),
        "default": section.get("defaultvalue"),
        "low": section.get("lowlimit", ""),
        "high": section.get("highlimit", ""),
        "mappable": number(section.get("pdomapping", "0")) != 0,
    }


def main():
    parser = configparser.RawConfigParser(strict=False, interpolation=None, comment_prefixes=(";",),
                                          inline_comment_prefixes=None)
    with open(sys.argv[1], encoding="utf-8", errors="surrogateescape") as handle:
        parser.read_file(handle)
    sections = {name.lower(): parser[name] for name in parser.sections()}
    objects = {}
    for name, section in sections.items():
        if not re.fullmatch(r"[0-9a-f]{4}", name):
            continue
        object_type = number(section.get("objecttype", "7"))
        described = {"name": section.get("parametername", ""), "objecttype": object_type, "entries": {}}
        entries = described["entries"]
        compact = number(section.get("compactsubobj", "0"))
        if object_type == 8 and compact > 0:
            names = sections.get(name + "name", {})
            element = entry(section, object_type)
            entries["0"] = {"name": "Highest subindex supported", "datatype": 5, "access": "ro",
                            "default": str(compact), "low": "", "high": "", "mappable": False}
            for sub in range(1, compact + 1):
                entries[str(sub)] = dict(element, name=names.get(str(sub), f"{described['name']} {sub}"),
                                         low="", high="")
        elif object_type in (6, 8, 9):
            for sub_name, sub_section in sections.items():
                match = re.fullmatch(name + r"sub([0-9a-f]{1,2})", sub_name)
                if match:
                    entries[str(int(match.group(1), 16))] = entry(sub_section)
        else:
            entries["0"] = entry(section, object_type)
        objects[str(int(name, 16))] = described
    print(json.dumps(objects))


if __name__ == "__main__":
    main()

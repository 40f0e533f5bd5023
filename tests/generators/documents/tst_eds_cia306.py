#!/usr/bin/env python3
"""Checks that EDS files are valid CiA 306 files, read with Python's own INI parser.

Usage: tst_eds_cia306.py FILE...   Prints each problem and exits 1 when there is one.
"""
import configparser
import re
import sys

ACCESS_TYPES = {"ro", "wo", "rw", "rwr", "rww", "const"}
OBJECT_TYPES = {2, 7, 8, 9}
ENTRY_KEYS = ("ParameterName", "ObjectType", "DataType", "AccessType", "PDOMapping")
LISTS = ("MandatoryObjects", "OptionalObjects", "ManufacturerObjects")


def number(text):
    return int(text.strip(), 0)


def check(path):
    problems = []
    parser = configparser.RawConfigParser(strict=True, interpolation=None, comment_prefixes=(";",),
                                          inline_comment_prefixes=None, empty_lines_in_values=False)
    try:
        with open(path, encoding="utf-8") as handle:
            parser.read_file(handle)
    except configparser.Error as error:
        return [f"not an INI file: {error}"]
    sections = {name.lower(): name for name in parser.sections()}

    def section(name):
        return parser[sections[name.lower()]] if name.lower() in sections else None

    def check_entry(name):
        entry = section(name)
        for key in ENTRY_KEYS:
            if key.lower() not in entry:
                problems.append(f"[{name}] lacks {key}")
        if "objecttype" in entry and number(entry["objecttype"]) != 7:
            problems.append(f"[{name}] entry with ObjectType {entry['objecttype']}")
        if "datatype" in entry and not 0 < number(entry["datatype"]) <= 0xFFFF:
            problems.append(f"[{name}] DataType {entry['datatype']}")
        if "accesstype" in entry and entry["accesstype"].lower() not in ACCESS_TYPES:
            problems.append(f"[{name}] AccessType {entry['accesstype']}")
        if "pdomapping" in entry and entry["pdomapping"] not in ("0", "1"):
            problems.append(f"[{name}] PDOMapping {entry['pdomapping']}")

    listed = []
    for list_name in LISTS:
        objects = section(list_name)
        if objects is None:
            problems.append(f"no [{list_name}]")
            continue
        entries = [value for key, value in objects.items() if key != "supportedobjects"]
        if number(objects.get("supportedobjects", "-1")) != len(entries):
            problems.append(f"[{list_name}] SupportedObjects does not count its entries")
        for position, key in enumerate(k for k in objects if k != "supportedobjects"):
            if key != str(position + 1):
                problems.append(f"[{list_name}] entry {key} out of sequence")
        listed += [number(value) for value in entries]

    object_sections = [name for name in parser.sections() if re.fullmatch(r"[0-9A-Fa-f]{4}", name)]
    for index in listed:
        name = f"{index:04x}"
        obj = section(name)
        if obj is None:
            problems.append(f"object 0x{name} is listed but has no section")
            continue
        object_type = number(obj.get("objecttype", "7"))
        if object_type not in OBJECT_TYPES:
            problems.append(f"[{name}] ObjectType {object_type}")
        elif object_type in (8, 9):
            subs = [s for s in parser.sections() if re.fullmatch(name + r"sub[0-9A-Fa-f]{1,2}", s, re.I)]
            if "subnumber" not in obj or number(obj["subnumber"]) != len(subs):
                problems.append(f"[{name}] SubNumber does not match its {len(subs)} sub-sections")
            for sub in subs:
                check_entry(sub)
        else:
            check_entry(name)
    unlisted = {int(name, 16) for name in object_sections} - set(listed)
    for index in sorted(unlisted):
        if index < 0xD000:
            problems.append(f"object 0x{index:04x} has a section but is in no list")

    device = section("DeviceInfo")
    if device is None:
        problems.append("no [DeviceInfo]")
    else:
        for key, low, high in (("NrOfRxPDO", 0x1400, 0x15FF), ("NrOfTxPDO", 0x1800, 0x19FF)):
            count = sum(1 for name in object_sections if low <= int(name, 16) <= high)
            if number(device.get(key.lower(), "-1")) != count:
                problems.append(f"{key}={device.get(key)} but {count} objects")
    return problems


def main():
    failed = False
    for path in sys.argv[1:]:
        for problem in check(path):
            print(f"{path}: {problem}")
            failed = True
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()

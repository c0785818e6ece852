#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the simple lower-case mappings of Unicode's own data file as runs of letters with the same distance.

    tools/unicode/make_lower_case.py > QKFoundation/platform/values/LowerCaseTable.inc

The file is that of the Debian package unicode-data; --data names another folder that holds it.
"""
import argparse
import pathlib


def mappings(folder):
    for line in (folder / "UnicodeData.txt").read_text(encoding="utf-8").splitlines():
        fields = line.split(";")
        if fields[13]:
            yield int(fields[0], 16), int(fields[13], 16)


def runs(pairs):
    """[first, last, step, distance], step 1 or 2."""
    result = []
    for upper, lower in pairs:
        distance = lower - upper
        run = result[-1] if result else None
        if run and run[3] == distance and upper - run[1] in (1, 2) and run[2] in (0, upper - run[1]):
            run[1], run[2] = upper, upper - run[1]
        else:
            result.append([upper, upper, 0, distance])
    return [[first, last, step or 1, distance] for first, last, step, distance in result]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--data", type=pathlib.Path, default=pathlib.Path("/usr/share/unicode"))
    folder = parser.parse_args().data
    print("// SPDX-License-Identifier: Apache-2.0")
    print("// Written by tools/unicode/make_lower_case.py from Unicode's data file. Not to be edited.")
    print("// clang-format off")
    for first, last, step, distance in runs(mappings(folder)):
        print(f"{{0x{first:X}, 0x{last:X}, {step}, {distance}}},")


if __name__ == "__main__":
    main()

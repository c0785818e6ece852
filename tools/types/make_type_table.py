#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the table of uniform type identifiers from a list of declarations.

    tools/types/make_type_table.py DECLARATIONS > QKFoundation/platform/linux/UniformTypeTable.inc

DECLARATIONS has a type in each line, in columns with tabs between them: identifier, constant, "exported" or "imported",
the types that it conforms to, filename extensions, MIME types (each a list with commas) and a description. Lines that
begin with "#" are comments; the first other line names the columns. An exported declaration hides an imported one.
"""
import sys


def declarations(path):
    with open(path, encoding="utf-8") as file:
        lines = [line.rstrip("\n") for line in file if not line.startswith("#")]
    found = {}
    for line in lines[1:]:
        identifier, _, declared, *columns = line.split("\t")
        key = identifier.lower()
        if key not in found or (declared == "exported" and found[key][1] != "exported"):
            found[key] = (identifier, declared, columns)
    return [(identifier, *columns) for _, (identifier, _, columns) in sorted(found.items())]


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def main():
    print("// SPDX-License-Identifier: Apache-2.0")
    print("// Written by tools/types/make_type_table.py. Not to be edited.")
    print("// clang-format off")
    for row in declarations(sys.argv[1]):
        print("{" + ", ".join(quoted(column) for column in row) + "},")


if __name__ == "__main__":
    main()

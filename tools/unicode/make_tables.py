#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the tables of canonical composition, or the data of its test, from Unicode's own files.

    tools/unicode/make_tables.py tables > QKFoundation/platform/values/unicode/NormalizationTables.inc
    tools/unicode/make_tables.py tests > tests/platform/values/unicode/NormalizationTest.txt

The files are those of the Debian package unicode-data; --data names another folder that holds them. Hangul syllables
follow from arithmetic and are not in the tables.
"""
import argparse
import bz2
import pathlib
import re
import sys

BLOCK = 64  # code points of a block; Normalization.cpp knows it as well
SLOTS = 2048  # of the table of pairs
LIMIT = 0x30000  # nothing above has a class, a decomposition or a quick check value
HANGUL = range(0xAC00, 0xD7A4)
YES, MAYBE, NO = 0, 1, 2


def fields_of(path):
    for line in path.read_text(encoding="utf-8").splitlines():
        line = line.split("#")[0].strip()
        if line:
            yield [field.strip() for field in line.split(";")]


def code_points(text):
    first, _, last = text.partition("..")
    return range(int(first, 16), int(last or first, 16) + 1)


class Database:
    def __init__(self, folder):
        self.version = re.search(r"-(\d+\.\d+\.\d+)", (folder / "DerivedNormalizationProps.txt").read_text()).group(1)
        self.combining_class, self.mapping = {}, {}
        for fields in fields_of(folder / "UnicodeData.txt"):
            code = int(fields[0], 16)
            if fields[3] != "0":
                self.combining_class[code] = int(fields[3])
            if fields[5] and not fields[5].startswith("<"):
                self.mapping[code] = [int(part, 16) for part in fields[5].split()]
        self.quick_check, self.excluded = {}, set()
        for fields in fields_of(folder / "DerivedNormalizationProps.txt"):
            if fields[1] == "NFC_QC":
                self.quick_check.update(dict.fromkeys(code_points(fields[0]), {"N": NO, "M": MAYBE}[fields[2]]))
            elif fields[1] == "Full_Composition_Exclusion":
                self.excluded.update(code_points(fields[0]))

    def decompose(self, code):
        if code not in self.mapping:
            return [code]
        return [last for part in self.mapping[code] for last in self.decompose(part)]

    def pairs(self):
        return {tuple(to): code for code, to in self.mapping.items() if len(to) == 2 and code not in self.excluded}


def make_records(data):
    """The distinct records, the pool of decompositions, and the record of each code point."""
    pool, records, record_of = [], {(0, 0, 0, 0, YES): 0}, []
    for code in range(LIMIT):
        combining, check = data.combining_class.get(code, 0), data.quick_check.get(code, YES)
        to = data.decompose(code)
        offset = length = 0
        trailing = combining
        if to != [code]:
            offset, length = len(pool), len(to)
            pool += [part | data.combining_class.get(part, 0) << 24 for part in to]
            trailing = data.combining_class.get(to[-1], 0)
        record_of.append(records.setdefault((offset, length, combining, trailing, check), len(records)))
    for code in list(data.combining_class) + list(data.mapping) + list(data.quick_check):
        assert code < LIMIT and code not in HANGUL
    return list(records), pool, record_of


def make_blocks(record_of):
    blocks, index = {}, []
    for start in range(0, LIMIT, BLOCK):
        index.append(blocks.setdefault(tuple(record_of[start:start + BLOCK]), len(blocks)))
    assert len(blocks) <= 256
    return index, [record for block in blocks for record in block]


def slots_of(first, second, factor):
    product = (first << 21 | second) * factor & 0xFFFFFFFFFFFFFFFF
    return product >> 64 - 11, product >> 64 - 22 & SLOTS - 1


def place(pairs, factor):
    """Puts each pair into one of its two slots, by moving out what is in the way; nothing if that does not end."""
    slots = {}
    for pair in sorted(pairs):
        slot = slots_of(*pair, factor)[0]
        for _ in range(500):
            pair, slots[slot] = slots.get(slot), pair
            if pair is None:
                break
            one, other = slots_of(*pair, factor)
            slot = other if slot == one else one
        else:
            return None
    return slots


def make_slots(pairs):
    for attempt in range(1, 1000):
        factor = 0x9E3779B97F4A7C15 * (2 * attempt + 1) & 0xFFFFFFFFFFFFFFFF
        slots = place(pairs, factor)
        if slots:
            packed = {slot: pair[0] << 42 | pair[1] << 21 | pairs[pair] for slot, pair in slots.items()}
            return factor, [packed.get(slot, 0) for slot in range(SLOTS)]
    raise SystemExit("no factor serves: the table of pairs is too small")


def write_array(kind, name, values, form="{}"):
    print(f"const {kind} {name}[{len(values)}]{{")
    line = "   "
    for value in values:
        text = " " + form.format(value) + ","
        if len(line) + len(text) > 118:
            print(line)
            line = "   "
        line += text
    print(line)
    print("};\n")


def write_tables(data):
    records, pool, record_of = make_records(data)
    index, blocks = make_blocks(record_of)
    factor, slots = make_slots(data.pairs())
    print("// SPDX-License-Identifier: Apache-2.0")
    print(f"// Written by tools/unicode/make_tables.py from the data files of Unicode {data.version}. Not to be edited.")
    print("// clang-format off\n")
    print(f"static_assert(kTableLimit == 0x{LIMIT:X} && kBlockLength == {BLOCK} && kPairSlots == {SLOTS});")
    print(f"static_assert(kPairFactor == 0x{factor:X});")
    print()
    write_array("Record", "kRecords", ["Record{{{}, {}, {}, {}, {}}}".format(*record) for record in records])
    write_array("std::uint32_t", "kDecompositions", pool, "0x{:X}")
    write_array("std::uint8_t", "kBlockOf", index)
    write_array("std::uint16_t", "kRecordOf", blocks)
    write_array("std::uint64_t", "kPairs", slots, "0x{:X}")


def write_tests(data, folder):
    print("# SPDX-License-Identifier: Unicode-DFS-2016")
    print(f"# Unicode {data.version}: NormalizationTest.txt without its comments and compatibility forms.")
    print("# source; NFC; NFD; NFC of the compatibility decomposition; that decomposition. Empty: as the source;")
    print("# the last two left out: as the two before.")
    text = bz2.decompress((folder / "NormalizationTest.txt.bz2").read_bytes()).decode()
    for line in text.splitlines():
        line = line.split("#")[0].strip()
        if line.startswith("@"):
            print(line.strip())
        elif line:
            source, *others = line.split(";")[:5]
            if others[2:] == others[:2]:
                del others[2:]
            print(";".join([source] + ["" if other == source else other for other in others]))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--data", type=pathlib.Path, default=pathlib.Path("/usr/share/unicode"))
    parser.add_argument("what", choices=["tables", "tests"])
    options = parser.parse_args()
    data = Database(options.data)
    if options.what == "tables":
        write_tables(data)
    else:
        write_tests(data, options.data)


if __name__ == "__main__":
    sys.exit(main())

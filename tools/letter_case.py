#!/usr/bin/env python3
"""Writes platform/base/letter_case.h: the capital of every letter below U+10000.

    tools/letter_case.py [FOLDER]

FOLDER holds Unicode's data files, UnicodeData.txt among them (Debian's package unicode-data puts
them into /usr/share/unicode). Run by hand when a newer version of Unicode is wanted; its output is
committed, so that the build needs no data.

Taken is the simple upper-case mapping, one code unit for one: no letter becomes two, and a letter
whose capital lies past U+FFFF, or the other way round, has none here.
"""

import pathlib
import sys

UNITS = 0x10000
PAGE = 32  # units; the size at which both tables together are smallest
UPPER_CASE = 12  # field of UnicodeData.txt
TARGET = pathlib.Path(__file__).resolve().parent.parent / "platform" / "base" / "letter_case.h"

TEXT = """\
// Written by tools/letter_case.py from the data of Unicode {version}. Not to be edited.
//
// The capitals of the {letters} letters below U+10000 that have one, as distances modulo 65536:
// kDistances[kPages[unit / kPage]][unit % kPage] added to a unit gives its capital.
#pragma once

#include <array>
#include <cstdint>

namespace platform::letter_case {{

// clang-format off
inline constexpr std::size_t kPage = {page};
inline constexpr std::array<std::uint8_t, {index_size}> kPages{{{{
{index}
}}}};
inline constexpr std::array<std::array<std::uint16_t, kPage>, {pages}> kDistances{{{{
{distances}
}}}};
// clang-format on

}}  // namespace platform::letter_case
"""


def capitals(file):
    """The mappings from one code unit to another."""
    found = {}
    for line in file.read_text(encoding="utf-8").splitlines():
        fields = line.split(";")
        if fields[UPPER_CASE]:
            small, capital = int(fields[0], 16), int(fields[UPPER_CASE], 16)
            if small < UNITS and capital < UNITS:
                found[small] = capital
    return found


def version(folder):
    """As the first line of a data file tells it: "# PropList-15.0.0.txt"."""
    first = (folder / "PropList.txt").read_text(encoding="utf-8").splitlines()[0]
    return first.removeprefix("# PropList-").removesuffix(".txt")


def lines(numbers):
    """The numbers in lines of at most 97 columns, so that braces fit."""
    text = "    "
    for number in numbers:
        piece = f"{number},"
        if len(text.splitlines()[-1]) + len(piece) > 97:
            text += "\n    "
        text += piece
    return text


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "/usr/share/unicode")
    found = capitals(folder / "UnicodeData.txt")
    pages = {}
    index = []
    for first in range(0, UNITS, PAGE):
        page = tuple((found.get(unit, unit) - unit) % UNITS for unit in range(first, first + PAGE))
        index.append(pages.setdefault(page, len(pages)))
    assert len(pages) <= 256
    TARGET.write_text(TEXT.format(
        version=version(folder), letters=len(found), page=PAGE, pages=len(pages),
        index_size=len(index), index=lines(index),
        distances="\n".join("    {{" + lines(page).lstrip() + "}}," for page in pages)))


if __name__ == "__main__":
    main()

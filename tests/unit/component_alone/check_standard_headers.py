"""Fails if a header uses a name of the standard library whose header neither it nor a header of ours
below it includes.

    check_standard_headers.py ROOT HEADER...

Headers of the standard library include each other, in ways that differ between libraries; a size or a
fixed-width number comes with any of them, so these are not looked for.
"""

import pathlib
import re
import sys

NAMES = {
    "algorithm": r"min|max|clamp|sort|find|find_if|any_of|all_of|none_of|equal|copy|fill",
    "array": r"array",
    "bitset": r"bitset",
    "deque": r"deque",
    "exception": r"exception|exception_ptr",
    "functional": r"function|hash",
    "limits": r"numeric_limits",
    "map": r"map|multimap",
    "memory": r"unique_ptr|shared_ptr|weak_ptr|make_unique|make_shared|enable_shared_from_this",
    "optional": r"optional|nullopt",
    "random": r"mt19937|mt19937_64",
    "set": r"set",
    "span": r"span",
    "string": r"string|u16string|u32string|to_string",
    "string_view": r"string_view|u16string_view",
    "tuple": r"tuple",
    "unordered_map": r"unordered_map",
    "utility": r"pair|forward|exchange",
    "variant": r"variant|visit|monostate|get_if|holds_alternative",
    "vector": r"vector",
}


class Headers:
    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.reached = {}

    def read(self, name):
        return re.sub(r"//.*", "", (self.root / name).read_text())

    def standard(self, name):
        """The headers of the standard library that a header includes, by itself or by ours."""
        if name not in self.reached:
            self.reached[name] = set()  # a circle ends here
            text = self.read(name)
            found = set(re.findall(r"#include <([^>]+)>", text))
            for below in re.findall(r'#include "([^"]+)"', text):
                found |= self.standard(below)
            self.reached[name] = found
        return self.reached[name]


def main(root, names):
    headers = Headers(root)
    faults = 0
    for name in names:
        text = headers.read(name)
        for header, pattern in NAMES.items():
            used = re.search(rf"\bstd::({pattern})\b(?!_)", text)
            if used and header not in headers.standard(name):
                print(f"{name} uses {used.group(0)} and includes no <{header}>")
                faults += 1
    return 1 if faults or not names else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))

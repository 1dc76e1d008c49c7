// What a command printed beside what it was to print: where the two agree, and what is missing or
// too many where they do not.
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "tests/scenario/output.h"

namespace scenario {

/// Neighbouring lines of both that are the same, or that stand against each other and have nothing
/// in common.
struct Stretch {
    bool same = false;
    std::size_t expected = 0;  ///< the first line of it on that side
    std::size_t printed = 0;
    std::size_t expectedCount = 0;
    std::size_t printedCount = 0;
    bool operator==(const Stretch&) const = default;
};

/// All of both sides, with as many lines the same as their order allows. Two sides of thousands of
/// lines each are compared line by line where they begin to differ.
std::vector<Stretch> Compare(const Lines& expected, const Lines& printed);

/// A line each: "- " in front of what is missing, "+ " of what was not expected, two blanks of what
/// is the same, of which only the next neighbours are told.
void PrintDifference(const std::vector<Stretch>& stretches, const Lines& expected,
                     const Lines& printed, std::ostream& out);

}  // namespace scenario

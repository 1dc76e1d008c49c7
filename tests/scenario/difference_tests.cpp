#include "tests/scenario/difference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace scenario {
namespace {

using Stretches = std::vector<Stretch>;

std::string Printed(const Lines& expected, const Lines& printed) {
    std::ostringstream out;
    PrintDifference(Compare(expected, printed), expected, printed, out);
    return out.str();
}

TEST(CompareTest, SidesThatAgreeAreOneStretch) {
    EXPECT_EQ(Compare({"a", "b"}, {"a", "b"}), (Stretches{{true, 0, 0, 2, 2}}));
}

TEST(CompareTest, ALineThatIsMissingMovesTheRest) {
    EXPECT_EQ(Compare({"a", "b", "c"}, {"b", "c"}),
              (Stretches{{false, 0, 0, 1, 0}, {true, 1, 0, 2, 2}}));
}

TEST(CompareTest, ALineTooManyMovesTheRest) {
    EXPECT_EQ(Compare({"a", "b"}, {"a", "x", "b"}),
              (Stretches{{true, 0, 0, 1, 1}, {false, 1, 1, 0, 1}, {true, 1, 2, 1, 1}}));
}

TEST(CompareTest, WhatStandsAgainstEachOtherIsOneStretch) {
    EXPECT_EQ(Compare({"a", "b", "c"}, {"a", "x", "c"}),
              (Stretches{{true, 0, 0, 1, 1}, {false, 1, 1, 1, 1}, {true, 2, 2, 1, 1}}));
    EXPECT_EQ(Compare({"a", "b"}, {"x"}), (Stretches{{false, 0, 0, 2, 1}}));
}

TEST(CompareTest, OneSideMayBeEmpty) {
    EXPECT_EQ(Compare({}, {"x", "y"}), (Stretches{{false, 0, 0, 0, 2}}));
    EXPECT_EQ(Compare({"x"}, {}), (Stretches{{false, 0, 0, 1, 0}}));
}

TEST(CompareTest, AFloodIsComparedLineByLine) {
    const Lines expected(2100, "a");
    Lines printed(2101, "a");
    printed.front() = "x";
    EXPECT_EQ(
        Compare(expected, printed),
        (Stretches{{false, 0, 0, 1, 1}, {true, 1, 1, 2099, 2099}, {false, 2100, 2100, 0, 1}}));
}

TEST(PrintDifferenceTest, MarksWhatIsMissingAndWhatIsTooMany) {
    EXPECT_EQ(Printed({"a", "b", "c"}, {"a", "x", "c", "d"}),
              "      a\n    - b\n    + x\n      c\n    + d\n");
}

TEST(PrintDifferenceTest, ShowsTheNearestNeighboursAlone) {
    EXPECT_EQ(Printed({"1", "2", "3", "4", "5", "6", "7", "8", "9"},
                      {"1", "2", "x", "4", "5", "6", "7", "8"}),
              "      1\n      2\n    - 3\n    + x\n      4\n      5\n      ...\n      7\n      8\n"
              "    - 9\n");
    EXPECT_EQ(Printed({"1", "2", "3", "4"}, {"1", "2", "3"}),
              "      ...\n      2\n      3\n    - 4\n");
    EXPECT_EQ(Printed({"1", "2", "3", "4"}, {"2", "3", "4"}),
              "    - 1\n      2\n      3\n      ...\n");
}

TEST(PrintDifferenceTest, TellsTheBeginningOfAFlood) {
    const std::string text = Printed({}, Lines(23, "x"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 21);
    EXPECT_TRUE(text.ends_with("    + x\n    + ... and 3 more\n")) << text;
}

}  // namespace
}  // namespace scenario

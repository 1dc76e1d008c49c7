// Moving through the list by keys. Ten rows, of which five fit, unless told otherwise.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "controls/list/jlist.h"
#include "platform/base/messages.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;
using Range = std::pair<Long, Long>;

constexpr Long kPageUp = 33;
constexpr Long kPageDown = 34;
constexpr Long kEnd = 35;
constexpr Long kHome = 36;
constexpr Long kUp = 38;
constexpr Long kDown = 40;
constexpr Long kSpace = 32;
constexpr Long kShift = 1;

void Press(ListBench& bench, Long code, Long shift = 0) {
    bench.windows.SendMessage(bench.list->HWnd(), platform::WM_KEYDOWN, code, shift);
    bench.windows.SendMessage(bench.list->HWnd(), platform::WM_KEYUP, code, shift);
}

class JListKeys : public ::testing::Test {
  protected:
    JListKeys() { bench_.AddMany(10); }
    void Press(Long code, Long shift = 0) { sarnel::Press(bench_, code, shift); }
    /// Caret, focus and ListIndex stand on the row.
    void ExpectOn(Long row) {
        EXPECT_EQ(list_.CaretIndex(), row);
        EXPECT_EQ(list_.FocusIndex(), row);
        EXPECT_EQ(list_.ListIndex(), row);
    }
    void StandOn(Long row) {
        list_.ListIndex(row);
        list_.CaretIndex(row);
    }

    ListBench bench_;
    JList& list_ = *bench_.list;
};

// From row 6 a page of five ends exactly behind the last of ten rows; from row 5 it fits.
TEST_F(JListKeys, PageDownExactlyAtTheEndStopsAtTheLastRow) {
    StandOn(6);
    Press(kPageDown);
    ExpectOn(9);
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
    EXPECT_EQ(bench_.Flags(), ".........x");
    StandOn(5);
    Press(kPageDown);
    ExpectOn(9);
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
    EXPECT_FALSE(list_.Selected(10));
}

// Down to row 4 a page up ends exactly at row 0.
TEST_F(JListKeys, PageUpExactlyAtTheStart) {
    for (const Long row : {4, 3}) {
        StandOn(row);
        Press(kPageUp);
        ExpectOn(0);
        EXPECT_EQ(bench_.Range(), (Range{0, 4}));
    }
    StandOn(5);
    Press(kPageUp);
    ExpectOn(1);
    EXPECT_EQ(bench_.Range(), (Range{1, 5}));
}

TEST_F(JListKeys, DownSelectsTheFirstRowThenEachNextOneAlone) {
    Press(kDown);
    ExpectOn(0);
    EXPECT_EQ(bench_.Flags(), "x.........");
    Press(kDown);
    ExpectOn(1);
    EXPECT_EQ(bench_.Flags(), ".x........");
    EXPECT_EQ(list_.SelCount(), 1);
}

TEST_F(JListKeys, DownBringsTheNextRowOnShow) {
    StandOn(4);
    Press(kDown);
    ExpectOn(5);
    EXPECT_EQ(bench_.Range(), (Range{1, 5}));
}

TEST_F(JListKeys, DownOnTheLastRowCollapsesTheSelectionToIt) {
    Press(kEnd);
    list_.ClearOrSelect(2, 4, true);
    Press(kDown);
    ExpectOn(9);
    EXPECT_EQ(bench_.Flags(), ".........x");
    EXPECT_EQ(list_.SelCount(), 1);
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
    list_.ClearOrSelect(2, 4, true);
    Press(kDown, kShift);  // nothing
    EXPECT_EQ(bench_.Flags(), "..xxx....x");
    EXPECT_EQ(list_.SelCount(), 4);
}

TEST_F(JListKeys, ShiftExtendsRowByRowAndRecounts) {
    StandOn(2);
    list_.Selected(99, true);  // the count has drifted
    StandOn(2);
    Press(kDown, kShift);
    Press(kDown, kShift);
    ExpectOn(4);
    EXPECT_EQ(bench_.Flags(), "...xx.....");
    EXPECT_EQ(list_.SelCount(), 2);
    Press(kUp, kShift);
    ExpectOn(3);
    EXPECT_EQ(list_.SelCount(), 2);
}

TEST_F(JListKeys, UpGoesOneRowUpAndStaysOnTheFirst) {
    StandOn(1);
    list_.ClearOrSelect(5, 7, true);
    Press(kUp);
    ExpectOn(0);
    EXPECT_EQ(bench_.Flags(), "x.........");
    list_.ClearOrSelect(5, 7, true);
    Press(kUp);
    ExpectOn(0);
    EXPECT_EQ(bench_.Flags(), "x.........");
    EXPECT_EQ(list_.SelCount(), 1);
}

TEST_F(JListKeys, UpBringsTheRowAboveOnShow) {
    Press(kEnd);
    for (int i = 0; i < 5; ++i) {
        Press(kUp);
    }
    ExpectOn(4);
    EXPECT_EQ(bench_.Range(), (Range{4, 8}));
}

TEST_F(JListKeys, HomeAndEndGoToTheEndsAndSelectThatRow) {
    list_.ClearOrSelect(3, 5, true);
    Press(kEnd);
    ExpectOn(9);
    EXPECT_EQ(bench_.Flags(), ".........x");
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
    Press(kHome);
    ExpectOn(0);
    EXPECT_EQ(bench_.Flags(), "x.........");
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
    EXPECT_EQ(list_.SelCount(), 1);
}

TEST_F(JListKeys, ShiftWithHomeAndEndSelectsFromTheFocus) {
    StandOn(3);
    Press(kHome, kShift);
    EXPECT_EQ(bench_.Flags(), "xxxx......");
    EXPECT_EQ(list_.SelCount(), 4);
    StandOn(7);
    Press(kEnd, kShift);
    EXPECT_EQ(bench_.Flags(), "xxxx...xxx");
    EXPECT_EQ(list_.SelCount(), 7);
    ExpectOn(9);
}

TEST_F(JListKeys, PageDownMakesTheFocusTheTopRowAndGoesToTheBottomOne) {
    const std::vector<std::pair<Long, Range>> steps{
        {4, {0, 4}}, {8, {4, 8}}, {9, {5, 9}}, {9, {5, 9}}};
    for (const auto& [row, range] : steps) {
        Press(kPageDown);
        ExpectOn(row);
        EXPECT_EQ(bench_.Range(), range);
        EXPECT_EQ(bench_.Flagged(), 1);
        EXPECT_EQ(list_.SelCount(), 1);
    }
}

TEST_F(JListKeys, PageUpIsTheMirror) {
    Press(kEnd);
    const std::vector<std::pair<Long, Range>> steps{
        {5, {5, 9}}, {1, {1, 5}}, {0, {0, 4}}, {0, {0, 4}}};
    for (const auto& [row, range] : steps) {
        Press(kPageUp);
        ExpectOn(row);
        EXPECT_EQ(bench_.Range(), range);
        EXPECT_EQ(bench_.Flagged(), 1);
    }
}

TEST_F(JListKeys, ShiftWithAPageSelectsFromWhereTheFocusWas) {
    StandOn(4);
    Press(kPageDown, kShift);
    EXPECT_EQ(bench_.Flags(), "....xxxxx.");
    EXPECT_EQ(list_.SelCount(), 5);
    Press(kPageUp, kShift);  // from row 8 up to row 4
    ExpectOn(4);
    EXPECT_EQ(bench_.Flags(), "....xxxxx.");
    EXPECT_EQ(list_.SelCount(), 5);
}

TEST_F(JListKeys, OnAShortListPagesGoToItsEnds) {
    ListBench bench;
    bench.AddMany(3);
    sarnel::Press(bench, kPageDown);
    EXPECT_EQ(bench.list->CaretIndex(), 2);
    EXPECT_EQ(bench.Range(), (Range{0, 2}));
    sarnel::Press(bench, kPageUp);
    EXPECT_EQ(bench.list->CaretIndex(), 0);
    EXPECT_EQ(bench.Range(), (Range{0, 2}));
    sarnel::Press(bench, kEnd);
    EXPECT_EQ(bench.list->CaretIndex(), 2);
    EXPECT_EQ(bench.Range(), (Range{0, 2}));
}

TEST_F(JListKeys, SpaceCentresTheCurrentRowAndSelectsNothing) {
    list_.ListCurrent(6);
    Press(kSpace);
    EXPECT_EQ(bench_.Range(), (Range{4, 8}));
    EXPECT_EQ(list_.SelCount(), 0);
    EXPECT_EQ(list_.ListIndex(), 0);
    EXPECT_EQ(list_.CaretIndex(), -1);
}

TEST_F(JListKeys, OnAnEmptyListAStepCountsOneAndPageDownDoesNothing) {
    for (const Long code : {kDown, kUp, kHome, kEnd}) {
        ListBench bench;
        sarnel::Press(bench, code);
        EXPECT_EQ(bench.list->SelCount(), 1) << code;
        EXPECT_EQ(bench.list->ListCount(), 0);
    }
    ListBench bench;
    sarnel::Press(bench, kPageDown);
    EXPECT_EQ(bench.list->SelCount(), 0);
    EXPECT_EQ(bench.list->CaretIndex(), -1);
}

TEST_F(JListKeys, TheOwnerHearsOfEveryKeyOnceTheListHasMoved) {
    std::vector<std::string> heard;
    list_.onKeyDown = [&](Long code, Long shift) {
        heard.push_back("down " + std::to_string(code) + " " + std::to_string(shift) + " on " +
                        std::to_string(list_.CaretIndex()));
    };
    list_.onKeyUp = [&](Long code, Long) { heard.push_back("up " + std::to_string(code)); };
    Press(kDown);
    Press(13, 4);
    Press(37);
    EXPECT_EQ(heard, (std::vector<std::string>{"down 40 0 on 0", "up 40", "down 13 4 on 0", "up 13",
                                               "down 37 0 on 0", "up 37"}));
    list_.Enabled(false);
    Press(kDown);
    EXPECT_EQ(heard.size(), 6U);
    EXPECT_EQ(list_.CaretIndex(), 0);
}

TEST_F(JListKeys, KeysWithIndicesAtTheEndsOfAllNumbersDoNoHarm) {
    constexpr Long kMost = std::numeric_limits<Long>::max();
    constexpr Long kLeast = std::numeric_limits<Long>::min();
    for (const Long extreme : {kMost, kLeast, Long{-1}, Long{10}}) {
        for (const Long code : {kPageUp, kPageDown, kEnd, kHome, kUp, kDown, kSpace}) {
            for (const Long shift : {0, 1}) {
                StandOn(extreme);
                list_.ListCurrent(extreme);
                Press(code, shift);
                EXPECT_EQ(list_.ListCount(), 10);
            }
        }
    }
    Press(kHome);
    ExpectOn(0);
    EXPECT_EQ(bench_.Flags(), "x.........");
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
}

}  // namespace
}  // namespace sarnel

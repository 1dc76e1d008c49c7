// Which rows are on show. Unless told otherwise five rows fit.
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;
using Range = std::pair<Long, Long>;

class JListRange : public ::testing::Test {
  protected:
    ListBench bench_{ListBench::kAsPlaylist, 5};
    JList& list_ = *bench_.list;
};

TEST_F(JListRange, ARowIsALineAndTwoPixelsHighAndWholeRowsCount) {
    EXPECT_EQ(list_.RowHeight(), 15);
    EXPECT_EQ(list_.VisibleRows(), 5);
    EXPECT_EQ(list_.RowTop(0), 0);
    EXPECT_EQ(list_.RowTop(4), 60);
    EXPECT_EQ(list_.RowTop(-1), 0);
    EXPECT_EQ(list_.RowTop(51), 0);
}

TEST_F(JListRange, AFontSetAloneLosesTheTwoPixelsUntilTheListIsMeasuredAgain) {
    list_.ListFont({u"Arial", 12, true, false});
    EXPECT_EQ(list_.RowHeight(), 13);
    EXPECT_EQ(list_.VisibleRows(), 6);  // of 82 pixels
    list_.Enabled(true);
    EXPECT_EQ(list_.RowHeight(), 15);
    EXPECT_EQ(list_.VisibleRows(), 5);
}

TEST_F(JListRange, ANewSizeCountsOnceTheListIsMeasuredAgain) {
    list_.Height(31);
    EXPECT_EQ(list_.VisibleRows(), 5);
    list_.Enabled(true);
    EXPECT_EQ(list_.VisibleRows(), 2);
}

TEST_F(JListRange, TheFirstAddLeavesTheEmptyStateAndAListThatFitsIsShownWhole) {
    EXPECT_EQ(bench_.Range(), (Range{-1, -1}));
    bench_.AddMany(1);
    EXPECT_EQ(bench_.Range(), (Range{0, 0}));
    bench_.AddMany(4);
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
    EXPECT_FALSE(list_.ScrollBarShown());
    bench_.AddMany(1);
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
    EXPECT_TRUE(list_.ScrollBarShown());
}

TEST_F(JListRange, AViewAtTheEndStaysAtTheEndWhenRowsGo) {
    bench_.AddMany(10);
    list_.DisplayFrom(9);
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
    bench_.AddMany(1);
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
    list_.RemoveItem(10);
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
    list_.RemoveItem(0);
    EXPECT_EQ(bench_.Range(), (Range{4, 8}));
    EXPECT_EQ(list_.TopIndex(), 4);
}

TEST_F(JListRange, RemovingDownToAListThatFitsShowsItWhole) {
    bench_.AddMany(7);
    list_.DisplayFrom(2);
    list_.RemoveItem(0);
    list_.RemoveItem(0);
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
    for (int i = 0; i < 5; ++i) {
        list_.RemoveItem(0);
    }
    EXPECT_EQ(bench_.Range(), (Range{0, -1}));
}

TEST_F(JListRange, DisplayFromBringsARowToTheTopAsFarAsThereAreRows) {
    bench_.AddMany(10);
    const std::vector<std::pair<Long, Range>> expected{{3, {3, 7}},  {5, {5, 9}},  {6, {5, 9}},
                                                       {99, {5, 9}}, {-4, {0, 4}}, {9, {5, 9}},
                                                       {0, {0, 4}}};
    for (const auto& [row, range] : expected) {
        list_.DisplayFrom(row);
        EXPECT_EQ(bench_.Range(), range) << row;
        EXPECT_EQ(list_.TopIndex(), range.first) << row;
    }
}

TEST_F(JListRange, OnAListThatFitsDisplayFromAndHighlightDoNotEvenRepaint) {
    bench_.AddMany(3);
    list_.RedrawFlag(false);
    bench_.AddMany(2);
    list_.ListCurrent(4);
    list_.DisplayFrom(1);
    list_.HighlightCurrent();
    EXPECT_EQ(bench_.Range(), (Range{0, 2}));  // as painted last
}

TEST_F(JListRange, DisplayFromRepaintsWhateverTheFlagSays) {
    bench_.AddMany(8);
    list_.RedrawFlag(false);
    list_.DisplayFrom(2);
    EXPECT_EQ(list_.TopIndex(), 2);
}

TEST_F(JListRange, HighlightCentresTheCurrentRowAndAHalfGoesToTheEvenRow) {
    bench_.AddMany(20);
    // ListCurrent less 2.5: 4 gives 1.5 and so 2, 5 gives 2.5 and so 2, 6 gives 3.5 and so 4.
    const std::vector<std::pair<Long, Range>> expected{
        {4, {2, 6}},    {5, {2, 6}}, {6, {4, 8}},     {0, {0, 4}},    {2, {0, 4}},
        {18, {15, 19}}, {3, {0, 4}}, {500, {15, 19}}, {-500, {0, 4}},
    };
    for (const auto& [row, range] : expected) {
        list_.ListCurrent(row);
        list_.HighlightCurrent();
        EXPECT_EQ(bench_.Range(), range) << row;
    }
    EXPECT_EQ(list_.ListIndex(), 0);
    EXPECT_EQ(list_.SelCount(), 0);
    list_.DisplayFrom(7);
    list_.ListCurrent(-1);
    list_.HighlightCurrent();
    EXPECT_EQ(bench_.Range(), (Range{7, 11}));
}

TEST_F(JListRange, WithAnEvenNumberOfRowsTheDifferenceIsWhole) {
    ListBench bench(ListBench::kAsPlaylist, 4);
    bench.AddMany(20);
    bench.list->ListCurrent(7);
    bench.list->HighlightCurrent();
    EXPECT_EQ(bench.Range(), (Range{5, 8}));
}

TEST_F(JListRange, AdjustBringsTheFocusToTheNearerEdge) {
    bench_.AddMany(10);
    list_.DisplayFrom(5);
    list_.FocusIndex(2);
    list_.AdjustDisplayRange();
    EXPECT_EQ(bench_.Range(), (Range{2, 6}));
    list_.FocusIndex(7);
    list_.AdjustDisplayRange();
    EXPECT_EQ(bench_.Range(), (Range{3, 7}));
    list_.RedrawFlag(false);
    list_.FocusIndex(0);
    list_.AdjustDisplayRange();
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
    EXPECT_EQ(list_.TopIndex(), 0);  // repainted whatever the flag says
}

TEST_F(JListRange, AdjustDoesNothingForAFocusOnShow) {
    bench_.AddMany(5);
    list_.RedrawFlag(false);
    bench_.AddMany(5);
    list_.FocusIndex(4);
    list_.AdjustDisplayRange();
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
    EXPECT_FALSE(list_.ScrollBarShown());  // a repaint would have seen ten rows
}

TEST_F(JListRange, AdjustWithAFocusBehindTheRowsEndsOnTheLastOnes) {
    bench_.AddMany(10);
    list_.FocusIndex(12);  // asks for 8 to 12; the last row is among them
    list_.AdjustDisplayRange();
    EXPECT_EQ(bench_.Range(), (Range{5, 9}));
}

TEST_F(JListRange, AdjustWithAFocusAtTheEndsOfAllNumbers) {
    constexpr Long kMost = std::numeric_limits<Long>::max();
    constexpr Long kLeast = std::numeric_limits<Long>::min();
    bench_.AddMany(10);
    list_.FocusIndex(kMost);
    list_.AdjustDisplayRange();
    EXPECT_EQ(bench_.Range(), (Range{kMost - 4, kMost}));
    list_.FocusIndex(kLeast);
    list_.AdjustDisplayRange();
    EXPECT_EQ(bench_.Range(), (Range{kLeast, kLeast + 4}));
    bench_.AddMany(1);
    list_.DisplayFrom(0);
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
}

TEST_F(JListRange, WhileTheFlagIsFalseTheViewStaysAndTrueRepaintsAtOnce) {
    bench_.AddMany(3);
    list_.RedrawFlag(false);
    bench_.AddMany(10);
    list_.Selected(1, true);
    list_.ListCurrent(1);
    EXPECT_EQ(bench_.Range(), (Range{0, 2}));
    list_.RedrawFlag(true);
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
}

TEST_F(JListRange, ListIndexRepaintsWhateverTheFlagSays) {
    bench_.AddMany(3);
    list_.RedrawFlag(false);
    bench_.AddMany(10);
    list_.ListIndex(1);
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
}

TEST_F(JListRange, ClearOrSelectRepaintsUnlessThereIsNothingToDeselect) {
    bench_.AddMany(3);
    list_.RedrawFlag(false);
    bench_.AddMany(10);
    list_.ClearOrSelect(-1, -1, false);
    EXPECT_EQ(bench_.Range(), (Range{0, 2}));
    list_.ClearOrSelect(0, 0, true);
    EXPECT_EQ(bench_.Range(), (Range{0, 4}));
}

TEST_F(JListRange, RefreshCutsARangePastTheRowsAndRaisesResize) {
    std::vector<std::string> raised;
    list_.Observe([&](const std::string& event, const std::string&) { raised.push_back(event); });
    bench_.AddMany(10);
    list_.DisplayFrom(9);
    list_.RedrawFlag(false);
    for (int i = 0; i < 3; ++i) {
        list_.RemoveItem(0);
    }
    list_.Refresh();
    EXPECT_EQ(bench_.Range(), (Range{2, 6}));
    EXPECT_EQ(raised, (std::vector<std::string>{"Resize"}));
    EXPECT_EQ(list_.TopIndex(), 5);  // not repainted: the flag is False
    list_.RedrawFlag(true);
    EXPECT_EQ(list_.TopIndex(), 2);
}

TEST_F(JListRange, RefreshOnAnEmptiedListShowsNoRow) {
    bench_.AddMany(5);
    list_.RedrawFlag(false);
    for (int i = 0; i < 5; ++i) {
        list_.RemoveItem(0);
    }
    list_.Refresh();
    EXPECT_EQ(bench_.Range(), (Range{0, -1}));
}

TEST_F(JListRange, AListWithRoomForNoRowShowsNone) {
    ListBench bench(ListBench::kAsPlaylist, 0);
    EXPECT_EQ(bench.list->VisibleRows(), 0);
    bench.AddMany(3);
    bench.list->ListCurrent(2);
    bench.list->HighlightCurrent();
    bench.list->FocusIndex(std::numeric_limits<Long>::max());
    bench.list->AdjustDisplayRange();
    bench.list->FocusIndex(std::numeric_limits<Long>::min());
    bench.list->AdjustDisplayRange();
    bench.list->DisplayFrom(1);
    EXPECT_EQ(bench.Range(), (Range{1, 0}));
    bench.list->Sort(true);
    EXPECT_EQ(bench.Range(), (Range{0, -1}));
}

TEST_F(JListRange, AListMayHaveRoomForMoreRowsThanItHasTopsFor) {
    ListBench bench(ListBench::kAsPlaylist, 80);
    EXPECT_EQ(bench.list->VisibleRows(), 80);
    EXPECT_EQ(bench.list->RowTop(50), 750);
    EXPECT_EQ(bench.list->RowTop(60), 0);
    bench.AddMany(100);
    EXPECT_EQ(bench.Range(), (Range{0, 79}));
}

}  // namespace
}  // namespace sarnel

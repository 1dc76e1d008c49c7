#include <gtest/gtest.h>

#include <string>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;

class JListSelection : public ::testing::Test {
  protected:
    JListSelection() { bench_.AddMany(10); }

    ListBench bench_;
    JList& list_ = *bench_.list;
};

TEST_F(JListSelection, SelectingCountsAndMovesTheCaretAlone) {
    list_.ListIndex(4);
    list_.Selected(7, true);
    EXPECT_EQ(bench_.Flags(), ".......x..");
    EXPECT_EQ(list_.SelCount(), 1);
    EXPECT_EQ(list_.CaretIndex(), 7);
    EXPECT_EQ(list_.ListIndex(), 4);
    EXPECT_EQ(list_.FocusIndex(), 4);
    list_.Selected(7, false);
    EXPECT_EQ(bench_.Flags(), "..........");
    EXPECT_EQ(list_.SelCount(), 0);
}

TEST_F(JListSelection, SettingAFlagToWhatItIsCountsNothing) {
    list_.Selected(3, false);
    EXPECT_EQ(list_.SelCount(), 0);
    EXPECT_EQ(list_.CaretIndex(), 3);
    list_.Selected(3, true);
    list_.Selected(3, true);
    EXPECT_EQ(list_.SelCount(), 1);
}

TEST_F(JListSelection, OutsideTheColumnCaretAndCountStillMove) {
    list_.Selected(99, true);
    EXPECT_EQ(bench_.Flagged(), 0);
    EXPECT_FALSE(list_.Selected(99));
    EXPECT_EQ(list_.SelCount(), 1);
    EXPECT_EQ(list_.CaretIndex(), 99);
    list_.Selected(-7, true);
    EXPECT_EQ(list_.SelCount(), 2);
    EXPECT_EQ(list_.CaretIndex(), -7);
    list_.Selected(-7, false);  // counts as False already
    EXPECT_EQ(list_.SelCount(), 2);
}

TEST_F(JListSelection, TheSpareSlotHasAFlagLikeOthers) {
    list_.Selected(10, true);
    EXPECT_TRUE(list_.Selected(10));
    EXPECT_EQ(list_.SelCount(), 1);
    list_.RemoveItem(10);  // drops the spare with its flag
    EXPECT_EQ(list_.SelCount(), 0);
}

TEST_F(JListSelection, ARangeIsSelectedAndOnlyItsChangesAreCounted) {
    list_.Selected(2, true);
    list_.Selected(3, true);
    list_.ClearOrSelect(1, 4, true);
    EXPECT_EQ(bench_.Flags(), ".xxxx.....");
    EXPECT_EQ(list_.SelCount(), 4);
    list_.ClearOrSelect(3, 8, false);
    EXPECT_EQ(bench_.Flags(), ".xx.......");
    EXPECT_EQ(list_.SelCount(), 2);
}

TEST_F(JListSelection, ARangeGivenBackwardsIsTurnedRound) {
    list_.ClearOrSelect(7, 3, true);
    EXPECT_EQ(bench_.Flags(), "...xxxxx..");
    EXPECT_EQ(list_.SelCount(), 5);
}

TEST_F(JListSelection, ARangeOfOneRowIsThatRow) {
    list_.ClearOrSelect(0, 0, true);
    list_.ClearOrSelect(9, 9, true);
    EXPECT_EQ(bench_.Flags(), "x........x");
    EXPECT_EQ(list_.SelCount(), 2);
}

TEST_F(JListSelection, OneNegativeBoundAndOnePositiveDoNothing) {
    list_.ClearOrSelect(-1, 5, true);
    list_.ClearOrSelect(5, -1, true);
    list_.ClearOrSelect(-2'000'000'000, 2'000'000'000, true);
    EXPECT_EQ(bench_.Flagged(), 0);
    EXPECT_EQ(list_.SelCount(), 0);
}

TEST_F(JListSelection, MinusOneTwiceIsEveryRow) {
    list_.ClearOrSelect(-1, -1, true);
    EXPECT_EQ(bench_.Flags(), "xxxxxxxxxx");
    EXPECT_EQ(list_.SelCount(), 10);
    list_.ClearOrSelect(-1, -1, false);
    EXPECT_EQ(bench_.Flagged(), 0);
    EXPECT_EQ(list_.SelCount(), 0);
}

TEST_F(JListSelection, TheEndIsCutToTheLastRow) {
    list_.ClearOrSelect(8, 2'000'000'000, true);
    EXPECT_EQ(bench_.Flags(), "........xx");
    EXPECT_FALSE(list_.Selected(10));
    EXPECT_EQ(list_.SelCount(), 2);
    list_.ClearOrSelect(99, 5, true);  // turned round, then cut
    EXPECT_EQ(bench_.Flags(), ".....xxxxx");
    EXPECT_EQ(list_.SelCount(), 5);
}

TEST_F(JListSelection, TheWholeListSetsTheCountWhateverItWas) {
    list_.Selected(99, true);
    list_.Selected(99, true);
    EXPECT_EQ(list_.SelCount(), 2);
    list_.ClearOrSelect(0, 9, true);
    EXPECT_EQ(list_.SelCount(), 10);
    list_.Selected(99, true);
    list_.ClearOrSelect(0, 9, false);
    EXPECT_EQ(list_.SelCount(), 0);
}

TEST_F(JListSelection, DeselectingWithACountOfZeroDoesNothingEvenIfAFlagIsSet) {
    ListBench bench;
    bench.Add({u"b", u"a"});
    bench.list->Selected(0, true);
    bench.list->Sort(true);  // the shift doubles the flag and the count does not know
    ASSERT_EQ(bench.Flags(), "xx");
    ASSERT_EQ(bench.list->SelCount(), 1);
    bench.list->ClearOrSelect(0, 0, false);
    EXPECT_EQ(bench.Flags(), ".x");
    EXPECT_EQ(bench.list->SelCount(), 0);
    bench.list->ClearOrSelect(-1, -1, false);
    EXPECT_EQ(bench.Flags(), ".x");
}

TEST_F(JListSelection, AnEmptyListTakesNoSelection) {
    ListBench bench;
    bench.list->ClearOrSelect(-1, -1, true);
    bench.list->ClearOrSelect(0, 5, true);
    EXPECT_EQ(bench.list->SelCount(), 0);
    EXPECT_FALSE(bench.list->Selected(0));
}

TEST_F(JListSelection, FlagsMoveWithTheirRows) {
    list_.ClearOrSelect(2, 3, true);
    list_.AddItem(u"x", u"", 3);
    EXPECT_EQ(bench_.Flags(), "..x.x......");
    EXPECT_EQ(list_.SelCount(), 2);
    list_.RemoveItem(0);
    EXPECT_EQ(bench_.Flags(), ".x.x......");
}

TEST_F(JListSelection, AnIndexIsTakenUnchecked) {
    list_.ListIndex(500);
    EXPECT_EQ(list_.ListIndex(), 500);
    EXPECT_EQ(list_.FocusIndex(), 500);
    EXPECT_EQ(list_.CaretIndex(), -1);  // not touched
    list_.ListCurrent(-33);
    EXPECT_EQ(list_.ListCurrent(), -33);
    list_.newIndex(77);
    EXPECT_EQ(list_.newIndex(), 77);
    EXPECT_EQ(list_.ListCount(), 10);
}

TEST_F(JListSelection, AddsAndRemovesWithIndicesAtTheEndsOfAllNumbers) {
    constexpr Long kMost = 2'147'483'647;
    constexpr Long kLeast = -kMost - 1;
    for (const Long extreme : {kMost, kLeast}) {
        list_.ListIndex(extreme);
        list_.ListCurrent(extreme);
        list_.CaretIndex(extreme);
        list_.Selected(3, true);
        list_.AddItem(u"x", u"", 0);
        list_.AddItem(u"x", u"", extreme);
        list_.RemoveItem(0);
        list_.RemoveItem(extreme);
        list_.HighlightCurrent();
        EXPECT_EQ(list_.SelCount(), bench_.Flagged());
        list_.ClearOrSelect(-1, -1, false);
    }
    EXPECT_EQ(list_.ListCount(), 12);  // of 10, four came and two went
}

}  // namespace
}  // namespace sarnel

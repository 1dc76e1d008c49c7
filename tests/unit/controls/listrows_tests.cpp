// The rows of a list without a window. Payloads are capitals of their texts where nothing else is
// said, so that what sorting loses can be seen.
#include "controls/list/listrows.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "core/base/failure.h"

namespace sarnel {
namespace {

class ListRowsTest : public ::testing::Test {
  protected:
    ListRowsTest() { rows_.Sorted(false); }

    Long Add(char16_t letter, Long at = -1) {
        const auto capital = static_cast<char16_t>(letter - u'a' + u'A');
        return rows_.AddItem(std::u16string(1, letter), std::u16string(1, capital), at);
    }
    void AddAll(std::u16string_view letters) {
        for (const char16_t letter : letters) {
            Add(letter);
        }
    }
    std::u16string Texts() const {
        std::u16string all;
        for (Long i = 0; i < rows_.ListCount(); ++i) {
            all += rows_.List(i);
        }
        return all;
    }
    std::u16string Payloads() const {
        std::u16string all;
        for (Long i = 0; i < rows_.ListCount(); ++i) {
            all += rows_.ListData(i);
        }
        return all;
    }
    // The selected rows; the spare counts as one here.
    std::vector<Long> SelectedRows() const {
        std::vector<Long> selected;
        for (Long i = 0; rows_.Has(i); ++i) {
            if (rows_.Selected(i)) {
                selected.push_back(i);
            }
        }
        return selected;
    }
    std::vector<Long> Images() const {
        std::vector<Long> images;
        for (Long i = 0; i < rows_.ListCount(); ++i) {
            images.push_back(rows_.ImageIndex(i));
        }
        return images;
    }

    using Indices = std::vector<Long>;
    ListRows rows_;
};

TEST_F(ListRowsTest, NewRowsAreOneSpareAndSorted) {
    const ListRows fresh;
    EXPECT_EQ(fresh.ListCount(), 0);
    EXPECT_TRUE(fresh.Has(0));
    EXPECT_FALSE(fresh.Has(1) || fresh.Has(-1));
    EXPECT_EQ(fresh.List(0), u"");
    EXPECT_EQ(fresh.ListData(5), u"");
    EXPECT_FALSE(fresh.Selected(0));
    EXPECT_EQ(fresh.ImageIndex(0), 0);
    EXPECT_EQ(fresh.SelCount(), 0);
    EXPECT_TRUE(fresh.Sorted());
    EXPECT_FALSE(fresh.KeepsImages());
}

TEST_F(ListRowsTest, ARowGoesInFrontOfTheSpareOrWhereItIsAskedTo) {
    EXPECT_EQ(Add(u'a'), 0);
    EXPECT_EQ(Add(u'b'), 1);
    EXPECT_EQ(Add(u'x', 0), 0);
    EXPECT_EQ(Texts(), u"xab");
    EXPECT_EQ(Payloads(), u"XAB");
    EXPECT_TRUE(rows_.Has(3));
    EXPECT_FALSE(rows_.Has(4));
    EXPECT_EQ(rows_.List(3), u"");
}

TEST_F(ListRowsTest, BehindTheSpareARowIsAppendedAndTheSpareStaysBetween) {
    AddAll(u"ab");
    EXPECT_EQ(Add(u'z', 9), 9);
    EXPECT_EQ(rows_.ListCount(), 3);
    EXPECT_EQ(rows_.List(2), u"");
    EXPECT_EQ(rows_.List(3), u"z");
    EXPECT_EQ(rows_.ListData(3), u"Z");
    EXPECT_FALSE(rows_.Has(4));
}

TEST_F(ListRowsTest, ANegativePlaceIsTheFrontAndIsAnsweredAsGiven) {
    AddAll(u"ab");
    EXPECT_EQ(Add(u'n', -5), -5);
    EXPECT_EQ(Texts(), u"nab");
}

TEST_F(ListRowsTest, ANewRowIsNotSelectedAndPushesFlagsDown) {
    AddAll(u"ab");
    rows_.Selected(0, true);
    Add(u'x', 0);
    EXPECT_EQ(SelectedRows(), (Indices{1}));
    EXPECT_EQ(rows_.SelCount(), 1);
}

TEST_F(ListRowsTest, APlaceBeatsSorted) {
    rows_.Sorted(true);
    AddAll(u"ab");
    EXPECT_EQ(Add(u'z', 0), 0);
    EXPECT_EQ(Texts(), u"zab");
}

TEST_F(ListRowsTest, WhileSortedARowGoesToItsPlace) {
    rows_.Sorted(true);
    EXPECT_EQ(Add(u'c'), 0);
    EXPECT_EQ(Add(u'a'), 0);
    EXPECT_EQ(Add(u'b'), 1);
    EXPECT_EQ(Add(u'd'), 3);
    EXPECT_EQ(rows_.AddItem(u"Z", u"*", -1), 0);  // capitals stand in front
    EXPECT_EQ(Texts(), u"Zabcd");
    EXPECT_EQ(Payloads(), u"*ABCD");
}

TEST_F(ListRowsTest, APayloadIsWrittenWhereThereIsASlot) {
    AddAll(u"ab");
    rows_.ListData(1, u"new");
    rows_.ListData(-1, u"lost");
    rows_.ListData(3, u"lost");
    EXPECT_EQ(Payloads(), u"Anew");
    EXPECT_EQ(rows_.DataAt(1).Text(), u"new");
    EXPECT_EQ(rows_.TextAt(1).Text(), u"b");
}

TEST_F(ListRowsTest, ARemovedRowTakesItsFlagAlong) {
    AddAll(u"abc");
    rows_.Selected(1, true);
    rows_.Selected(2, true);
    EXPECT_TRUE(rows_.RemoveItem(1));
    EXPECT_EQ(Texts(), u"ac");
    EXPECT_EQ(Payloads(), u"AC");
    EXPECT_EQ(SelectedRows(), (Indices{1}));
    EXPECT_EQ(rows_.SelCount(), 1);
}

TEST_F(ListRowsTest, WithoutTheSlotNothingIsRemoved) {
    EXPECT_FALSE(rows_.RemoveItem(0));  // the spare of an empty list
    AddAll(u"ab");
    EXPECT_FALSE(rows_.RemoveItem(-1));
    EXPECT_FALSE(rows_.RemoveItem(3));
    EXPECT_EQ(rows_.ListCount(), 2);
    EXPECT_EQ(Texts(), u"ab");
}

TEST_F(ListRowsTest, WithoutTheSpareTheLastRowBecomesIt) {
    AddAll(u"abc");
    EXPECT_TRUE(rows_.RemoveItem(3));
    EXPECT_EQ(rows_.ListCount(), 2);
    EXPECT_EQ(rows_.List(2), u"c");
    EXPECT_FALSE(rows_.Has(3));
}

TEST_F(ListRowsTest, ClearKeepsHowRowsAreKept) {
    rows_.KeepsImages(true);
    AddAll(u"ab");
    rows_.ImageIndex(0, 7);
    rows_.Selected(1, true);
    rows_.Clear();
    EXPECT_EQ(rows_.ListCount(), 0);
    EXPECT_EQ(rows_.SelCount(), 0);
    EXPECT_FALSE(rows_.Has(1));
    EXPECT_EQ(rows_.ImageIndex(0), 0);
    EXPECT_TRUE(rows_.KeepsImages());
    EXPECT_FALSE(rows_.Sorted());
}

// Images.

TEST_F(ListRowsTest, ARowHasASlotForItsImageIfItCameWhileImagesWereKept) {
    rows_.KeepsImages(true);
    Add(u'a');
    EXPECT_EQ(rows_.ImageIndex(0), -1);
    rows_.ImageIndex(0, 4);
    EXPECT_EQ(rows_.ShownImage(0), 4);
    rows_.KeepsImages(false);
    EXPECT_EQ(rows_.ShownImage(0), -1);
    EXPECT_EQ(rows_.ImageIndex(0), 4);
    AddAll(u"bc");
    rows_.KeepsImages(true);
    // Two slots: the first row's and the one that the column began with.
    EXPECT_EQ(rows_.ShownImage(1), 0);
    EXPECT_EQ(rows_.ShownImage(2), -1);
    EXPECT_THROW(static_cast<void>(rows_.ImageIndex(2)), ComponentError);
    EXPECT_THROW(rows_.ImageIndex(2, 1), ComponentError);
    EXPECT_THROW(static_cast<void>(rows_.ImageIndex(-1)), ComponentError);
}

// Selection.

TEST_F(ListRowsTest, TheCountFollowsAFlagThatChanges) {
    AddAll(u"abc");
    rows_.Selected(1, true);
    rows_.Selected(1, true);
    EXPECT_EQ(rows_.SelCount(), 1);
    rows_.Selected(2, false);
    EXPECT_EQ(rows_.SelCount(), 1);
    rows_.Selected(1, false);
    EXPECT_EQ(rows_.SelCount(), 0);
}

TEST_F(ListRowsTest, WithoutASlotTheCountDrifts) {
    AddAll(u"a");
    rows_.Selected(7, true);
    rows_.Selected(-1, true);
    EXPECT_EQ(rows_.SelCount(), 2);
    rows_.Selected(7, false);
    EXPECT_EQ(rows_.SelCount(), 2);
    EXPECT_EQ(SelectedRows(), Indices{});
}

TEST_F(ListRowsTest, ABlockCountsOnlyWhatChanges) {
    AddAll(u"abcdefghij");
    EXPECT_TRUE(rows_.ClearOrSelect(7, 3, true));
    EXPECT_EQ(SelectedRows(), (Indices{3, 4, 5, 6, 7}));
    EXPECT_EQ(rows_.SelCount(), 5);
    EXPECT_TRUE(rows_.ClearOrSelect(5, 99, true));
    EXPECT_EQ(SelectedRows(), (Indices{3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(rows_.SelCount(), 7);
    EXPECT_TRUE(rows_.ClearOrSelect(0, 4, false));
    EXPECT_EQ(SelectedRows(), (Indices{5, 6, 7, 8, 9}));
    EXPECT_EQ(rows_.SelCount(), 5);
}

TEST_F(ListRowsTest, TheWholeListSetsTheCountWhateverItWas) {
    AddAll(u"abc");
    rows_.SelCount(42);
    EXPECT_TRUE(rows_.ClearOrSelect(-1, -1, true));
    EXPECT_EQ(SelectedRows(), (Indices{0, 1, 2}));
    EXPECT_EQ(rows_.SelCount(), 3);
    EXPECT_TRUE(rows_.ClearOrSelect(-1, -1, false));
    EXPECT_EQ(SelectedRows(), Indices{});
    EXPECT_EQ(rows_.SelCount(), 0);
}

TEST_F(ListRowsTest, ABlockThatSaysNothingDoesNothing) {
    EXPECT_FALSE(rows_.ClearOrSelect(-1, -1, true));  // no rows
    AddAll(u"abcdefgh");
    EXPECT_FALSE(rows_.ClearOrSelect(-1, 5, true));
    EXPECT_FALSE(rows_.ClearOrSelect(5, -1, true));
    EXPECT_FALSE(rows_.ClearOrSelect(0, 3, false));  // none is selected
    EXPECT_EQ(SelectedRows(), Indices{});
    EXPECT_EQ(rows_.SelCount(), 0);
}

TEST_F(ListRowsTest, FillingFlagsLeavesTheCountToWhoCounts) {
    AddAll(u"abcdef");
    rows_.FillSelected(4, 1, true);
    EXPECT_EQ(SelectedRows(), (Indices{1, 2, 3, 4}));
    EXPECT_EQ(rows_.SelCount(), 0);
    rows_.RecountSelected();
    EXPECT_EQ(rows_.SelCount(), 4);
    rows_.DeselectAll();
    EXPECT_EQ(SelectedRows(), Indices{});
    EXPECT_EQ(rows_.SelCount(), 4);
}

TEST_F(ListRowsTest, TheSparesFlagIsFilledAndNotCounted) {
    AddAll(u"ab");
    rows_.FillSelected(-3, 99, true);
    EXPECT_EQ(SelectedRows(), (Indices{0, 1, 2}));
    rows_.RecountSelected();
    EXPECT_EQ(rows_.SelCount(), 2);
    rows_.DeselectAll();
    EXPECT_EQ(SelectedRows(), (Indices{2}));
}

// Search and order.

TEST_F(ListRowsTest, UnsortedTheFirstEqualPayloadIsFound) {
    rows_.AddItem(u"1", u"A", -1);
    rows_.AddItem(u"2", u"\u00C4b", -1);
    rows_.AddItem(u"3", u"\u00E4B", -1);
    EXPECT_EQ(rows_.FindDataIndex(u"\u00E4B", true), 2);
    EXPECT_EQ(rows_.FindDataIndex(u"\u00E4B", false), 1);
    EXPECT_EQ(rows_.FindDataIndex(u"a", true), -1);
    EXPECT_EQ(rows_.FindDataIndex(u"a", false), 0);
    EXPECT_EQ(rows_.FindDataIndex(u"1", false), -1);  // a text
    EXPECT_EQ(rows_.FindDataIndex(u"", true), -1);    // the spare is no row
}

TEST_F(ListRowsTest, SortedTheSearchHalvesByPayload) {
    AddAll(u"cab");
    rows_.Sorted(true);
    EXPECT_EQ(rows_.FindDataIndex(u"A", true), 1);
    // From the A in the middle it goes right, and C stands left.
    EXPECT_EQ(rows_.FindDataIndex(u"C", true), -1);
    EXPECT_EQ(rows_.FindDataIndex(u"b", false), 2);
}

TEST_F(ListRowsTest, SortedTheSearchOfAnEmptyListMeetsTheSpare) {
    rows_.Sorted(true);
    EXPECT_EQ(rows_.FindDataIndex(u"", true), 0);
    EXPECT_EQ(rows_.FindDataIndex(u"x", true), -1);
}

// Up to five rows are left to the final pass, which carries flag and payload of c over the others.
TEST_F(ListRowsTest, TheFinalPassOfASortLosesPayloadsAndFlags) {
    AddAll(u"cab");
    rows_.Selected(0, true);
    rows_.Sort(true);
    EXPECT_EQ(Texts(), u"abc");
    EXPECT_EQ(Payloads(), u"CCC");
    EXPECT_EQ(SelectedRows(), (Indices{0, 1, 2}));
    EXPECT_EQ(rows_.SelCount(), 1);
}

// Halving brings gfedcba to acbdfeg with all that belongs to the rows; the final pass moves b and
// e.
TEST_F(ListRowsTest, HalvingMovesWholeRows) {
    rows_.KeepsImages(true);
    AddAll(u"gfedcba");
    for (Long i = 0; i < 7; ++i) {
        rows_.ImageIndex(i, i);
    }
    rows_.Selected(3, true);
    rows_.Selected(6, true);
    rows_.Sort(true);
    EXPECT_EQ(Texts(), u"abcdefg");
    EXPECT_EQ(Payloads(), u"ACCDFFG");
    EXPECT_EQ(Images(), (Indices{6, 4, 4, 3, 1, 1, 0}));
    EXPECT_EQ(SelectedRows(), (Indices{0, 3}));
}

TEST_F(ListRowsTest, ImagesThatAreNotKeptStayWhereTheyAre) {
    rows_.KeepsImages(true);
    AddAll(u"gfedcba");
    for (Long i = 0; i < 7; ++i) {
        rows_.ImageIndex(i, i);
    }
    rows_.KeepsImages(false);
    rows_.Sort(true);
    EXPECT_EQ(Payloads(), u"ACCDFFG");
    EXPECT_EQ(Images(), (Indices{0, 1, 2, 3, 4, 5, 6}));
}

TEST_F(ListRowsTest, ADescendingSortTurnsTheTextsAlone) {
    AddAll(u"abcd");
    rows_.Sort(false);
    EXPECT_EQ(Texts(), u"dcba");
    EXPECT_EQ(Payloads(), u"ABCD");
}

TEST_F(ListRowsTest, SortingNothingIsNothing) {
    rows_.Sort(true);
    rows_.Sort(false);
    EXPECT_EQ(rows_.ListCount(), 0);
    EXPECT_TRUE(rows_.Has(0));
}

TEST_F(ListRowsTest, TheSpareDoesNotTurnRound) {
    AddAll(u"abc");
    rows_.ReverseStringArray();
    EXPECT_EQ(Texts(), u"cba");
    EXPECT_EQ(Payloads(), u"ABC");
    EXPECT_EQ(rows_.List(3), u"");
}

}  // namespace
}  // namespace sarnel

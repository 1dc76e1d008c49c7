// Rows, the indices that follow them, and the image column.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/list/jlist.h"
#include "core/base/failure.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;
using Texts = std::vector<std::u16string>;

class JListRows : public ::testing::Test {
  protected:
    ListBench bench_;
    JList& list_ = *bench_.list;
};

TEST(JListNew, AListPlacedAfreshIsEmptyAndSorted) {
    const ListBench bench(ListBench::kFresh);
    const JList& list = *bench.list;
    EXPECT_EQ(list.ListCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.ListCurrent(), -1);
    EXPECT_EQ(list.newIndex(), -1);
    EXPECT_EQ(list.SelCount(), 0);
    EXPECT_EQ(list.FocusIndex(), 0);
    EXPECT_EQ(list.CaretIndex(), -1);
    EXPECT_EQ(bench.Range(), (std::pair<Long, Long>{-1, -1}));
    EXPECT_EQ(list.TopIndex(), 0);
    EXPECT_TRUE(list.RedrawFlag());
    EXPECT_TRUE(list.Sorted());
    EXPECT_FALSE(list.SortedLoaded());
    EXPECT_FALSE(list.ShowItemImages());
    EXPECT_THROW(list.Text(), ComponentError);  // ListIndex names no slot
}

TEST(JListNew, AListPlacedAfreshHasTheMetricsOfItsFontWithoutTheMargin) {
    const ListBench bench(ListBench::kFresh, 5);
    EXPECT_EQ(bench.list->RowHeight(), 13);
    EXPECT_EQ(bench.list->VisibleRows(), 6);  // of 82 pixels
    bench.list->Enabled(true);
    EXPECT_EQ(bench.list->RowHeight(), 15);
    EXPECT_EQ(bench.list->VisibleRows(), 5);
}

TEST(JListNew, AListOfTheLayoutHasItsStoredPropertiesAndListIndexZero) {
    const ListBench playlist(ListBench::kAsPlaylist);
    EXPECT_EQ(playlist.list->ListIndex(), 0);
    EXPECT_FALSE(playlist.list->Sorted());
    EXPECT_FALSE(playlist.list->SortedLoaded());
    EXPECT_EQ(playlist.list->Text(), u"");
    const ListBench sorted(ListBench::kStoredSorted);
    EXPECT_TRUE(sorted.list->Sorted());
    EXPECT_TRUE(sorted.list->SortedLoaded());
    const ListBench images(ListBench::kWithImages);
    EXPECT_TRUE(images.list->ShowItemImages());
}

TEST_F(JListRows, OutOfRangeReadsAreEmptyAndWritesAreDropped) {
    EXPECT_EQ(list_.List(0), u"");
    EXPECT_EQ(list_.ListData(5), u"");
    EXPECT_FALSE(list_.Selected(0));
    bench_.Add({u"a", u"b"});
    for (const Long index : {-1, 2, 3, 1000, -1000}) {  // 2 is the spare
        EXPECT_EQ(list_.List(index), u"");
        EXPECT_EQ(list_.ListData(index), u"");
        EXPECT_FALSE(list_.Selected(index));
    }
    list_.ListData(-1, u"x");
    list_.ListData(3, u"x");
    list_.ListData(1, u"new");
    EXPECT_EQ(bench_.Payloads(), (Texts{u"a.mp3", u"new"}));
    list_.ListData(2, u"spare");
    EXPECT_EQ(list_.ListData(2), u"spare");
}

TEST_F(JListRows, RowsStandInOrderOfArrivalAndNewIndexTellsWhere) {
    bench_.Add({u"c"});
    EXPECT_EQ(list_.newIndex(), 0);
    bench_.Add({u"a", u"b"});
    EXPECT_EQ(list_.newIndex(), 2);
    EXPECT_EQ(bench_.Texts(), (Texts{u"c", u"a", u"b"}));
    EXPECT_EQ(bench_.Payloads(), (Texts{u"c.mp3", u"a.mp3", u"b.mp3"}));
}

TEST_F(JListRows, AnAddInFrontLeavesListCurrentZeroOnTheNewRow) {
    bench_.Add({u"old"});
    list_.ListCurrent(0);
    list_.AddItem(u"new", u"", 0);
    EXPECT_EQ(bench_.Texts(), (Texts{u"new", u"old"}));
    EXPECT_EQ(list_.newIndex(), 0);
    EXPECT_EQ(list_.ListCurrent(), 0);
}

TEST_F(JListRows, AnAddAtOrInFrontOfListCurrentMovesItUp) {
    bench_.Add({u"a", u"b", u"c"});
    list_.ListCurrent(1);
    list_.AddItem(u"x", u"", 2);
    EXPECT_EQ(list_.ListCurrent(), 1);
    list_.AddItem(u"x", u"", 1);
    EXPECT_EQ(list_.ListCurrent(), 2);
    list_.AddItem(u"x", u"", 0);
    EXPECT_EQ(list_.ListCurrent(), 3);
    EXPECT_EQ(list_.List(3), u"b");
}

TEST_F(JListRows, WithNothingSelectedAndListIndexZeroNoIndexMoves) {
    bench_.Add({u"a", u"b", u"c"});
    list_.FocusIndex(2);
    list_.CaretIndex(1);
    list_.AddItem(u"x", u"", 0);
    EXPECT_EQ(list_.ListIndex(), 0);
    EXPECT_EQ(list_.FocusIndex(), 2);
    EXPECT_EQ(list_.CaretIndex(), 1);
}

TEST_F(JListRows, WithListIndexAboveZeroEachIndexFromTheNewRowOnMoves) {
    bench_.Add({u"a", u"b", u"c"});
    list_.ListIndex(2);
    list_.FocusIndex(1);
    list_.CaretIndex(0);
    list_.AddItem(u"x", u"", 1);
    EXPECT_EQ(list_.ListIndex(), 3);
    EXPECT_EQ(list_.FocusIndex(), 2);
    EXPECT_EQ(list_.CaretIndex(), 0);
}

TEST_F(JListRows, WithARowSelectedListIndexZeroMovesToo) {
    bench_.Add({u"a", u"b"});
    list_.Selected(1, true);  // the caret goes to 1
    list_.AddItem(u"x", u"", 0);
    EXPECT_EQ(list_.ListIndex(), 1);
    EXPECT_EQ(list_.FocusIndex(), 1);
    EXPECT_EQ(list_.CaretIndex(), 2);
    EXPECT_EQ(bench_.Flags(), "..x");
    EXPECT_EQ(list_.SelCount(), 1);
}

TEST_F(JListRows, ANegativeIndexLandsInFrontAndNewIndexKeepsIt) {
    bench_.Add({u"a", u"b"});
    list_.ListIndex(1);
    list_.ListCurrent(1);
    list_.AddItem(u"x", u"x.mp3", -5);
    EXPECT_EQ(bench_.Texts(), (Texts{u"x", u"a", u"b"}));
    EXPECT_EQ(bench_.Payloads(), (Texts{u"x.mp3", u"a.mp3", u"b.mp3"}));
    EXPECT_EQ(list_.newIndex(), -5);
    EXPECT_EQ(list_.ListIndex(), 2);
    EXPECT_EQ(list_.ListCurrent(), 2);
    EXPECT_EQ(list_.CaretIndex(), 0);  // was -1, which is not below -5
}

TEST_F(JListRows, AnAddAtTheSpareIsAnAddAtTheEnd) {
    bench_.Add({u"a", u"b"});
    list_.AddItem(u"x", u"", 2);
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b", u"x"}));
    EXPECT_EQ(list_.List(3), u"");
}

TEST_F(JListRows, AnAddPastTheLastSlotGoesBehindTheSpare) {
    bench_.Add({u"a", u"b"});
    list_.AddItem(u"z", u"z.mp3", 9);
    EXPECT_EQ(list_.ListCount(), 3);
    EXPECT_EQ(list_.newIndex(), 9);
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b", u""}));
    EXPECT_EQ(list_.List(3), u"z");
    EXPECT_EQ(list_.ListData(3), u"z.mp3");
}

TEST_F(JListRows, RemovingMovesTheIndicesThatStandOnOrBehindTheRow) {
    bench_.Add({u"a", u"b", u"c", u"d"});
    list_.ListIndex(2);
    list_.FocusIndex(3);
    list_.CaretIndex(1);
    list_.ListCurrent(3);
    list_.RemoveItem(2);
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b", u"d"}));
    EXPECT_EQ(bench_.Payloads(), (Texts{u"a.mp3", u"b.mp3", u"d.mp3"}));
    EXPECT_EQ(list_.ListIndex(), 1);  // stood on it: the row above
    EXPECT_EQ(list_.FocusIndex(), 2);
    EXPECT_EQ(list_.CaretIndex(), 1);
    EXPECT_EQ(list_.ListCurrent(), 2);
    EXPECT_EQ(list_.newIndex(), -1);
}

TEST_F(JListRows, RemovingRowZeroLeavesIndicesAtZero) {
    bench_.Add({u"a", u"b"});
    list_.CaretIndex(0);
    list_.RemoveItem(0);
    EXPECT_EQ(list_.ListIndex(), 0);
    EXPECT_EQ(list_.FocusIndex(), 0);
    EXPECT_EQ(list_.CaretIndex(), 0);
}

TEST_F(JListRows, RemovingTheCurrentRowLeavesNoCurrentRow) {
    bench_.Add({u"a", u"b", u"c"});
    list_.ListCurrent(1);
    list_.RemoveItem(2);
    EXPECT_EQ(list_.ListCurrent(), 1);
    list_.RemoveItem(0);
    EXPECT_EQ(list_.ListCurrent(), 0);
    list_.RemoveItem(0);
    EXPECT_EQ(list_.ListCurrent(), -1);
}

TEST_F(JListRows, RemovingOutOfRangeDoesNothing) {
    list_.RemoveItem(0);
    EXPECT_EQ(list_.ListCount(), 0);
    bench_.Add({u"a", u"b"});
    list_.RemoveItem(-1);
    list_.RemoveItem(3);
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b"}));
    EXPECT_EQ(list_.newIndex(), 1);
}

TEST_F(JListRows, RemovingTheSpareMakesTheLastRowTheNewSpare) {
    bench_.Add({u"a", u"b", u"c"});
    list_.RemoveItem(3);
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b"}));
    EXPECT_EQ(list_.List(2), u"c");
    list_.AddItem(u"d", u"");
    EXPECT_EQ(bench_.Texts(), (Texts{u"a", u"b", u"d"}));
    EXPECT_EQ(list_.List(3), u"c");
}

TEST_F(JListRows, RemovingASelectedRowLowersSelCount) {
    bench_.Add({u"a", u"b", u"c"});
    list_.Selected(0, true);
    list_.Selected(2, true);
    list_.RemoveItem(1);
    EXPECT_EQ(list_.SelCount(), 2);
    list_.RemoveItem(0);
    EXPECT_EQ(list_.SelCount(), 1);
    EXPECT_EQ(bench_.Flags(), "x");
}

TEST_F(JListRows, AfterTheLastRowAnotherCanBeAdded) {
    bench_.Add({u"a"});
    list_.RemoveItem(0);
    EXPECT_EQ(list_.ListCount(), 0);
    EXPECT_EQ(list_.List(0), u"");
    bench_.Add({u"b"});
    EXPECT_EQ(bench_.Texts(), (Texts{u"b"}));
}

TEST_F(JListRows, ClearEmptiesTheListAndLeavesListCurrentAndTheImages) {
    bench_.AddMany(8);
    list_.DisplayFrom(3);
    list_.ListIndex(4);
    list_.ListCurrent(5);
    list_.Selected(6, true);
    list_.AddImage(nullptr);
    list_.RedrawFlag(false);
    list_.Clear();
    EXPECT_EQ(list_.ListCount(), 0);
    EXPECT_EQ(list_.List(0), u"");
    EXPECT_EQ(list_.SelCount(), 0);
    EXPECT_EQ(list_.ListIndex(), 0);
    EXPECT_EQ(list_.FocusIndex(), 0);
    EXPECT_EQ(list_.CaretIndex(), -1);
    EXPECT_EQ(list_.newIndex(), -1);
    EXPECT_EQ(bench_.Range(), (std::pair<Long, Long>{-1, -1}));
    EXPECT_FALSE(list_.ScrollBarShown());
    EXPECT_TRUE(list_.RedrawFlag());  // whatever it was: meant
    EXPECT_EQ(list_.ListCurrent(), 5);
    EXPECT_EQ(list_.ImageCount(), 1);
}

TEST_F(JListRows, TextIsTheRowOfListIndexAndRaisesOutsideTheColumn) {
    bench_.Add({u"a", u"b"});
    list_.ListIndex(1);
    EXPECT_EQ(list_.Text(), u"b");
    list_.ListIndex(2);
    EXPECT_EQ(list_.Text(), u"");  // the spare
    list_.ListIndex(3);
    EXPECT_THROW(list_.Text(), ComponentError);
    list_.ListIndex(-1);
    EXPECT_THROW(list_.Text(), ComponentError);
}

class JListImages : public ::testing::Test {
  protected:
    std::vector<Long> Images() const {
        std::vector<Long> images;
        try {
            for (Long i = 0;; ++i) {
                images.push_back(list_.ImageIndex(i));
            }
        } catch (const ComponentError&) {  // past the last slot
        }
        return images;
    }

    ListBench bench_{ListBench::kWithImages};
    JList& list_ = *bench_.list;
};

TEST_F(JListImages, AnAddedRowHasNoImageAndItsImageFollowsIt) {
    EXPECT_EQ(Images(), (std::vector<Long>{0}));
    bench_.Add({u"a", u"b"});
    EXPECT_EQ(Images(), (std::vector<Long>{-1, -1, 0}));
    list_.ImageIndex(0, 7);
    list_.ImageIndex(1, 8);
    list_.AddItem(u"x", u"", 1);
    EXPECT_EQ(Images(), (std::vector<Long>{7, -1, 8, 0}));
    list_.RemoveItem(0);
    EXPECT_EQ(Images(), (std::vector<Long>{-1, 8, 0}));
    list_.Clear();
    EXPECT_EQ(Images(), (std::vector<Long>{0}));
}

TEST_F(JListImages, OutsideTheColumnReadAndWriteRaiseTheBoundsError) {
    bench_.Add({u"a"});
    EXPECT_THROW(list_.ImageIndex(-1), ComponentError);
    EXPECT_THROW(list_.ImageIndex(2), ComponentError);
    EXPECT_THROW(list_.ImageIndex(2, 1), ComponentError);
    EXPECT_THROW(list_.ImageIndex(-1, 1), ComponentError);
}

TEST_F(JListImages, RowsAddedWhileImagesAreOffHaveNoSlotAndGetNoneLater) {
    list_.ShowItemImages(false);
    bench_.Add({u"a", u"b", u"c"});
    EXPECT_EQ(Images(), (std::vector<Long>{0}));
    list_.ShowItemImages(true);
    EXPECT_EQ(Images(), (std::vector<Long>{0}));
    bench_.Add({u"d"});  // row 3 is past the column's last slot: appended as slot 1
    EXPECT_EQ(Images(), (std::vector<Long>{0, -1}));
    list_.RemoveItem(3);  // takes the last slot
    EXPECT_EQ(Images(), (std::vector<Long>{0}));
    list_.RemoveItem(1);  // the only slot stays, emptied
    EXPECT_EQ(Images(), (std::vector<Long>{0}));
}

TEST_F(JListImages, AWriteRepaintsOnlyForARowOnShowAndIfTheFlagAllows) {
    bench_.AddMany(10);
    list_.Height(31);
    list_.Enabled(true);  // two rows fit now, which only a repaint sees
    const std::pair<Long, Long> stale{0, 4};
    list_.ImageIndex(7, 1);
    EXPECT_EQ(bench_.Range(), stale);
    list_.RedrawFlag(false);
    list_.ImageIndex(2, 1);
    EXPECT_EQ(bench_.Range(), stale);
    ListBench other(ListBench::kWithImages);
    other.AddMany(10);
    other.list->Height(31);
    other.list->Enabled(true);
    other.list->ImageIndex(2, 1);
    EXPECT_EQ(other.Range(), (std::pair<Long, Long>{0, 1}));
}

TEST_F(JListImages, PicturesAreCountedInOrderOfAdditionAndRemovedAlone) {
    bench_.Add({u"a"});
    list_.AddImage(nullptr);
    list_.AddImage(nullptr);
    EXPECT_EQ(list_.ImageCount(), 2);
    list_.ImageIndex(0, 1);
    list_.RemoveImages();
    EXPECT_EQ(list_.ImageCount(), 0);
    EXPECT_EQ(list_.ImageIndex(0), 1);
}

}  // namespace
}  // namespace sarnel

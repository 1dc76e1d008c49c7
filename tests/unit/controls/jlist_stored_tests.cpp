// Stored properties, as a window's layout hands them to a list.
#include <gtest/gtest.h>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;

TEST(JListStoredProperties, WhatIsNotStoredIsAtItsDefault) {
    const ListBench bench({281, 181}, JListStored());
    const JList& list = *bench.list;
    EXPECT_TRUE(list.Sorted());
    EXPECT_TRUE(list.SortedLoaded());
    EXPECT_TRUE(list.ShowNumeric());
    EXPECT_TRUE(list.ShowSelectRect());
    EXPECT_TRUE(list.Enabled());
    EXPECT_TRUE(list.RedrawFlag());
    EXPECT_FALSE(list.ShowItemImages());
    EXPECT_FALSE(list.DragEnabled());
    EXPECT_EQ(list.ItemImageSize(), 0);
    EXPECT_EQ(list.ListIndex(), 0);
    EXPECT_EQ(list.ListCurrent(), -1);
    EXPECT_EQ(list.newIndex(), -1);
    EXPECT_EQ(list.SelCount(), 0);
    EXPECT_EQ(list.TopIndex(), 0);
    EXPECT_EQ(list.BackColor(), 6316128);
    EXPECT_EQ(list.FocusRectColor(), 0);
    EXPECT_EQ(list.SelColor1(), 6316128);
    EXPECT_EQ(list.SelColor2(), 14737632);
    EXPECT_EQ(list.SelTextColor(), 0);
    EXPECT_EQ(list.TextColor(), 0);
    EXPECT_EQ(list.ThumbBorderColor(), 14737632);
    EXPECT_EQ(list.ThumbColor1(), 0);
    EXPECT_EQ(list.ThumbColor2(), 9474192);
}

TEST(JListStoredProperties, AreReadAndTheListIsMeasured) {
    JListStored stored;
    stored.listFont = {u"Lucida Sans Unicode", 8.25, true, false};
    stored.backColor = 0x112233;
    stored.enabled = false;
    stored.itemImageSize = 30;
    stored.showItemImages = true;
    stored.listCurrent = 4;
    stored.newIndex = 5;
    stored.redrawFlag = false;
    stored.selCount = 6;
    stored.showSelectRect = false;
    stored.topIndex = 7;
    stored.dragEnabled = true;
    stored.colours = {1, 2, 3, 4, 5, 6, 7, 8};
    const ListBench bench({281, 181}, stored);
    const JList& list = *bench.list;
    EXPECT_EQ(list.ListFont(), stored.listFont);
    EXPECT_EQ(list.BackColor(), 0x112233);
    EXPECT_FALSE(list.Enabled());
    EXPECT_EQ(list.RowPitch(), 30);
    EXPECT_EQ(list.VisibleRows(), 6);
    EXPECT_EQ(list.TextLeft(), 35);
    EXPECT_EQ(list.ListCurrent(), 4);
    EXPECT_EQ(list.newIndex(), 5);
    EXPECT_FALSE(list.RedrawFlag());
    EXPECT_EQ(list.SelCount(), 6);
    EXPECT_FALSE(list.ShowSelectRect());
    EXPECT_EQ(list.TopIndex(), 7);
    EXPECT_TRUE(list.DragEnabled());
    EXPECT_EQ(list.FocusRectColor(), 1);
    EXPECT_EQ(list.SelColor1(), 2);
    EXPECT_EQ(list.SelColor2(), 3);
    EXPECT_EQ(list.SelTextColor(), 4);
    EXPECT_EQ(list.TextColor(), 5);
    EXPECT_EQ(list.ThumbBorderColor(), 6);
    EXPECT_EQ(list.ThumbColor1(), 7);
    EXPECT_EQ(list.ThumbColor2(), 8);
    // The face has the colour although nothing is painted while RedrawFlag is False.
    EXPECT_EQ(bench.At(100, 100), 0x112233);
}

TEST(JListStoredProperties, SortedSortsNeitherOnLoadNorWhenSetToTrueAgain) {
    ListBench bench({281, 181}, JListStored());
    bench.list->AddItem(u"b", u"", 0);
    bench.list->AddItem(u"a", u"", 1);
    bench.list->Sorted(true);
    EXPECT_EQ(bench.Texts(), (std::vector<std::u16string>{u"b", u"a"}));
    bench.list->Sorted(false);
    bench.list->Sorted(true);
    EXPECT_EQ(bench.Texts(), (std::vector<std::u16string>{u"a", u"b"}));
}

}  // namespace
}  // namespace sarnel

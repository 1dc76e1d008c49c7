// Where rows of 14 pixels stand in a list of 181.
#include "controls/list/listlayout.h"

#include <gtest/gtest.h>

namespace sarnel {
namespace {

using platform::Long;

ListLayout PlacedLayout(Long imageSize, bool images) {
    ListLayout layout;
    layout.itemImageSize = imageSize;
    layout.rowHeight = 14;
    layout.PlaceRows(181, images);
    return layout;
}

TEST(ListLayout, RowsWithoutImages) {
    const ListLayout layout = PlacedLayout(32, false);
    EXPECT_EQ(layout.visibleRows, 12);
    EXPECT_EQ(layout.RowPitch(), 14);
    EXPECT_EQ(layout.textLeft, 3);
    EXPECT_EQ(layout.RowTop(0), 0);
    EXPECT_EQ(layout.RowTop(1), 14);
    EXPECT_EQ(layout.RowTop(11), 154);
}

TEST(ListLayout, OutsideItsTableARowIsAtTheTop) {
    const ListLayout layout = PlacedLayout(0, false);
    EXPECT_EQ(layout.RowTop(-1), 0);
    EXPECT_EQ(layout.RowTop(51), 0);
}

TEST(ListLayout, ImagesAsHighAsTheText) {
    const ListLayout layout = PlacedLayout(0, true);
    EXPECT_FALSE(layout.IsImageTaller());
    EXPECT_EQ(layout.ImageWidth(), 14);
    EXPECT_EQ(layout.RowPitch(), 14);
    EXPECT_EQ(layout.textLeft, 19);
}

TEST(ListLayout, HigherImagesMoveRowsApart) {
    const ListLayout layout = PlacedLayout(32, true);
    EXPECT_TRUE(layout.IsImageTaller());
    EXPECT_EQ(layout.RowPitch(), 32);
    EXPECT_EQ(layout.visibleRows, 5);
    EXPECT_EQ(layout.textLeft, 37);
    EXPECT_EQ(layout.RowTop(2), 64);
}

TEST(ListLayout, LowerImagesLeaveRowsAsTheyAre) {
    const ListLayout layout = PlacedLayout(8, true);
    EXPECT_FALSE(layout.IsImageTaller());
    EXPECT_EQ(layout.RowPitch(), 14);
    EXPECT_EQ(layout.textLeft, 13);
}

TEST(ListLayout, AnImageIsNoLargerThanASurface) {
    EXPECT_EQ(PlacedLayout(99999, true).ImageSide(), 32767);
    EXPECT_EQ(PlacedLayout(-99999, true).ImageSide(), -32767);
}

TEST(ListLayout, RowsWithoutHeightAreNotSeen) {
    ListLayout layout;
    layout.PlaceRows(181, false);
    EXPECT_EQ(layout.visibleRows, 0);
}

TEST(ListLayout, ARowReachesFromItsTopToTheNext) {
    const ListLayout layout = PlacedLayout(0, false);
    EXPECT_EQ(layout.RowFromY(-3.0F), 0);
    EXPECT_EQ(layout.RowFromY(0.0F), 0);
    EXPECT_EQ(layout.RowFromY(13.5F), 0);
    EXPECT_EQ(layout.RowFromY(14.0F), 1);
    EXPECT_EQ(layout.RowFromY(153.5F), 10);
    EXPECT_EQ(layout.RowFromY(154.0F), 11);
    EXPECT_EQ(layout.RowFromY(400.0F), 11);
}

}  // namespace
}  // namespace sarnel

// The thumb of a list of 181 pixels that shows 12 rows.
#include "controls/list/listthumb.h"

#include <gtest/gtest.h>

namespace sarnel {
namespace {

using platform::Long;

ListThumb ThumbOfHeight(Long height) {
    ListThumb thumb;
    thumb.barHeight = 181;
    thumb.height = height;
    return thumb;
}

TEST(ListThumb, IsAsHighAsThePartOfTheRowsOnShowAndOdd) {
    ListThumb thumb = ThumbOfHeight(0);
    EXPECT_EQ(thumb.ComputeHeight(13, 12), 167);  // of 167.08
    EXPECT_EQ(thumb.ComputeHeight(24, 12), 89);   // of 90.5
    EXPECT_EQ(thumb.ComputeHeight(100, 12), 25);  // of 21.72
    EXPECT_FALSE(thumb.dirty);
}

TEST(ListThumb, WithoutRowsToScrollItStaysDirty) {
    ListThumb thumb = ThumbOfHeight(0);
    EXPECT_EQ(thumb.ComputeHeight(12, 12), -1);
    EXPECT_TRUE(thumb.dirty);
}

// A height of 71 leaves the centre 36 to 146 (36.5 and 146.5, halves to even).
TEST(ListThumb, StandsByTheFirstRow) {
    ListThumb thumb = ThumbOfHeight(71);
    EXPECT_EQ(thumb.ComputeTop(181, 30, 12, 0, 11), 0);
    EXPECT_EQ(thumb.minY, 36);
    EXPECT_EQ(thumb.maxY, 146);
    EXPECT_EQ(thumb.ComputeTop(181, 30, 12, 18, 29), 110);
    // 110 pixels for 18 rows, four of them passed: 24.44 + 36 - 35.5.
    EXPECT_EQ(thumb.ComputeTop(181, 30, 12, 4, 15), 25);
}

TEST(ListThumb, InAListLowerThanItselfItStandsAtTheTop) {
    ListThumb thumb = ThumbOfHeight(25);
    EXPECT_EQ(thumb.ComputeTop(20, 30, 1, 29, 29), 0);
}

TEST(ListThumb, RowsThatJustFitLeaveItAtTheTop) {
    ListThumb thumb = ThumbOfHeight(71);
    EXPECT_EQ(thumb.ComputeTop(181, 12, 12, 3, 14), 0);
}

TEST(ListThumb, TheRightAndTheLowerEdgeBelongToIt) {
    ListThumb thumb;
    thumb.stripRect = {274, 0, 285, 180};
    thumb.rect = {275, 40, 286, 65};
    EXPECT_FALSE(thumb.IsOn(280, 50));  // the list has no strip
    EXPECT_FALSE(thumb.IsOnTrack(280, 100));
    thumb.shown = true;
    EXPECT_TRUE(thumb.IsOn(275, 40) && thumb.IsOn(286, 65));
    EXPECT_FALSE(thumb.IsOn(286.5F, 50) || thumb.IsOn(280, 65.5F) || thumb.IsOn(274.5F, 50));
    EXPECT_TRUE(thumb.IsOnTrack(274, 0) && thumb.IsOnTrack(285, 180));
    EXPECT_FALSE(thumb.IsOnTrack(285.5F, 180) || thumb.IsOnTrack(280, 180.5F));
    EXPECT_FALSE(thumb.IsOnTrack(280, 50));
    EXPECT_TRUE(thumb.IsAbove(39.5F));
    EXPECT_FALSE(thumb.IsAbove(40));
}

}  // namespace
}  // namespace sarnel

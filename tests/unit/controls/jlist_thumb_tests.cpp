// The scroll strip's arithmetic, worked out by hand. A row is 15 pixels high.
#include <gtest/gtest.h>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using platform::Rect;
using support::ListBench;
using support::Unsorted;

class JListThumb : public ::testing::Test {
  protected:
    ListBench bench_{{281, 181}, Unsorted()};  // 12 rows fit
    JList& list_ = *bench_.list;
};

// Height of the thumb once the list has `rows` rows.
Long ThumbHeight(platform::Size size, Long rows) {
    ListBench bench(size, Unsorted());
    bench.list->RedrawFlag(false);
    bench.AddMany(rows);
    bench.list->RedrawFlag(true);
    return bench.list->Thumb().height;
}

TEST_F(JListThumb, ItsHeightIsThePartOnShowMadeOddAndAtLeast25) {
    EXPECT_EQ(ThumbHeight({281, 181}, 24), 89);  // 90.5, cut to 90
    EXPECT_EQ(ThumbHeight({281, 181}, 80), 27);  // 27.15
    EXPECT_EQ(ThumbHeight({281, 181}, 83), 25);  // 26.2, cut to 26
    EXPECT_EQ(ThumbHeight({281, 181}, 84), 25);  // 25.9
    EXPECT_EQ(ThumbHeight({281, 181}, 87), 25);  // 24.97
    EXPECT_EQ(ThumbHeight({281, 181}, 5000), 25);
}

TEST_F(JListThumb, ThePartIsATermOf32Bits) {
    // 10 of 12 rows are 0.83333331 in 32 bits, times 150 just below 125.
    EXPECT_EQ(ThumbHeight({281, 150}, 12), 123);
}

TEST_F(JListThumb, AControlLowerThanTheLeastThumbHasItAtTheTop) {
    ListBench bench({281, 20}, Unsorted());
    bench.AddMany(3);
    bench.list->DisplayFrom(2);
    bench.list->DisplayList();
    EXPECT_EQ(bench.list->Thumb().rect, (Rect{269, 0, 280, 25}));
}

TEST_F(JListThumb, AListThatFitsKeepsItsThumbDirty) {
    bench_.AddMany(12);
    EXPECT_TRUE(list_.ThumbDirty());
    EXPECT_FALSE(list_.ScrollBarShown());
    list_.ThumbColor1(0);  // draws a strip, and thereby asks for the height
    EXPECT_EQ(list_.Thumb().height, -1);
    EXPECT_TRUE(list_.ThumbDirty());
    bench_.AddMany(1);
    EXPECT_FALSE(list_.ThumbDirty());
    EXPECT_TRUE(list_.ScrollBarShown());
    EXPECT_EQ(list_.Thumb().height, 167);  // 167.08
}

TEST_F(JListThumb, ItsTopFollowsTheFirstRowBetweenTheEnds) {
    list_.RedrawFlag(false);
    bench_.AddMany(24);
    list_.RedrawFlag(true);
    list_.DisplayList();
    EXPECT_EQ(list_.Thumb().minY, 46);   // 45.5 to the even neighbour
    EXPECT_EQ(list_.Thumb().maxY, 138);  // 137.5
    EXPECT_EQ(list_.Thumb().top, 0);
    list_.DisplayFrom(5);
    EXPECT_EQ(list_.Thumb().top, 40);  // 92 / 12 * 5 + 46 - 44.5 = 39.83
    list_.DisplayFrom(11);
    EXPECT_EQ(list_.Thumb().top, 86);  // 84.33 + 1.5
    list_.DisplayFrom(12);
    EXPECT_EQ(list_.Thumb().top, 92);
    EXPECT_EQ(list_.Thumb().rect, (Rect{269, 92, 280, 181}));
    EXPECT_EQ(list_.Thumb().stripRect, (Rect{268, 0, 279, 180}));
}

TEST_F(JListThumb, AfterAChangeOfRowsItsTopIsRightWithTheSecondRepaint) {
    bench_.AddMany(24);
    list_.DisplayFrom(12);
    list_.DisplayList();
    list_.RemoveItem(23);
    // 12 / 23 of 181 are 94.4, made 93; the top still counts with 89.
    EXPECT_EQ(list_.Thumb().rect, (Rect{269, 92, 280, 185}));
    list_.DisplayList();
    EXPECT_EQ(list_.Thumb().rect, (Rect{269, 88, 280, 181}));
}

TEST_F(JListThumb, HeldItKeepsItsDistanceToThePointerWithinTheStrip) {
    bench_.AddMany(24);
    bench_.MoveTo(270, 60);
    list_.DisplayList(20);
    EXPECT_EQ(list_.Thumb().rect, (Rect{269, 40, 280, 129}));
    list_.DisplayList(20.5F);  // 39.5 goes to the even neighbour
    EXPECT_EQ(list_.Thumb().rect.top, 40);
    list_.DisplayList(-1);
    EXPECT_EQ(list_.Thumb().rect.top, 0);
    bench_.MoveTo(270, 5);
    list_.DisplayList(20);
    EXPECT_EQ(list_.Thumb().rect.top, 0);
    bench_.MoveTo(270, 150);
    list_.DisplayList(20);
    EXPECT_EQ(list_.Thumb().rect.top, 92);
}

TEST_F(JListThumb, ItIsARampOf12PixelsWithABorder) {
    bench_.AddMany(24);
    list_.DisplayList();
    // Inside of the border: 0x90 = 144 less 144 * i / 11, cut.
    EXPECT_EQ(bench_.At(270, 40), 0x838383);  // 144 - 13
    EXPECT_EQ(bench_.At(274, 40), 0x4F4F4F);  // 144 - 65
    EXPECT_EQ(bench_.At(279, 40), 0x0E0E0E);  // 144 - 130
    for (const Long x : {269, 280}) {
        EXPECT_EQ(bench_.At(x, 40), 0xE0E0E0);
    }
    EXPECT_EQ(bench_.At(275, 0), 0xE0E0E0);
    EXPECT_EQ(bench_.At(275, 88), 0xE0E0E0);
    EXPECT_EQ(bench_.At(275, 89), 0x606060);  // the strip below
    EXPECT_EQ(bench_.At(268, 180), 0x606060);
}

TEST_F(JListThumb, WithNoWayToScrollItStaysAtTheTop) {
    list_.ThumbColor2(0);
    EXPECT_EQ(list_.Thumb().top, 181);  // the height was still 0
    list_.ThumbColor2(0);
    EXPECT_EQ(list_.Thumb().top, 182);  // 181 less a height of -1
    bench_.AddMany(12);
    list_.ThumbColor2(0);
    EXPECT_EQ(list_.Thumb().top, 0);
}

}  // namespace
}  // namespace sarnel

// The slider's properties: where its stick stands and what its background shows.
#include "controls/jslider.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "tests/unit/support/slider_bench.h"

namespace sarnel {
namespace {

using platform::Rect;
using support::ASlider;
using support::kGreen;
using support::kRed;

TEST_F(ASlider, StartsAtZeroWithTheDefaults) {
    JSlider fresh(bench_.windows, bench_.holder.HWnd(), Rect{0, 0, 60, 9});
    EXPECT_EQ(fresh.Max(), 100);
    EXPECT_EQ(fresh.Value(), 0);
    EXPECT_EQ(fresh.StickPosition(), 0);
    EXPECT_FALSE(fresh.Style());
    EXPECT_FALSE(fresh.IsSliderMouseControled());
    EXPECT_EQ(fresh.StickMaskColor(), 0xFFFFFF);
    EXPECT_EQ(fresh.Width(), 60);
    EXPECT_EQ(fresh.Height(), 9);
}

// With a travel of 100 and a Max of 100 the stick's left edge is the value.
TEST_F(ASlider, AWriteOfValueIsCutAndPlacesTheStick) {
    const std::vector<std::pair<Long, Long>> cases{{0, 0},  {37, 37},   {100, 100},
                                                   {-5, 0}, {101, 100}, {2147483647, 100}};
    for (const auto& [written, kept] : cases) {
        slider_.Value(written);
        EXPECT_EQ(slider_.Value(), kept);
        EXPECT_EQ(slider_.StickLeft(), kept);
        EXPECT_EQ(slider_.StickTop(), 0);
    }
    EXPECT_EQ(bench_.Events(), Events{});
}

// 100 x 1/8 = 12.5, 3/8 = 37.5, 5/8 = 62.5: halves go to the even neighbour.
TEST_F(ASlider, HalfAPixelGoesToTheEvenOne) {
    slider_.Max(8);
    const std::vector<std::pair<Long, Long>> cases{{1, 12}, {3, 38}, {5, 62}, {7, 88}, {4, 50}};
    for (const auto& [value, left] : cases) {
        slider_.Value(value);
        EXPECT_EQ(slider_.StickLeft(), left) << value;
    }
}

TEST_F(ASlider, AMaxBelowTheValueLeavesItUntilItIsWrittenAgain) {
    slider_.Value(80);
    slider_.Max(40);
    EXPECT_EQ(slider_.Value(), 80);
    EXPECT_EQ(slider_.StickLeft(), 200);  // twice the travel
    slider_.Value(80);
    EXPECT_EQ(slider_.Value(), 40);
    EXPECT_EQ(slider_.StickLeft(), 100);
}

TEST_F(ASlider, AMaxOfZeroLeavesTheStickWhereItIs) {
    slider_.Value(30);
    slider_.Max(0);
    EXPECT_EQ(slider_.StickLeft(), 30);
    slider_.Value(5);
    EXPECT_EQ(slider_.Value(), 0);
    EXPECT_EQ(slider_.StickLeft(), 30);
}

// A Max below 0 is the upper limit all the same, and the far end.
TEST_F(ASlider, AMaxBelowZeroIsTheLimit) {
    slider_.Max(-10);
    slider_.Value(3);
    EXPECT_EQ(slider_.Value(), -10);
    EXPECT_EQ(slider_.StickLeft(), 100);
}

// Places pass through 16 bits: 32767 is the last one that the stick goes to.
TEST_F(ASlider, APlaceBeyond16BitsLeavesTheStickWhereItIs) {
    slider_.Width(40010);
    slider_.Max(40000);
    slider_.Value(32767);
    EXPECT_EQ(slider_.StickLeft(), 32767);
    slider_.Value(32768);
    EXPECT_EQ(slider_.Value(), 32768);
    EXPECT_EQ(slider_.StickLeft(), 32767);
    slider_.Value(7);
    EXPECT_EQ(slider_.StickLeft(), 7);
}

TEST_F(ASlider, WritingStickPositionPutsTheStickToTheNearEnd) {
    slider_.Value(60);
    slider_.StickPosition(3);
    EXPECT_EQ(slider_.StickLeft(), 0);
    EXPECT_EQ(slider_.StickTop(), 3);
    slider_.Refresh();
    EXPECT_EQ(slider_.StickLeft(), 0);
    slider_.Value(60);
    EXPECT_EQ(slider_.StickLeft(), 60);
    EXPECT_EQ(slider_.StickTop(), 3);
}

TEST_F(ASlider, IsAsHighAsHalfItsPictureWhateverItsContainerSays) {
    EXPECT_EQ(slider_.Height(), 10);
    slider_.Value(60);
    slider_.Height(0);
    EXPECT_EQ(slider_.Height(), 10);
    EXPECT_EQ(slider_.Width(), 110);
    EXPECT_EQ(slider_.StickLeft(), 60);
}

// Only another size in the end is a change of size.
TEST_F(ASlider, ASizeThatItCorrectsToTheFormerLeavesTheStickAtTheNearEnd) {
    slider_.Value(60);
    slider_.StickPosition(0);
    slider_.Move(5, 5, 110, 0);
    EXPECT_EQ(slider_.Height(), 10);
    EXPECT_EQ(slider_.StickLeft(), 0);
    slider_.Width(60);  // a travel of 50
    EXPECT_EQ(slider_.StickLeft(), 30);
}

TEST_F(ASlider, ShowingItPlacesTheStick) {
    slider_.Value(60);
    slider_.StickPosition(0);
    slider_.Visible(false);
    EXPECT_EQ(slider_.StickLeft(), 0);
    slider_.Visible(true);
    EXPECT_EQ(slider_.StickLeft(), 60);
}

TEST_F(ASlider, DrawsTheHalfOfItsState) {
    EXPECT_EQ(slider_.Face().GetPixel({109, 9}), kRed);
    EXPECT_TRUE(slider_.StickVisible());
    slider_.Enabled(false);
    EXPECT_FALSE(slider_.Enabled());
    EXPECT_EQ(slider_.Face().GetPixel({109, 0}), kGreen);
    EXPECT_FALSE(slider_.StickVisible());
    slider_.Value(10);
    EXPECT_FALSE(slider_.StickVisible());
    EXPECT_EQ(slider_.StickLeft(), 10);
    slider_.Enabled(true);
    EXPECT_EQ(slider_.Face().GetPixel({0, 9}), kRed);
    EXPECT_TRUE(slider_.StickVisible());
}

TEST_F(ASlider, AVerticalOneHasItsHalvesSideBySide) {
    MakeVertical();
    EXPECT_EQ(slider_.Width(), 10);
    EXPECT_EQ(slider_.Height(), 110);
    EXPECT_EQ(slider_.Face().GetPixel({9, 109}), kRed);
    slider_.Enabled(false);
    EXPECT_EQ(slider_.Face().GetPixel({0, 0}), kGreen);
    slider_.Enabled(true);
    slider_.StickPosition(2);
    EXPECT_EQ(slider_.StickLeft(), 2);
    EXPECT_EQ(slider_.StickTop(), 0);
    slider_.Value(25);
    EXPECT_EQ(slider_.StickLeft(), 2);
    EXPECT_EQ(slider_.StickTop(), 25);
}

TEST_F(ASlider, WritingStylePutsTheStickToTheNearEnd) {
    slider_.Value(60);
    slider_.Style(false);
    EXPECT_EQ(slider_.StickLeft(), 0);
}

// 7 rows: each half is 3.5 high, and the slider rounds that to the even 4.
TEST_F(ASlider, AnOddPictureIsHalvedBetweenPixels) {
    slider_.Picture(support::PictureOfColumn({1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(slider_.Height(), 4);
    EXPECT_EQ(slider_.Face().GetPixel({0, 3}), 4);  // the middle of the last quarter: 3.06
    slider_.Enabled(false);
    EXPECT_EQ(slider_.Face().GetPixel({0, 0}), 4);  // 3.5 + 0.44 = 3.94
    EXPECT_EQ(slider_.Face().GetPixel({0, 3}), 7);
}

TEST_F(ASlider, WithoutAPictureItKeepsItsSizeAndDrawsNothing) {
    slider_.Picture(nullptr);
    slider_.Move(0, 0, 60, 33);
    EXPECT_EQ(slider_.Height(), 33);
    slider_.Picture(std::make_shared<platform::Surface>());
    slider_.Height(44);
    EXPECT_EQ(slider_.Height(), 44);
    slider_.Value(50);
    EXPECT_EQ(slider_.StickLeft(), 25);  // half of a travel of 50
}

// The other way round than a button's: white is transparent in the mask of the stick.
TEST_F(ASlider, ItsStickIsWhereTheMaskIsNotWhite) {
    slider_.StickMaskPicture(support::MaskOf({"#.", ".#"}));
    const auto onStick = [&](Long x, Long y) {
        return bench_.windows.WindowFromPoint({20 + x, 30 + y}) != slider_.HWnd();
    };
    EXPECT_FALSE(onStick(0, 0));
    EXPECT_TRUE(onStick(1, 0));
    slider_.StickMaskColor(0);
    EXPECT_TRUE(onStick(0, 0));
    EXPECT_FALSE(onStick(1, 0));
}

TEST_F(ASlider, ACopyIsHiddenAndHasTheSameProperties) {
    MakeVertical();
    slider_.Max(40);
    slider_.StickPosition(2);
    slider_.Value(9);
    slider_.Enabled(false);
    JSlider copy(bench_.windows, bench_.holder.HWnd(), {});
    copy.CopyFrom(slider_);
    EXPECT_FALSE(copy.Visible());
    EXPECT_FALSE(copy.Enabled());
    EXPECT_TRUE(copy.Style());
    EXPECT_EQ(copy.Picture(), slider_.Picture());
    EXPECT_EQ(copy.StickPicture(), slider_.StickPicture());
    EXPECT_EQ(copy.StickMaskPicture(), slider_.StickMaskPicture());
    EXPECT_EQ(copy.Max(), 40);
    EXPECT_EQ(copy.Value(), 9);
    EXPECT_EQ(copy.StickPosition(), 2);
    EXPECT_EQ(copy.Height(), 110);
}

}  // namespace
}  // namespace sarnel

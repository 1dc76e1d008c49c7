// What rows are drawn with: gradients, tiles and marks.
#include <gtest/gtest.h>

#include <memory>

#include "menus/jpopupmenu.h"
#include "platform/headless/headless_driver.h"
#include "platform/menus/menu_mark.h"

namespace sarnel {
namespace {

using namespace platform;
using Longs = std::vector<Long>;

// Red from 200 at the near end to 100 at the far end over 10 pixels, in bands of 3 from the far
// end: 100, then 100 + 0 (the factor runs behind), 100 + 3/10 x 100, 100 + 6/10 x 100 for the last
// pixel.
TEST(Gradients, RunInBandsFromTheFarEndOneStepBehind) {
    Surface surface({12, 1});
    surface.FillRect(surface.Bounds(), 0xFFFFFF);
    GradientFill(surface, {1, 0, 11, 1}, 200, 100, false);
    Longs red;
    for (Long x = 0; x < 12; ++x) {
        red.push_back(surface.GetPixel({x, 0}));
    }
    EXPECT_EQ(red, (Longs{0xFFFFFF, 160, 130, 130, 130, 100, 100, 100, 100, 100, 100, 0xFFFFFF}));
}

TEST(Gradients, RunUpwardsIfVertical) {
    Surface surface({1, 7});
    GradientFill(surface, surface.Bounds(), 0x070000, 0, true);
    Longs blue;
    for (Long y = 0; y < 7; ++y) {
        blue.push_back(surface.GetPixel({0, y}) >> 16);
    }
    // Bands of 3: 0, 0, and 3/7 of 7 for the one pixel that is left.
    EXPECT_EQ(blue, (Longs{3, 0, 0, 0, 0, 0, 0}));
}

TEST(Gradients, RoundHalvesToTheEvenNeighbour) {
    // Over 12 pixels the third band has the factor 1/4: 2/4 is 0.5 and becomes 0, 6/4 becomes 2.
    Surface surface({12, 1});
    GradientFill(surface, surface.Bounds(), 0x000602, 0, false);
    EXPECT_EQ(surface.GetPixel({5, 0}), 0x000200);
    // The fourth: 2/4 of 2 is 1, of 6 is 3.
    EXPECT_EQ(surface.GetPixel({2, 0}), 0x000301);
}

TEST(Gradients, OfWideRowsHaveWiderBands) {
    Surface surface({1020, 1});  // 1020 / 255 = 4
    GradientFill(surface, surface.Bounds(), 255, 0, false);
    EXPECT_EQ(surface.GetPixel({1012, 0}), 0);  // the second band
    EXPECT_EQ(surface.GetPixel({1011, 0}), 1);  // 4/1020 of 255
    EXPECT_EQ(surface.GetPixel({1008, 0}), 1);
    EXPECT_EQ(surface.GetPixel({1007, 0}), 2);
    EXPECT_EQ(surface.GetPixel({0, 0}), 253);  // the 255th: 253 times 4/1020 of 255
}

TEST(Gradients, OfNothingDrawNothing) {
    Surface surface({4, 4});
    GradientFill(surface, {2, 2, 2, 4}, 1, 2, false);
    GradientFill(surface, {3, 2, 1, 4}, 1, 2, false);
    EXPECT_EQ(surface.GetPixel({2, 2}), 0);
}

// A picture of 3 x 2 whose points tell their place: 1 to 6.
Surface Numbered() {
    Surface picture({3, 2});
    for (Long y = 0; y < 2; ++y) {
        for (Long x = 0; x < 3; ++x) {
            picture.SetPixel({x, y}, 1 + x + 3 * y);
        }
    }
    return picture;
}

TEST(Tiles, MeetAtTheOriginOfTheSurfaceWhateverTheArea) {
    Surface surface({9, 7});
    TileArea(surface, {2, 1, 8, 6}, Numbered());
    for (Long y = 0; y < 7; ++y) {
        for (Long x = 0; x < 9; ++x) {
            const bool inside = x >= 2 && x < 8 && y >= 1 && y < 6;
            EXPECT_EQ(surface.GetPixel({x, y}), inside ? 1 + x % 3 + 3 * (y % 2) : 0) << x << y;
        }
    }
}

TEST(Tiles, AreCutWhereTheAreaIsSmallerThanThePicture) {
    Surface surface({3, 2});
    TileArea(surface, {1, 1, 2, 2}, Numbered());
    EXPECT_EQ(surface.GetPixel({1, 1}), 5);
    EXPECT_EQ(surface.GetPixel({2, 1}), 0);
    TileArea(surface, surface.Bounds(), Surface());
    EXPECT_EQ(surface.GetPixel({1, 1}), 5);
}

TEST(MenuMarks, StandInTheMiddleInTheGivenColour) {
    // 7 x 7 in 18 x 20: from 5,6 on.
    Surface surface({30, 30});
    DrawMenuMark(surface, {4, 2, 22, 22}, MenuMark::kBullet, 0x112233);
    Long inked = 0;
    for (Long y = 0; y < 30; ++y) {
        for (Long x = 0; x < 30; ++x) {
            inked += surface.GetPixel({x, y}) == 0x112233 ? 1 : 0;
        }
    }
    EXPECT_EQ(inked, 3 + 5 + 5 + 5 + 3);
    EXPECT_EQ(surface.GetPixel({4 + 5 + 3, 2 + 6 + 3}), 0x112233);
    EXPECT_EQ(surface.GetPixel({4 + 5, 2 + 6}), 0);
    Surface check({18, 18});
    DrawMenuMark(check, check.Bounds(), MenuMark::kCheck, 7);
    EXPECT_EQ(check.GetPixel({5 + 6, 5}), 7);      // the long stroke's end
    EXPECT_EQ(check.GetPixel({5 + 2, 5 + 6}), 7);  // where the two meet
    EXPECT_EQ(check.GetPixel({5 + 3, 5 + 1}), 0);
}

TEST(MenuMarks, GrowWithTheRow) {
    Surface surface({36, 36});
    DrawMenuMark(surface, surface.Bounds(), MenuMark::kCheck, 7);
    EXPECT_EQ(surface.GetPixel({11 + 12, 11}), 7);  // 14 x 14 from 11 on, in dots of 2
    EXPECT_EQ(surface.GetPixel({11 + 13, 11 + 1}), 7);
}

TEST(MenuMarks, ShareABitmapThatOnlyGrowsAndGoesWithAnInstance) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    WindowSystem windows(driver);
    const auto shared = std::make_shared<mJPopupMenu>(windows);
    auto menu = std::make_unique<JPopupMenu>(shared);
    const JPopupMenu other(shared);
    Surface surface({60, 60});
    EXPECT_EQ(shared->CheckBitmapSize(), (Size{0, 0}));
    shared->DrawCheckMark(true, surface, {0, 0, 18, 18}, 7);
    EXPECT_EQ(shared->CheckBitmapSize(), (Size{18, 18}));
    shared->DrawCheckMark(true, surface, {0, 0, 40, 40}, 7);
    EXPECT_EQ(shared->CheckBitmapSize(), (Size{40, 40}));
    shared->DrawCheckMark(false, surface, {20, 40, 38, 58}, 8);
    EXPECT_EQ(shared->CheckBitmapSize(), (Size{40, 40}));
    EXPECT_EQ(surface.GetPixel({20 + 5 + 3, 40 + 5 + 3}), 8);
    EXPECT_EQ(surface.GetPixel({20 + 5, 40 + 5}), 0);
    menu.reset();
    EXPECT_EQ(shared->CheckBitmapSize(), (Size{0, 0}));
}

}  // namespace
}  // namespace sarnel

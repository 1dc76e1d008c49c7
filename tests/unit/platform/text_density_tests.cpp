// Text on surfaces that are finer than their coordinates. In the fixed-width driver each unit but a
// blank is a block that fills the columns 1 to 4 and the rows 3 to 9 of its 6 x 13 pixels, at every
// density.
#include <gtest/gtest.h>

#include <string>

#include "platform/drawing/text_drawing.h"
#include "tests/unit/support/text_watch.h"

namespace platform {
namespace {

constexpr Pixel kStoredInk = 1 << 16;  // the colour 1 as it is stored

class TextDensityTest : public ::testing::TestWithParam<Long> {
  protected:
    /// The box around all stored pixels that were drawn in colour 1 on a fresh surface.
    Rect Inked(std::u16string_view text, const Rect& rect, Long format, Size size = {100, 60}) {
        Surface surface(size, density_);
        drawing_.Draw(surface, font_, text, rect, format, 1);
        return Inked(surface);
    }
    static Rect Inked(const Surface& surface) {
        Rect inked;
        const Size stored = surface.StoredSize();
        for (Long y = 0; y < stored.height; ++y) {
            for (Long x = 0; x < stored.width; ++x) {
                if (surface.Row(y)[x] == kStoredInk) {
                    inked = Unite(inked, {x, y, x + 1, y + 1});
                }
            }
        }
        return inked;
    }
    /// A rectangle of units.
    Rect Units(const Rect& rect) const {
        return {rect.left * density_, rect.top * density_, rect.right * density_,
                rect.bottom * density_};
    }

    Long density_ = GetParam();
    TextWatch driver_;
    TextDrawing drawing_{driver_};
    Font font_;
};

INSTANTIATE_TEST_SUITE_P(Densities, TextDensityTest, testing::Values(1, 2, 3, 4));

TEST_P(TextDensityTest, ALineStandsWhereItDoesAtOne) {
    EXPECT_EQ(Inked(u"ab", {10, 20, 60, 50}, DT_SINGLELINE), Units({11, 23, 21, 30}));
    EXPECT_EQ(Inked(u"a\nbbb", {0, 0, 100, 60}, 0), Units({1, 3, 17, 23}));
    EXPECT_EQ(Inked(u"ab", {10, 20, 60, 50}, DT_SINGLELINE | DT_RIGHT), Units({49, 23, 59, 30}));
    EXPECT_EQ(drawing_.Calculate(font_, u"a\nbbb", {5, 6, 7, 8}, 0), (Rect{5, 6, 23, 32}));
}

TEST_P(TextDensityTest, AllOfABlockIsInk) {
    Surface surface({6, 13}, density_);
    drawing_.Draw(surface, font_, u"a", surface.Bounds(), DT_SINGLELINE, 1);
    const Rect block = Units({1, 3, 5, 10});
    for (Long y = 0; y < 13 * density_; ++y) {
        for (Long x = 0; x < 6 * density_; ++x) {
            EXPECT_EQ(surface.Row(y)[x], block.Contains({x, y}) ? kStoredInk : 0U) << x << "," << y;
        }
    }
}

TEST_P(TextDensityTest, TheMiddleIsThatOfStoredPixels) {
    // 12 units of text in 51: 39 are left over, and half of their stored pixels in front; the
    // block's first column is 1 unit further, its last one 11.
    const Long left = 10 * density_ + 39 * density_ / 2;
    // 13 in 30 leave 17.
    const Long top = 20 * density_ + 17 * density_ / 2;
    EXPECT_EQ(
        Inked(u"ab", {10, 20, 61, 50}, DT_SINGLELINE | DT_CENTER | DT_VCENTER),
        (Rect{left + density_, top + 3 * density_, left + 11 * density_, top + 10 * density_}));
}

TEST_P(TextDensityTest, TheRectangleCutsAtItsUnits) {
    EXPECT_EQ(Inked(u"abcdef", {10, 20, 28, 26}, DT_SINGLELINE), Units({11, 23, 27, 26}));
    // The last columns of the block of the third unit lie behind 26.
    EXPECT_EQ(Inked(u"abcdef", {10, 20, 26, 26}, DT_SINGLELINE), Units({11, 23, 26, 26}));
    EXPECT_EQ(Inked(u"abcdef", {10, 20, 26, 26}, DT_SINGLELINE | DT_NOCLIP),
              Units({11, 23, 45, 30}));
    EXPECT_EQ(Inked(u"abcdef", {-8, -5, 90, 50}, DT_SINGLELINE), Units({0, 0, 27, 5}));
}

TEST_P(TextDensityTest, PiecesOfALongLineMeet) {
    // The border between the first two pieces is at 2048 units, inside of a block.
    const std::u16string text(2000, u'x');
    Surface surface({100, 20}, density_);
    drawing_.Draw(surface, font_, text, {-2000, 0, 100, 20}, DT_SINGLELINE, 1);
    EXPECT_EQ(driver_.rendered, 2);
    for (Long x = 0; x < 100 * density_; ++x) {
        const Long inUnit = (2000 + x / density_) % 6;
        EXPECT_EQ(surface.Row(5 * density_)[x], inUnit >= 1 && inUnit <= 4 ? kStoredInk : 0U) << x;
    }
}

TEST_P(TextDensityTest, SeveralScreensOfRowsAreKept) {
    // Rows of 40 units of text, 240 x 13 pixels, 12 of them a screen: two screens and a title.
    const auto row = [](int i) { return std::u16string(40, static_cast<char16_t>(u'a' + i)); };
    const std::u16string title(300, u'T');
    const auto draw = [&](int first) {
        for (int i = first; i < first + 12; ++i) {
            Inked(row(i), {0, 0, 9, 9}, DT_SINGLELINE, {9, 9});
        }
        Inked(title, {0, 0, 9, 9}, DT_SINGLELINE, {9, 9});
    };
    draw(0);
    draw(12);
    EXPECT_EQ(driver_.rendered, 25);
    draw(0);
    draw(12);
    EXPECT_EQ(driver_.rendered, 25);
}

TEST_P(TextDensityTest, WhatIsKeptHasAnEnd) {
    // 300 units take 1800 x 13 pixels: 60 of them are 1.3 MiB at density 1.
    const auto draw = [&](int i) {
        const std::u16string text(300, static_cast<char16_t>(0x100 + i));
        Inked(text, {0, 0, 9, 9}, DT_SINGLELINE, {9, 9});
    };
    for (int i = 0; i < 60; ++i) {
        draw(i);
    }
    draw(0);
    EXPECT_EQ(driver_.rendered, 61);
}

TEST(TextAtADensity, IsDrawnAnewWhenTheDensityChanges) {
    const TextWatch driver;
    TextDrawing drawing(driver);
    const auto draw = [&](Long density) {
        Surface surface({20, 20}, density);
        drawing.Draw(surface, {}, u"a", surface.Bounds(), DT_SINGLELINE, 1);
        return surface.GetPixel({2, 5}) == 1 && surface.GetPixel({5, 5}) == 0;
    };
    EXPECT_TRUE(draw(1));
    EXPECT_TRUE(draw(1));
    EXPECT_EQ(driver.rendered, 1);
    EXPECT_TRUE(draw(2));
    EXPECT_TRUE(draw(2));
    EXPECT_EQ(driver.rendered, 2);
    EXPECT_TRUE(draw(1));  // nothing of it was kept: it only would have taken memory
    EXPECT_EQ(driver.rendered, 3);
}

}  // namespace
}  // namespace platform

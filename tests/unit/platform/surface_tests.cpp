// Every drawing operation, against pictures drawn by hand.
#include "platform/drawing/mask.h"
#include "platform/drawing/surface.h"

#include <gtest/gtest.h>

#include "tests/unit/support/pictures.h"

namespace platform {
namespace {

using support::Picture;
using support::Rows;
using support::RowsOf;

Surface Sized(Long width, Long height) {
    return Surface({width, height});
}

TEST(Surface, BeginsBlackInItsSize) {
    const Surface surface = Sized(3, 2);
    EXPECT_EQ(surface.GetSize(), (Size{3, 2}));
    EXPECT_EQ(surface.Bounds(), (Rect{0, 0, 3, 2}));
    EXPECT_EQ(RowsOf(surface), (Rows{"...", "..."}));
    EXPECT_FALSE(surface.IsEmpty());
    EXPECT_TRUE(Surface().IsEmpty());
    EXPECT_EQ(Sized(-3, 2).GetSize(), (Size{0, 2}));
    EXPECT_TRUE(Sized(5, 0).IsEmpty());
}

TEST(Surface, PixelsKeepTheirColourAndOutsideIsNothing) {
    Surface surface = Sized(2, 2);
    surface.SetPixel({1, 0}, 0x123456);
    EXPECT_EQ(surface.GetPixel({1, 0}), 0x123456);
    EXPECT_EQ(surface.GetPixel({0, 1}), 0);
    for (const Point outside : {Point{-1, 0}, Point{0, -1}, Point{2, 0}, Point{0, 2}}) {
        surface.SetPixel(outside, 5);
        EXPECT_EQ(surface.GetPixel(outside), -1);
    }
    EXPECT_EQ(surface.GetPixel({0, 0}), 0);
    EXPECT_EQ(surface.GetPixel({1, 1}), 0);
}

TEST(Surface, APixelLiesInMemoryWithRedAtTheTop) {
    EXPECT_EQ(PixelOf(0x0000FF), 0xFF0000U);  // red
    EXPECT_EQ(PixelOf(0x123456), 0x563412U);
    EXPECT_EQ(ColourOf(0x563412), 0x123456);
}

TEST(Surface, FillRectIsCutAtEveryEdge) {
    Surface surface = Sized(4, 3);
    surface.FillRect({1, 1, 3, 2}, 1);
    EXPECT_EQ(RowsOf(surface), (Rows{"....", ".11.", "...."}));
    surface.FillRect({-5, -5, 1, 1}, 2);
    surface.FillRect({3, 2, 99, 99}, 3);
    EXPECT_EQ(RowsOf(surface), (Rows{"2...", ".11.", "...3"}));
    surface.FillRect({2, 0, 2, 3}, 4);  // empty
    surface.FillRect({3, 0, 1, 3}, 4);  // turned around
    surface.FillRect({10, 0, 12, 3}, 4);
    EXPECT_EQ(RowsOf(surface), (Rows{"2...", ".11.", "...3"}));
}

TEST(Surface, ResizeKeepsTheTopLeftAndFillsTheRest) {
    Surface surface = Picture({"123", "456"});
    surface.Resize({4, 1}, 9);
    EXPECT_EQ(RowsOf(surface), (Rows{"1239"}));
    surface.Resize({2, 2}, 8);
    EXPECT_EQ(RowsOf(surface), (Rows{"12", "88"}));
}

TEST(SurfaceBitBlt, CopiesFromAPointOfTheSource) {
    const Surface source = Picture({"1234", "5678"});
    Surface surface = Sized(4, 3);
    surface.BitBlt({1, 1, 3, 3}, source, {1, 0});
    EXPECT_EQ(RowsOf(surface), (Rows{"....", ".23.", ".67."}));
}

TEST(SurfaceBitBlt, IsCutAtTheEdgesOfTheTarget) {
    const Surface source = Picture({"123", "456", "789"});
    Surface surface = Sized(3, 3);
    surface.BitBlt({-1, -1, 2, 2}, source, {0, 0});
    EXPECT_EQ(RowsOf(surface), (Rows{"56.", "89.", "..."}));
    surface.BitBlt({2, 2, 5, 5}, source, {0, 0});
    EXPECT_EQ(RowsOf(surface), (Rows{"56.", "89.", "..1"}));
    surface.BitBlt({3, 0, 6, 3}, source, {0, 0});
    surface.BitBlt({0, -3, 3, 0}, source, {0, 0});
    EXPECT_EQ(RowsOf(surface), (Rows{"56.", "89.", "..1"}));
}

TEST(SurfaceBitBlt, IsCutAtTheEdgesOfTheSource) {
    const Surface source = Picture({"12", "34"});
    Surface surface = Picture({"9999", "9999", "9999", "9999"});
    surface.BitBlt({0, 0, 4, 4}, source, {-1, -1});  // it lies at 1, 1
    EXPECT_EQ(RowsOf(surface), (Rows{"9999", "9129", "9349", "9999"}));
    surface.BitBlt({0, 0, 4, 4}, source, {1, 1});
    EXPECT_EQ(RowsOf(surface), (Rows{"4999", "9129", "9349", "9999"}));
    surface.BitBlt({0, 0, 4, 4}, Surface(), {0, 0});
    surface.BitBlt({0, 0, 4, 4}, source, {2, 0});
    EXPECT_EQ(RowsOf(surface), (Rows{"4999", "9129", "9349", "9999"}));
}

TEST(SurfaceBitBlt, AndKeepsTheBitsThatBothHave) {
    const Surface source = Picture({"35"});
    Surface surface = Picture({"669"});
    surface.BitBlt({0, 0, 3, 1}, source, {0, 0}, SRCAND);
    EXPECT_EQ(RowsOf(surface), (Rows{"249"}));  // 3 & 6, 5 & 6
    Surface coloured = Sized(1, 1);
    coloured.SetPixel({0, 0}, 0xF0CC3C);
    Surface mask = Sized(1, 1);
    mask.SetPixel({0, 0}, 0x0FAAFF);
    coloured.BitBlt({0, 0, 1, 1}, mask, {0, 0}, SRCAND);
    EXPECT_EQ(coloured.GetPixel({0, 0}), 0x00883C);
}

TEST(SurfaceBitBlt, CopiesWithinOneSurface) {
    Surface surface = Picture({"12..", "34.."});
    surface.BitBlt({2, 0, 4, 2}, surface, {0, 0});
    EXPECT_EQ(RowsOf(surface), (Rows{"1212", "3434"}));
}

TEST(SurfaceStretchBlt, TakesTheSourcePixelUnderEachCentre) {
    const Surface source = Picture({"123"});
    Surface wide = Sized(6, 1);
    wide.StretchBlt({0, 0, 6, 1}, source, {0, 0, 3, 1});  // centres 0.25, 0.75, 1.25 ...
    EXPECT_EQ(RowsOf(wide), (Rows{"112233"}));
    Surface narrow = Sized(2, 1);
    narrow.StretchBlt({0, 0, 2, 1}, source, {0, 0, 3, 1});  // 0.75, 2.25
    EXPECT_EQ(RowsOf(narrow), (Rows{"13"}));
    Surface five = Sized(5, 1);
    five.StretchBlt({0, 0, 5, 1}, source, {0, 0, 3, 1});  // 0.3, 0.9, 1.5, 2.1, 2.7
    EXPECT_EQ(RowsOf(five), (Rows{"11233"}));
}

TEST(SurfaceStretchBlt, StretchesBothWaysFromAPartOfTheSource) {
    const Surface source = Picture({"1234", "5678"});
    Surface surface = Sized(5, 5);
    surface.StretchBlt({1, 1, 5, 5}, source, {1, 0, 2, 2});
    EXPECT_EQ(RowsOf(surface), (Rows{".....", ".2233", ".2233", ".6677", ".6677"}));
}

TEST(SurfaceStretchBlt, ThirdsOfAPictureThatIsNoMultipleOfThree) {
    const Surface source = Picture({"1", "2", "3", "4", "5", "6", "7", "8", "9", "1"});
    Surface surface = Sized(1, 2);
    const double third = 10.0 / 3;
    // Each third has centres at a quarter and three quarters: 0.83 and 2.5, 4.17 and 5.83, 7.5 and
    // 9.17.
    surface.StretchBlt({0, 0, 1, 2}, source, {0, 0, 1, third});
    EXPECT_EQ(RowsOf(surface), (Rows{"1", "3"}));
    surface.StretchBlt({0, 0, 1, 2}, source, {0, third, 1, third});
    EXPECT_EQ(RowsOf(surface), (Rows{"5", "6"}));
    surface.StretchBlt({0, 0, 1, 2}, source, {0, 2 * third, 1, third});
    EXPECT_EQ(RowsOf(surface), (Rows{"8", "1"}));
}

TEST(SurfaceStretchBlt, IsCutAtEveryEdgeWithoutAChangeOfScale) {
    const Surface source = Picture({"12", "34"});
    Surface surface = Sized(3, 3);
    surface.StretchBlt({-2, -2, 2, 2}, source, {0, 0, 2, 2});
    EXPECT_EQ(RowsOf(surface), (Rows{"44.", "44.", "..."}));
    surface.StretchBlt({2, 2, 6, 6}, source, {0, 0, 2, 2});
    EXPECT_EQ(RowsOf(surface), (Rows{"44.", "44.", "..1"}));
}

TEST(SurfaceStretchBlt, OutsideOfTheSourceNothingIsDrawn) {
    const Surface source = Picture({"12", "34"});
    Surface surface = Picture({"9999", "9999", "9999", "9999"});
    surface.StretchBlt({0, 0, 4, 4}, source, {-1, -1, 4, 4});
    EXPECT_EQ(RowsOf(surface), (Rows{"9999", "9129", "9349", "9999"}));
    surface.StretchBlt({0, 0, 4, 4}, Surface(), {0, 0, 4, 4});
    surface.StretchBlt({2, 2, 2, 4}, source, {0, 0, 2, 2});
    surface.StretchBlt({4, 4, 0, 0}, source, {0, 0, 2, 2});
    EXPECT_EQ(RowsOf(surface), (Rows{"9999", "9129", "9349", "9999"}));
}

TEST(SurfaceOutline, IsOnePixelWideAndInside) {
    Surface surface = Sized(6, 5);
    surface.Outline({1, 1, 5, 4}, 1, PS_SOLID);
    EXPECT_EQ(RowsOf(surface), (Rows{"......", ".1111.", ".1..1.", ".1111.", "......"}));
}

TEST(SurfaceOutline, DotsAreThreePixelsAndThreePixelsApart) {
    Surface surface = Sized(9, 8);
    surface.Outline({0, 0, 9, 8}, 1, PS_DOT);
    EXPECT_EQ(RowsOf(surface), (Rows{"111...111", "1.......1", "1.......1", ".........",
                                     ".........", ".........", "1.......1", "111...111"}));
}

TEST(SurfaceOutline, ThinOnesAreLinesAndEmptyOnesNothing) {
    Surface surface = Sized(4, 4);
    surface.Outline({0, 0, 1, 3}, 1, PS_SOLID);
    surface.Outline({2, 3, 4, 4}, 2, PS_SOLID);
    surface.Outline({2, 0, 2, 3}, 3, PS_SOLID);
    surface.Outline({3, 2, 2, 1}, 3, PS_SOLID);
    EXPECT_EQ(RowsOf(surface), (Rows{"1...", "1...", "1...", "..22"}));
}

TEST(SurfaceOutline, IsCutAtEveryEdge) {
    Surface surface = Sized(3, 3);
    surface.Outline({-1, -1, 2, 2}, 1, PS_SOLID);
    EXPECT_EQ(RowsOf(surface), (Rows{".1.", "11.", "..."}));
    surface.Outline({1, 1, 9, 9}, 2, PS_SOLID);
    EXPECT_EQ(RowsOf(surface), (Rows{".1.", "122", ".2."}));
}

// Text by coverage. Of 256 parts a coverage c gives c to the colour, and one more from 128 on.

Colour Blended(Colour under, Colour ink, std::uint8_t coverage) {
    Surface surface = Sized(1, 1);
    surface.SetPixel({0, 0}, under);
    surface.BlendText({1, 1, {coverage}}, {0, 0}, surface.Bounds(), ink);
    return surface.GetPixel({0, 0});
}

TEST(SurfaceBlendText, FullAndNoCoverageAreExact) {
    for (const Colour under : {0x000000, 0xFFFFFF, 0x123456}) {
        for (const Colour ink : {0x000000, 0xFFFFFF, 0xC0FFEE}) {
            EXPECT_EQ(Blended(under, ink, 255), ink);
            EXPECT_EQ(Blended(under, ink, 0), under);
        }
    }
}

TEST(SurfaceBlendText, EachChannelIsMixedForItself) {
    EXPECT_EQ(Blended(0x000000, 0xFFFFFF, 128), 0x808080);  // 255 * 129 / 256 = 128.5
    EXPECT_EQ(Blended(0x000000, 0xFFFFFF, 127), 0x7E7E7E);  // 255 * 127 / 256 = 126.5
    EXPECT_EQ(Blended(0xFFFFFF, 0x000000, 128), 0x7E7E7E);  // 255 * 127 / 256
    EXPECT_EQ(Blended(0x0000C8, 0xC80000, 64), 0x320096);   // 200 * 64 / 256, 200 * 192 / 256
    EXPECT_EQ(Blended(0x406080, 0x406080, 77), 0x406080);
}

TEST(SurfaceBlendText, OnlyWithinTheClipAndTheSurface) {
    const TextPicture block{3, 3, std::vector<std::uint8_t>(9, 255)};
    Surface surface = Sized(4, 4);
    surface.BlendText(block, {-1, -1}, {0, 0, 4, 4}, 1);
    surface.BlendText(block, {2, 2}, {0, 0, 4, 4}, 2);
    EXPECT_EQ(RowsOf(surface), (Rows{"11..", "11..", "..22", "..22"}));
    surface.BlendText(block, {0, 0}, {1, 0, 2, 3}, 3);
    EXPECT_EQ(RowsOf(surface), (Rows{"13..", "13..", ".322", "..22"}));
    surface.BlendText(block, {0, 0}, {2, 2, 1, 1}, 4);
    surface.BlendText({}, {0, 0}, {0, 0, 4, 4}, 4);
    EXPECT_EQ(RowsOf(surface), (Rows{"13..", "13..", ".322", "..22"}));
}

TEST(SurfaceBlendText, EachRowOfThePictureLandsOnItsOwn) {
    const TextPicture picture{2, 2, {255, 0, 0, 255}};
    Surface surface = Sized(4, 3);
    surface.BlendText(picture, {1, 1}, surface.Bounds(), 7);
    EXPECT_EQ(RowsOf(surface), (Rows{"....", ".7..", "..7."}));
}

TEST(Mask, HasThePointsThatAreNotTransparent) {
    const Mask mask(Picture({"11.", ".2."}), 0);
    EXPECT_EQ(mask.GetSize(), (Size{3, 2}));
    const auto row = [&](Long y) {
        return std::vector<bool>{mask.Contains({0, y}), mask.Contains({1, y}),
                                 mask.Contains({2, y})};
    };
    EXPECT_EQ(row(0), (std::vector<bool>{true, true, false}));
    EXPECT_EQ(row(1), (std::vector<bool>{false, true, false}));
    const Mask other(Picture({"11."}), 1);
    EXPECT_FALSE(other.Contains({0, 0}));
    EXPECT_TRUE(other.Contains({2, 0}));
}

TEST(Mask, HasNothingOutsideOfItsPicture) {
    const Mask mask(Picture({"11", "11"}), 0);
    for (const Point outside : {Point{-1, 0}, Point{0, -1}, Point{2, 1}, Point{1, 2}}) {
        EXPECT_FALSE(mask.Contains(outside));
    }
    EXPECT_FALSE(Mask(Surface(), 0).Contains({0, 0}));
}

TEST(Rectangles, IntersectUniteAndOffset) {
    EXPECT_EQ(Intersect({0, 0, 4, 4}, {2, 1, 9, 3}), (Rect{2, 1, 4, 3}));
    EXPECT_TRUE(IsEmpty(Intersect({0, 0, 2, 2}, {2, 0, 4, 2})));  // they only touch
    EXPECT_TRUE(IsEmpty({3, 0, 3, 5}));
    EXPECT_TRUE(IsEmpty({0, 5, 3, 4}));
    EXPECT_FALSE(IsEmpty({0, 0, 1, 1}));
    EXPECT_EQ(Unite({0, 0, 1, 1}, {3, 2, 4, 5}), (Rect{0, 0, 4, 5}));
    EXPECT_EQ(Unite({5, 5, 5, 9}, {3, 2, 4, 5}), (Rect{3, 2, 4, 5}));
    EXPECT_EQ(Unite({3, 2, 4, 5}, {}), (Rect{3, 2, 4, 5}));
    EXPECT_EQ(Offset({1, 2, 3, 4}, {10, -2}), (Rect{11, 0, 13, 2}));
}

TEST(Surfaces, StampDrawsTheInkWhereTheSourceIsBlack) {
    Surface source({3, 2});
    source.FillRect(source.Bounds(), 0xFFFFFF);
    source.SetPixel({0, 0}, 0);
    source.SetPixel({2, 1}, 0);
    Surface surface({5, 4});
    surface.FillRect(surface.Bounds(), 9);
    surface.Stamp({1, 1, 4, 3}, source, 7);
    EXPECT_EQ(surface.GetPixel({1, 1}), 7);
    EXPECT_EQ(surface.GetPixel({2, 1}), 9);
    EXPECT_EQ(surface.GetPixel({3, 2}), 7);
    surface.Stamp({4, 3, 6, 9}, source, 8);  // cut at the surface's end
    EXPECT_EQ(surface.GetPixel({4, 3}), 8);
    surface.FillRect(surface.Bounds(), 9);
    surface.Stamp({0, 0, 2, 2}, source, 7);  // and at that of the place
    EXPECT_EQ(surface.GetPixel({0, 0}), 7);
    EXPECT_EQ(surface.GetPixel({2, 1}), 9);
}

}  // namespace
}  // namespace platform

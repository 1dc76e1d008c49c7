// Gradients worked out by hand. Pixels are 0x00RRGGBB, scans go from the bottom up.
#include "controls/list/jlist_gradient.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/unit/support/control_bench.h"

namespace sarnel {
namespace {

using platform::Colour;
using platform::Long;
using platform::Pixel;
using support::kBlue;
using support::kRed;
using Pixels = std::vector<Pixel>;

Pixels Built(Long width, Long height, Colour from, Colour to, double angle) {
    BitmapHeader header;
    Pixels pixels;
    BuildGradient(width, height, from, to, angle, header, pixels);
    return pixels;
}

TEST(Gradient, AtAngle0RunsFromLeftToRightAndCutsTowardsZero) {
    // Steps: 255 / 2 is 127.5, cut to 127; -255 / 2 is cut to -127, so blue is 255 - 127.
    EXPECT_EQ(Built(3, 1, kBlue, kRed, 0), (Pixels{0x0000FF, 0x7F0080, 0xFF0000}));
    // Two scans are alike.
    EXPECT_EQ(Built(2, 2, 0, kRed, 0), (Pixels{0, 0xFF0000, 0, 0xFF0000}));
}

TEST(Gradient, AtAngle180RunsFromRightToLeft) {
    EXPECT_EQ(Built(3, 1, kBlue, kRed, 180), (Pixels{0xFF0000, 0x80007F, 0x0000FF}));
}

TEST(Gradient, AtAngle90TheFirstColourIsAtTheBottom) {
    EXPECT_EQ(Built(1, 3, kBlue, kRed, 90), (Pixels{0x0000FF, 0x7F0080, 0xFF0000}));
    EXPECT_EQ(Built(1, 3, kBlue, kRed, 270), (Pixels{0xFF0000, 0x80007F, 0x0000FF}));
    EXPECT_EQ(Built(1, 3, kBlue, kRed, 450), Built(1, 3, kBlue, kRed, 90));
}

TEST(Gradient, DiagonalStepsArePartsOfAThousand) {
    // 2 x 2 at 45 degrees: 2.83 rounds to 3 steps, 707 parts a pixel either way, so that only the
    // far corner with 1414 parts reaches step 1, red 127.
    EXPECT_EQ(Built(2, 2, 0, kRed, 45), (Pixels{0, 0, 0, 0x7F0000}));
    // In the quarters 1 and 3 the scans are filled from the top.
    EXPECT_EQ(Built(2, 2, 0, kRed, -45), (Pixels{0, 0x7F0000, 0, 0}));
}

TEST(Gradient, ASingleStepIsTheSumOfTheHalves) {
    // 255 / 2 + 255 / 2 is 254, 255 / 2 + 0 is 127.
    EXPECT_EQ(Built(1, 1, 0x00FFFF, 0x0000FF, 0), (Pixels{0xFE7F00}));
}

TEST(Gradient, TheHeaderDescribesTheBlock) {
    BitmapHeader header;
    Pixels pixels;
    BuildGradient(5, 4, 0, kRed, 0, header, pixels);
    EXPECT_EQ(header.size, 40);
    EXPECT_EQ(header.width, 5);
    EXPECT_EQ(header.height, 4);
    EXPECT_EQ(header.planes, 1);
    EXPECT_EQ(header.bitCount, 32);
    EXPECT_EQ(pixels.size(), 20U);
}

TEST(Gradient, WithoutAPixelNothingIsBuilt) {
    BitmapHeader header{1, 2, 3, 4, 5};
    Pixels pixels{7};
    BuildGradient(0, 4, 0, kRed, 0, header, pixels);
    BuildGradient(4, 0, 0, kRed, 0, header, pixels);
    BuildGradient(-1, -1, 0, kRed, 0, header, pixels);
    EXPECT_EQ(pixels, (Pixels{7}));
    EXPECT_EQ(header.width, 2);
}

TEST(Gradient, AllAnglesFillTheirBlockWithinItsColours) {
    for (double angle = -720; angle <= 720; angle += 7.5) {
        for (const Pixel pixel : Built(13, 7, 0x400000, 0xC00000, angle)) {
            EXPECT_EQ(pixel & 0xFFFF00, 0U);
            EXPECT_LE(pixel, 0xC0U) << angle;
        }
    }
}

TEST(Gradient, ABarsPictureHasTheLastScanOnTop) {
    GradientBar bar;
    bar.Become({1, 3}, kBlue, kRed, 90);
    EXPECT_EQ(bar.Picture().GetPixel({0, 0}), kRed);
    EXPECT_EQ(bar.Picture().GetPixel({0, 2}), kBlue);
    bar.Become({1, 2}, kRed, kBlue, 90);
    EXPECT_EQ(bar.Picture().GetPixel({0, 0}), kBlue);
    EXPECT_EQ(bar.Picture().Height(), 2);
}

TEST(Gradient, ABarOfAFinerSurfaceHasAStepForEachStoredPixel) {
    platform::Surface::DensityInForce(2);
    GradientBar bar;
    bar.Become({2, 1}, 0, kRed, 0);
    platform::Surface::DensityInForce(1);
    // Four steps: 0, 85, 170 and 255 of red.
    const Pixel* const row = bar.Picture().Row(0);
    EXPECT_EQ(std::vector<Pixel>(row, row + 4),
              (std::vector<Pixel>{0, 0x550000, 0xAA0000, 0xFF0000}));
    bar.Become({0, 1}, 0, kRed, 0);
    EXPECT_EQ(bar.Picture().Width(), 2);
}

}  // namespace
}  // namespace sarnel

// What screens ask for, and how fine pictures are wanted for it.
#include <gtest/gtest.h>

#include "platform/desktop/screen_factor.h"

namespace {

using namespace platform::desktop;
using platform::Long;

TEST(ScreenFactor, PicturesAreAsFineAsTheScreenOrAMultiple) {
    EXPECT_EQ(DensityFor(0.5), 1);
    for (const Long whole : {1, 2, 3, 4, 5}) {
        EXPECT_EQ(DensityFor(whole), whole);
    }
    EXPECT_EQ(DensityFor(1.5), 3);
    EXPECT_EQ(DensityFor(2.5), 5);
    EXPECT_EQ(DensityFor(1.25), 5);
}

TEST(ScreenFactor, WhereTheyCannotBeFourIsEnough) {
    for (const double factor : {1.01, 1.75, 2.25, 3.5, 6.0}) {
        EXPECT_EQ(DensityFor(factor), 4) << factor;
    }
}

TEST(ScreenFactor, DotsAreCountedInQuartersOf96) {
    EXPECT_EQ(FactorFor(96), 1);
    EXPECT_EQ(FactorFor(107), 1);     // 1.11
    EXPECT_EQ(FactorFor(109), 1.25);  // 1.14
    EXPECT_EQ(FactorFor(144), 1.5);
    EXPECT_EQ(FactorFor(192), 2);
    EXPECT_EQ(FactorFor(72), 1);
    EXPECT_EQ(FactorFor(1000), 4);
    EXPECT_EQ(FactorFor(0), 1);
}

TEST(ScreenFactor, ResourcesNameTheDots) {
    EXPECT_EQ(DotsPerInchIn("Xft.antialias:\t1\nXft.dpi:\t144\nXft.rgba:\tnone\n"), 144);
    EXPECT_EQ(DotsPerInchIn("Xft.dpi: 120.5"), 120.5);
    EXPECT_EQ(DotsPerInchIn("myXft.dpi:\t144\n*dpi:\t99\n"), std::nullopt);
    EXPECT_EQ(DotsPerInchIn(""), std::nullopt);
    for (const char* odd : {"Xft.dpi:", "Xft.dpi:\t\n", "Xft.dpi:\tmany", "Xft.dpi:\t-96",
                            "Xft.dpi:\t0", "Xft.dpi:\tinf", "Xft.dpi:\tnan", "Xft.dpi:\t1e999"}) {
        EXPECT_EQ(DotsPerInchIn(odd), std::nullopt) << odd;
    }
}

}  // namespace

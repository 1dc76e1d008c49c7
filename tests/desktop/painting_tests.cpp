// Pictures of several densities at the factor of a screen. The values are averages worked out by
// hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "platform/desktop/painting.h"
#include "platform/desktop/screen_factor.h"

namespace {

using namespace platform;
using namespace platform::desktop;

using Values = std::vector<unsigned>;

// A row of blue values, one a stored pixel, in two equal rows of units.
Surface RowOf(const Values& values, Long density) {
    const auto stored = static_cast<Long>(values.size());
    Surface picture({stored / density, 2}, density);
    for (Long y = 0; y < picture.StoredSize().height; ++y) {
        std::copy(values.begin(), values.end(), picture.Row(y));
    }
    return picture;
}

// The blue values of the window's first row.
Values ShownRow(const Surface& picture, double factor, int width) {
    const QImage image = ShownPixels(picture, {0, 0, width, 1}, factor);
    Values values;
    for (int x = 0; x < width; ++x) {
        values.push_back(image.pixel(x, 0) & 0xFFFFFF);
    }
    return values;
}

TEST(Painting, OneToOneWhereTheDensityIsTheFactor) {
    EXPECT_EQ(ShownRow(RowOf({1, 2, 3}, 1), 1, 3), (Values{1, 2, 3}));
    EXPECT_EQ(ShownRow(RowOf({1, 2, 3, 4}, 2), 2, 4), (Values{1, 2, 3, 4}));
    EXPECT_EQ(ShownRow(RowOf({1, 2, 3, 4}, 4), 4, 4), (Values{1, 2, 3, 4}));
}

TEST(Painting, AtOneAndAHalfThreePixelsShowFour) {
    // 3/4 of 100 and 1/4 of 40; halves of 40 and 20; 1/4 of 20 and 3/4 of 80. Then the same again.
    EXPECT_EQ(ShownRow(RowOf({100, 40, 20, 80, 100, 40, 20, 80}, 2), 1.5, 6),
              (Values{85, 30, 65, 85, 30, 65}));
    EXPECT_EQ(ShownRow(RowOf({100, 40, 20, 80}, 4), 3, 3), (Values{85, 30, 65}));
}

TEST(Painting, AtOneAndAQuarterFivePixelsShowEight) {
    // 5/8 and 3/8; 2/8, 5/8 and 1/8; halves; 1/8, 5/8 and 2/8; 3/8 and 5/8.
    const Values stored{80, 160, 0, 40, 120, 200, 8, 240};
    const Values shown{110, 45, 80, 142, 153};
    EXPECT_EQ(ShownRow(RowOf(stored, 2), 1.25, 5), shown);
    EXPECT_EQ(ShownRow(RowOf(stored, 4), 2.5, 5), shown);
}

TEST(Painting, AtOneAndThreeQuartersSevenPixelsShowEight) {
    // 7/8 and 1/8, 6/8 and 2/8, and so on.
    EXPECT_EQ(ShownRow(RowOf({80, 160, 0, 40, 120, 200, 8, 240}, 2), 1.75, 7),
              (Values{90, 120, 15, 80, 170, 56, 211}));
}

TEST(Painting, EnlargesWhatIsNotFineEnough) {
    EXPECT_EQ(ShownRow(RowOf({10, 20}, 1), 3, 6), (Values{10, 10, 10, 20, 20, 20}));
    EXPECT_EQ(ShownRow(RowOf({10, 20}, 1), 1.5, 3), (Values{10, 15, 20}));
    // Of four: the second pixel begins a fifth before the second stored one does.
    EXPECT_EQ(ShownRow(RowOf({0, 100, 200, 40}, 4), 5, 5), (Values{0, 75, 150, 160, 40}));
}

TEST(Painting, AveragesWhatIsMuchFiner) {
    EXPECT_EQ(ShownRow(RowOf({10, 20, 30, 40}, 4), 1, 1), (Values{25}));
    EXPECT_EQ(ShownRow(RowOf({10, 20, 30, 40, 50, 60, 70, 80, 90}, 9), 1, 1), (Values{50}));
}

TEST(Painting, EachWayAndEachColourByItself) {
    Surface picture({1, 1}, 2);
    picture.Row(0)[0] = 0xFF0000;
    picture.Row(0)[1] = 0x00FF00;
    picture.Row(1)[0] = 0x0000FF;
    picture.Row(1)[1] = 0xFFFFFF;
    // A quarter of one colour and of white each: 2 * 255 / 4 = 127.5 goes up.
    EXPECT_EQ(ShownPixels(picture, {0, 0, 1, 1}, 1).pixel(0, 0) & 0xFFFFFF, 0x808080U);
    // At 1.5 the first shows 9/16, 3/16 and 3/16 of the three, and 1/16 of white.
    EXPECT_EQ(ShownPixels(picture, {0, 0, 1, 1}, 1.5).pixel(0, 0) & 0xFFFFFF, 0x9F4040U);
}

TEST(Painting, ItsLastPixelsGoOnBeyondIt) {
    EXPECT_EQ(ShownRow(RowOf({10, 20}, 2), 2, 4), (Values{10, 20, 20, 20}));
    // Half of the second pixel lies beyond.
    EXPECT_EQ(ShownRow(RowOf({50}, 1), 1.5, 3), (Values{50, 50, 50}));
}

TEST(Painting, APartReachesOverWholePixels) {
    EXPECT_EQ(ShownPart({1, 2, 3, 4}, 2), QRect(2, 4, 4, 4));
    EXPECT_EQ(ShownPart({1, 2, 3, 4}, 1.25), QRect(1, 2, 3, 3));  // 1.25 to 3.75, 2.5 to 5
    EXPECT_EQ(ShownPart({1, 1, 2, 2}, 1.5), QRect(1, 1, 2, 2));
}

class AtEachFactor : public testing::TestWithParam<double> {
  protected:
    Long Density() const { return DensityFor(GetParam()); }
    Surface Noise(Size size) {
        Surface picture(size, Density());
        const Size stored = picture.StoredSize();
        std::generate_n(picture.Row(0), stored.width * stored.height,
                        [this] { return static_cast<Pixel>(random_()) & 0xFFFFFF; });
        return picture;
    }
    Long UpTo(Long most) { return static_cast<Long>(random_() % static_cast<unsigned>(most)); }
    Rect RectIn(Size size) {
        const Point at{UpTo(size.width), UpTo(size.height)};
        return {at.x, at.y, at.x + 1 + UpTo(size.width - at.x),
                at.y + 1 + UpTo(size.height - at.y)};
    }
    QRect All(Size size) const {
        return {0, 0, static_cast<int>(std::lround(size.width * GetParam())),
                static_cast<int>(std::lround(size.height * GetParam()))};
    }

    std::mt19937 random_{1};
};

// Whatever has changed lies within the part that is painted, and that fits what is around it.
TEST_P(AtEachFactor, APartThatIsPaintedAnewMakesTheWindowWhole) {
    constexpr Size kSize{47, 31};
    Surface picture = Noise(kSize);
    const QRect all = All(kSize);
    QImage window = ShownPixels(picture, all, GetParam());
    for (int i = 0; i < 200; ++i) {
        const Rect changed = RectIn(kSize);
        picture.FillRect(changed, static_cast<Colour>(random_() & 0xFFFFFF));
        const QRect part = ShownPart(changed, GetParam()) & all;
        const QImage painted = ShownPixels(picture, part, GetParam());
        for (int y = 0; y < part.height(); ++y) {
            for (int x = 0; x < part.width(); ++x) {
                window.setPixel(part.left() + x, part.top() + y, painted.pixel(x, y));
            }
        }
        ASSERT_EQ(window, ShownPixels(picture, all, GetParam())) << i;
    }
}

TEST_P(AtEachFactor, APlainPictureStaysPlain) {
    Surface picture({13, 7}, Density());
    picture.FillRect(picture.Bounds(), 0x123456);
    const QImage shown = ShownPixels(picture, All(picture.GetSize()), GetParam());
    for (int y = 0; y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x) {
            ASSERT_EQ(shown.pixel(x, y) & 0xFFFFFF, 0x563412U) << x << "," << y;
        }
    }
}

std::string NameOf(const testing::TestParamInfo<double>& info) {
    return std::to_string(std::lround(info.param * 100));
}

INSTANTIATE_TEST_SUITE_P(Factors, AtEachFactor,
                         testing::Values(1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3, 3.3, 4, 5), NameOf);

}  // namespace

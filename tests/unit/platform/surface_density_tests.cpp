// Surfaces that are finer than their coordinates.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/drawing/finer_pictures.h"
#include "platform/drawing/mask.h"
#include "platform/drawing/surface.h"
#include "tests/unit/support/pictures.h"

namespace platform {
namespace {

using support::Picture;

using StoredRows = std::vector<std::vector<Pixel>>;

StoredRows StoredOf(const Surface& surface) {
    StoredRows rows;
    const Size size = surface.StoredSize();
    for (Long y = 0; y < size.height; ++y) {
        rows.emplace_back(surface.Row(y), surface.Row(y) + size.width);
    }
    return rows;
}

/// A grey of one channel's value, as it is stored.
Pixel Grey(Pixel value) {
    return value << 16 | value << 8 | value;
}

Surface Fine(std::vector<std::vector<Pixel>> values, Long density) {
    const auto length = [&](std::size_t stored) { return static_cast<Long>(stored) / density; };
    Surface surface({length(values.front().size()), length(values.size())}, density);
    for (std::size_t y = 0; y < values.size(); ++y) {
        for (std::size_t x = 0; x < values[y].size(); ++x) {
            surface.Row(static_cast<Long>(y))[x] = Grey(values[y][x]);
        }
    }
    return surface;
}

class DensityInForceTest : public ::testing::Test {
  protected:
    ~DensityInForceTest() override { Surface::DensityInForce(1); }
};

TEST_F(DensityInForceTest, HoldsForSurfacesMadeAfterIt) {
    const Surface before({2, 1});
    Surface::DensityInForce(3);
    const Surface after({2, 1});
    EXPECT_EQ(before.Density(), 1);
    EXPECT_EQ(after.Density(), 3);
    EXPECT_EQ(after.GetSize(), (Size{2, 1}));
    EXPECT_EQ(after.StoredSize(), (Size{6, 3}));
    EXPECT_EQ(after.Bounds(), (Rect{0, 0, 2, 1}));
    Surface::DensityInForce(0);
    EXPECT_EQ(Surface::DensityInForce(), 1);
}

/// What is drawn without text and gradients covers the same places at every density.
void ExpectSamePlaces(const std::function<void(Surface&)>& draw) {
    Surface plain({7, 6}, 1);
    draw(plain);
    for (const Long density : {1, 2, 3, 4}) {
        Surface fine({7, 6}, density);
        draw(fine);
        EXPECT_EQ(StoredOf(fine), StoredOf(plain.AtDensity(density))) << density;
        EXPECT_EQ(StoredOf(fine.AtDensity(1)), StoredOf(plain)) << density;
    }
}

TEST(SurfaceDensity, FillsPointsAndOutlinesCoverTheSamePlaces) {
    ExpectSamePlaces([](Surface& surface) {
        surface.FillRect({1, 1, 5, 4}, 0x112233);
        surface.FillRect({4, 3, 99, 99}, 0x445566);
        surface.SetPixel({0, 5}, 7);
        surface.SetPixel({7, 5}, 7);
        surface.Outline({1, 0, 7, 5}, 9, PS_DOT);
        surface.Outline({-2, -2, 3, 3}, 8, PS_SOLID);
    });
}

TEST(SurfaceDensity, CopiesOfPlainPicturesCoverTheSamePlaces) {
    const Surface source = Picture({"123", "456"});
    ExpectSamePlaces([&](Surface& surface) {
        surface.FillRect(surface.Bounds(), 0xFFFFFF);
        surface.BitBlt({-1, 1, 2, 3}, source, {0, 0});
        surface.BitBlt({2, 0, 9, 9}, source, {1, 0});
        surface.BitBlt({4, 3, 7, 5}, source, {0, 0}, SRCAND);
        surface.Stamp({0, 4, 3, 6}, source, 5);
    });
}

TEST(SurfaceDensity, ResizingKeepsWhatFits) {
    ExpectSamePlaces([](Surface& surface) {
        surface.FillRect({1, 1, 3, 3}, 4);
        surface.Resize({2, 9}, 6);
        surface.Resize({7, 6}, 5);
    });
}

TEST(SurfaceDensity, APointIsReadInItsMiddle) {
    const Surface two = Fine({{1, 2, 3, 4}, {5, 6, 7, 8}}, 2);
    EXPECT_EQ(two.GetPixel({0, 0}), ColourOf(Grey(6)));
    EXPECT_EQ(two.GetPixel({1, 0}), ColourOf(Grey(8)));
    EXPECT_EQ(two.GetPixel({2, 0}), -1);
    const Surface three = Fine({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, 3);
    EXPECT_EQ(three.GetPixel({0, 0}), ColourOf(Grey(5)));
}

TEST(SurfaceDensity, FinerPicturesAreAveraged) {
    const Surface four = Fine({{0, 4, 8, 8}, {0, 0, 8, 8}, {1, 1, 2, 2}, {1, 1, 2, 5}}, 4);
    EXPECT_EQ(StoredOf(four.AtDensity(2)), StoredOf(Fine({{1, 8}, {1, 3}}, 2)));  // 2.75 is 3
    EXPECT_EQ(StoredOf(four.AtDensity(1)), StoredOf(Fine({{3}}, 1)));             // 51 of 16: 3.19
    // Two of three: each takes one and a half. 0 9 | 9 18, halves weigh 1 of 3.
    const Surface three = Fine({{0, 9, 18}, {0, 9, 18}, {0, 9, 18}}, 3);
    EXPECT_EQ(StoredOf(three.AtDensity(2)), StoredOf(Fine({{3, 15}, {3, 15}}, 2)));
}

TEST(SurfaceDensity, EachChannelIsAveragedForItself) {
    Surface fine({1, 1}, 2);
    fine.Row(0)[0] = 0xFF0000;
    fine.Row(0)[1] = 0x00FF00;
    fine.Row(1)[0] = 0x0000FF;
    fine.Row(1)[1] = 0xFF8040;
    EXPECT_EQ(fine.AtDensity(1).Row(0)[0], 0x806050U);  // 510, 383 and 319, by 4
}

TEST(SurfaceDensity, CopiesOfFinerPicturesTakeTheirOwnParts) {
    const Surface fine = Fine({{1, 2, 3, 4}, {5, 6, 7, 8}}, 2);
    Surface same({1, 1}, 2);
    same.BitBlt({0, 0, 1, 1}, fine, {1, 0});
    EXPECT_EQ(StoredOf(same), StoredOf(Fine({{3, 4}, {7, 8}}, 2)));
    Surface plain({1, 1}, 1);
    plain.BitBlt({0, 0, 1, 1}, fine, {1, 0});
    EXPECT_EQ(StoredOf(plain), StoredOf(Fine({{6}}, 1)));  // 22 by 4 is 5.5
    Surface finest({1, 1}, 4);
    finest.BitBlt({-1, 0, 1, 1}, fine, {0, 0});
    EXPECT_EQ(StoredOf(finest),
              StoredOf(Fine({{3, 3, 4, 4}, {3, 3, 4, 4}, {7, 7, 8, 8}, {7, 7, 8, 8}}, 4)));
}

TEST(SurfaceDensity, AStampTakesWhatLiesInTheMiddle) {
    constexpr Pixel w = 255;
    const Surface fine = Fine({{w, 0, 0, 0}, {w, 0, 0, w}, {w, w, w, w}, {w, w, 0, w}}, 4);
    Surface surface({1, 1}, 2);
    surface.Stamp({0, 0, 1, 1}, fine, 0x10101);
    EXPECT_EQ(StoredOf(surface), StoredOf(Fine({{1, 0}, {0, 0}}, 2)));
}

TEST(SurfaceDensity, AStampMixesForGreys) {
    Surface surface({4, 1}, 1);
    surface.FillRect(surface.Bounds(), 0xC8C8C8);  // 200
    surface.Stamp(surface.Bounds(), Fine({{0, 51, 204, 255}}, 1), 0);
    // Covered by 255, 204, 51 and 0 of 255: four fifths leave 40, one fifth 160. Mixing counts by
    // 256 and cuts, which takes one off the former.
    EXPECT_EQ(StoredOf(surface), StoredOf(Fine({{0, 39, 160, 200}}, 1)));
}

TEST(SurfaceDensity, AShapeIsAsSmoothAsStoredPixelsAre) {
    // All left of 0.625: of the first of two stored pixels all, of the second one column of four,
    // which is 63 of 255. Mixing cuts, and takes one off.
    const auto left = [](double x, double) { return x < 0.625; };
    Surface surface({1, 1}, 2);
    surface.FillShape(surface.Bounds(), 0xFFFFFF, left);
    EXPECT_EQ(StoredOf(surface), StoredOf(Fine({{255, 62}, {255, 62}}, 2)));
    Surface plain({2, 1}, 1);
    plain.FillShape({1, 0, 2, 1}, 0xFFFFFF, [](double x, double) { return x < 1.5; });
    EXPECT_EQ(StoredOf(plain), StoredOf(Fine({{0, 126}}, 1)));
}

TEST(SurfaceDensity, StretchingTakesThePixelUnderEachStoredCentre) {
    // Three columns on two places: at a density of 2 on four stored pixels of 0.75 columns each,
    // with centres at 0.375, 1.125, 1.875 and 2.625.
    const Surface source = Fine({{10, 20, 30}}, 1);
    Surface surface({2, 1}, 2);
    surface.StretchBlt({0, 0, 2, 1}, source, {0, 0, 3, 1});
    EXPECT_EQ(StoredOf(surface), StoredOf(Fine({{10, 20, 20, 30}, {10, 20, 20, 30}}, 2)));
    // A strip of two and a half pixels of a finer source, in its own coordinates.
    const Surface fine = Fine({{1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6}}, 2);
    Surface plain({2, 1}, 1);
    plain.StretchBlt({0, 0, 2, 1}, fine, {0.5, 0, 2, 1});  // stored 1 to 5: centres at 2 and 4
    EXPECT_EQ(StoredOf(plain), StoredOf(Fine({{3, 5}}, 1)));
}

TEST(SurfaceDensity, TextCoversStoredPixels) {
    Surface surface({2, 1}, 2);
    surface.BlendText({3, 2, {255, 0, 255, 0, 255, 255}, 2}, {0, 0}, {0, 0, 1, 1}, 0x10101);
    EXPECT_EQ(StoredOf(surface), StoredOf(Fine({{1, 0, 0, 0}, {0, 1, 0, 0}}, 2)));
    surface.BlendText({1, 1, {255}, 2}, {2, 0}, surface.Bounds(), 0x20202);
    EXPECT_EQ(StoredOf(surface), StoredOf(Fine({{1, 0, 2, 0}, {0, 1, 0, 0}}, 2)));
    surface.BlendText({1, 1, {255}, 1}, {0, 0}, surface.Bounds(), 0x30303);  // for another density
    EXPECT_EQ(StoredOf(surface), StoredOf(Fine({{1, 0, 2, 0}, {0, 1, 0, 0}}, 2)));
}

TEST(SurfaceDensity, AMaskHasThePointsThatAreThereInTheirMiddle) {
    const Mask mask(Fine({{9, 9, 0, 0}, {9, 0, 0, 9}}, 2), 0);
    EXPECT_EQ(mask.GetSize(), (Size{2, 1}));
    EXPECT_FALSE(mask.Contains({0, 0}));
    EXPECT_TRUE(mask.Contains({1, 0}));
}

// A plain picture of one place, grey 1, and finer ones of grey 2, 4 ... that know how often they
// were decoded.
struct Drawn {
    explicit Drawn(std::vector<Long> densities) {
        for (const Long density : densities) {
            finer->Add(density, [this, density] {
                ++decoded;
                auto picture = std::make_shared<Surface>(size, density);
                picture->FillRect(picture->Bounds(), ColourOf(Grey(static_cast<Pixel>(density))));
                return picture;
            });
        }
        plain.FillRect(plain.Bounds(), ColourOf(Grey(1)));
        plain.Finer(finer);
    }
    Colour DrawnOn(Long density) {
        Surface surface({1, 1}, density);
        surface.BitBlt(surface.Bounds(), plain, {0, 0});
        return surface.GetPixel({0, 0}) & 0xFF;
    }
    Size size{1, 1};
    int decoded = 0;
    std::shared_ptr<FinerPictures> finer = std::make_shared<FinerPictures>();
    Surface plain{{1, 1}, 1};
};

TEST(FinerPictures, ATargetTakesItsOwnOrTheNextFinerOrTheFinest) {
    Drawn drawn({2, 4});
    EXPECT_EQ(drawn.DrawnOn(1), 1);
    EXPECT_EQ(drawn.decoded, 0);
    EXPECT_EQ(drawn.DrawnOn(2), 2);
    EXPECT_EQ(drawn.DrawnOn(3), 4);
    EXPECT_EQ(drawn.DrawnOn(4), 4);
    EXPECT_EQ(drawn.DrawnOn(6), 4);
    EXPECT_EQ(Drawn({}).DrawnOn(2), 1);
    EXPECT_EQ(Drawn({2}).DrawnOn(4), 2);
}

TEST(FinerPictures, EachIsDecodedWhenItIsFirstDrawn) {
    Drawn drawn({2, 4});
    drawn.DrawnOn(2);
    drawn.DrawnOn(2);
    EXPECT_EQ(drawn.decoded, 1);
    EXPECT_EQ(drawn.plain.For(2).Density(), 2);
    EXPECT_EQ(drawn.plain.For(3).Density(), 3);
    EXPECT_EQ(drawn.decoded, 2);
    EXPECT_EQ(drawn.plain.For(1).Density(), 1);  // which lets the other go
    EXPECT_EQ(drawn.plain.For(3).Density(), 3);
    EXPECT_EQ(drawn.decoded, 3);
}

TEST(FinerPictures, OneOfAnotherSizeIsNone) {
    Drawn drawn({2});
    drawn.size = {2, 1};
    EXPECT_EQ(drawn.DrawnOn(2), 1);
    drawn.finer->Add(4, [] { return PictureRef(); });
    EXPECT_EQ(drawn.DrawnOn(4), 1);
}

TEST_F(DensityInForceTest, AMaskIsClickedAsThePlainOneAndDrawnAsTheFinerOne) {
    Surface::DensityInForce(2);
    Surface plain = Fine({{0, 255}}, 1);
    auto finer = std::make_shared<FinerPictures>();
    finer->Add(2, [] {
        return std::make_shared<Surface>(Fine({{0, 255, 255, 255}, {0, 0, 255, 0}}, 2));
    });
    plain.Finer(finer);
    const Mask mask(plain, 0);
    EXPECT_FALSE(mask.Contains({0, 0}));
    EXPECT_TRUE(mask.Contains({1, 0}));
    Surface face({2, 1}, 2);
    face.FillRect(face.Bounds(), 0x070707);
    Surface target({3, 1}, 2);
    mask.Copy(face, {0, 0}, {1, 0, 3, 1}, target);
    EXPECT_EQ(StoredOf(target), StoredOf(Fine({{0, 0, 0, 7, 7, 7}, {0, 0, 0, 0, 7, 0}}, 2)));
    // A face that is still coarse, and a target that is: by the plain points.
    Surface coarse({3, 1}, 1);
    mask.Copy(face, {0, 0}, {1, 0, 3, 1}, coarse);
    EXPECT_EQ(StoredOf(coarse), StoredOf(Fine({{0, 0, 7}}, 1)));
}

}  // namespace
}  // namespace platform

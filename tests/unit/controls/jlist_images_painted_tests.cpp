// Rows with images, point by point; see jlist_paint_tests.cpp for how text is drawn.
#include <gtest/gtest.h>

#include <memory>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using platform::Colour;
using support::ListBench;

constexpr Colour kGround = 0x603010;
constexpr Colour kLetters = 0x00FF00;
constexpr Colour kPicture = 0x0000FF;

JListStored StoredWithImages() {
    JListStored stored;
    stored.sorted = false;
    stored.showNumeric = false;
    stored.showItemImages = true;
    stored.backColor = kGround;
    stored.colours.text = kLetters;
    stored.colours.sel1 = stored.colours.sel2 = 0xFFFFFF;
    return stored;
}

class JListImagesPainted : public ::testing::Test {
  protected:
    JListImagesPainted() {
        platform::Surface picture({4, 4});
        picture.FillRect(picture.Bounds(), kPicture);
        list_.AddImage(std::make_shared<const platform::Surface>(picture));
        bench_.Add({u"a", u"b", u"c"});
        list_.ImageIndex(1, 0);
    }
    Colour At(Long x, Long y) const { return bench_.At(x, y); }
    /// The size, and the repaint that shows it.
    void Size(Long size) {
        list_.ItemImageSize(size);
        list_.DisplayList();
    }

    ListBench bench_{{281, 181}, StoredWithImages()};
    JList& list_ = *bench_.list;
};

TEST_F(JListImagesPainted, OfSize0AreAPixelLowerThanTheRow) {
    EXPECT_EQ(list_.TextLeft(), 20);     // 3 + 15 + 2
    EXPECT_EQ(list_.ImageColumn(), 17);  // 15 + 2
    EXPECT_EQ(list_.ImageLeft(), 2);
    EXPECT_EQ(At(1, 20), kGround);
    EXPECT_EQ(At(2, 15), kPicture);
    EXPECT_EQ(At(15, 28), kPicture);  // 14 pixels square
    EXPECT_EQ(At(16, 20), kGround);
    EXPECT_EQ(At(2, 29), kGround);
    EXPECT_EQ(At(21, 18), kLetters);
    EXPECT_EQ(At(2, 5), kGround);  // row 0 has none
}

TEST_F(JListImagesPainted, TheBarBeginsBehindTheImage) {
    list_.Selected(1, true);
    EXPECT_EQ(At(16, 15), kGround);
    EXPECT_EQ(At(17, 15), 0xFFFFFF);
    EXPECT_EQ(At(17, 29), 0xFFFFFF);
    EXPECT_EQ(At(2, 15), kPicture);
}

TEST_F(JListImagesPainted, SmallerThanTheRowTheyStandInItsMiddle) {
    Size(10);
    EXPECT_EQ(list_.RowPitch(), 15);
    EXPECT_EQ(list_.TextLeft(), 15);
    EXPECT_EQ(At(2, 16), kGround);
    EXPECT_EQ(At(2, 17), kPicture);  // (15 - 10) / 2, cut
    EXPECT_EQ(At(11, 26), kPicture);
    EXPECT_EQ(At(12, 20), kGround);
    EXPECT_EQ(At(2, 27), kGround);
}

TEST_F(JListImagesPainted, LargerThanTheRowTheyMakeThePitchAndTextStandsAQuarterDown) {
    Size(32);
    EXPECT_EQ(list_.RowPitch(), 32);
    EXPECT_EQ(list_.VisibleRows(), 5);
    EXPECT_EQ(list_.RowTop(1), 32);
    EXPECT_EQ(At(2, 32), kPicture);
    EXPECT_EQ(At(33, 63), kPicture);
    EXPECT_EQ(At(34, 50), kGround);
    EXPECT_EQ(At(38, 43), kLetters);  // 3 + 32 + 2 + 1; 32 + 8 + 3
    EXPECT_EQ(At(38, 42), kGround);
    list_.Selected(1, true);
    EXPECT_EQ(At(34, 39), kGround);
    EXPECT_EQ(At(34, 40), 0xFFFFFF);
    EXPECT_EQ(At(34, 54), 0xFFFFFF);
    EXPECT_EQ(At(34, 55), kGround);
}

TEST_F(JListImagesPainted, TheBarsQuarterIsRoundedAndTheTextsIsCut) {
    list_.Selected(1, true);
    Size(22);  // 5.5: the bar goes to 6, the text to 5
    EXPECT_EQ(At(24, 22 + 5), kGround);
    EXPECT_EQ(At(24, 22 + 6), 0xFFFFFF);
    EXPECT_EQ(At(28, 22 + 5 + 3), 0);  // 3 + 22 + 2 + 1, in SelTextColor
    EXPECT_EQ(At(28, 22 + 5 + 2), 0xFFFFFF);
    Size(18);  // 4.5: both to 4
    EXPECT_EQ(At(20, 18 + 4), 0xFFFFFF);
    EXPECT_EQ(At(20, 18 + 3), kGround);
}

TEST_F(JListImagesPainted, TheDottedRectangleStartsBehindThem) {
    list_.FocusRectColor(0x00FFFF);
    list_.ListCurrent(1);
    EXPECT_EQ(At(16, 15), kGround);
    EXPECT_EQ(At(17, 15), 0x00FFFF);
    Size(32);
    EXPECT_EQ(At(33, 40), kPicture);
    EXPECT_EQ(At(34, 40), 0x00FFFF);
    EXPECT_EQ(At(34, 39), kGround);
}

TEST_F(JListImagesPainted, AMissingPictureIsSkippedAndTheTextDrawn) {
    for (const Long index : {-1, 1, 7, -9}) {
        list_.ImageIndex(1, index);
        EXPECT_EQ(At(5, 20), kGround) << index;
        EXPECT_EQ(At(21, 18), kLetters) << index;
    }
    list_.ImageIndex(1, 0);
    EXPECT_EQ(At(5, 20), kPicture);
    list_.RemoveImages();
    EXPECT_EQ(At(5, 20), kPicture);  // nothing repaints
    list_.DisplayList();
    EXPECT_EQ(At(5, 20), kGround);
    list_.AddImage(nullptr);
    list_.DisplayList();
    EXPECT_EQ(At(21, 18), kLetters);
}

TEST_F(JListImagesPainted, EveryIndexIsAPictureOfItsOwn) {
    constexpr Colour kSecond = 0x112233;
    constexpr Colour kThird = 0x445566;
    for (const Colour colour : {kSecond, kThird}) {
        platform::Surface picture({4, 4});
        picture.FillRect(picture.Bounds(), colour);
        list_.AddImage(std::make_shared<const platform::Surface>(picture));
    }
    list_.ImageIndex(0, 2);
    list_.ImageIndex(2, 1);
    list_.DisplayList();
    EXPECT_EQ(At(5, 5), kThird);
    EXPECT_EQ(At(5, 20), kPicture);
    EXPECT_EQ(At(5, 35), kSecond);
}

TEST_F(JListImagesPainted, WithoutThemRowsMoveBack) {
    list_.ShowItemImages(false);
    EXPECT_EQ(list_.TextLeft(), 3);
    EXPECT_EQ(list_.ImageColumn(), 0);
    EXPECT_EQ(At(4, 18), kLetters);
    EXPECT_EQ(At(8, 20), kGround);
}

TEST_F(JListImagesPainted, AnySizeDoesNoHarm) {
    for (const Long size : {-1, -2147483647 - 1, 1, 180, 181, 2147483647}) {
        Size(size);
        EXPECT_EQ(list_.ItemImageSize(), size);
        list_.Selected(1, true);
        list_.ListCurrent(1);
    }
    Size(0);
    EXPECT_EQ(At(2, 15), kPicture);
}

}  // namespace
}  // namespace sarnel

// What a list paints, point by point. Text is drawn without a screen in blocks: each unit is 6 wide
// and 13 high, of which 4 x 7 from (1, 3) on are ink. A row is 15 high, its text begins at x = 3.
#include <gtest/gtest.h>

#include <string>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using platform::Colour;
using support::ListBench;

constexpr Colour kBack = 0x603010;
constexpr Colour kText = 0x00FF00;
constexpr Colour kSelText = 0x00FFFF;
constexpr Colour kDots = 0x0000FF;

JListStored Stored() {
    JListStored stored;
    stored.sorted = false;
    stored.backColor = kBack;
    stored.colours.text = kText;
    stored.colours.selText = kSelText;
    stored.colours.focusRect = kDots;
    return stored;
}

class JListPaint : public ::testing::Test {
  protected:
    Colour At(Long x, Long y) const { return bench_.At(x, y); }

    ListBench bench_{{281, 181}, Stored()};  // 12 rows fit
    JList& list_ = *bench_.list;
};

TEST_F(JListPaint, AnEmptyListIsFlat) {
    bench_.AddMany(20);
    list_.Clear();
    for (Long y = 0; y < 181; ++y) {
        for (Long x = 0; x < 281; ++x) {
            ASSERT_EQ(At(x, y), kBack) << x << ' ' << y;
        }
    }
    EXPECT_FALSE(list_.ScrollBarShown());
}

TEST_F(JListPaint, ARowIsItsNumberFromOneADotABlankAndItsText) {
    bench_.Add({u"ab", u"c"});
    // "1. ab": inked from 4, 10, not from 16 (the blank), 22 and 28.
    for (const Long x : {4, 7, 10, 13, 22, 25, 28, 31}) {
        EXPECT_EQ(At(x, 3), kText) << x;
        EXPECT_EQ(At(x, 9), kText) << x;
        EXPECT_EQ(At(x, 2), kBack) << x;
        EXPECT_EQ(At(x, 10), kBack) << x;
    }
    for (const Long x : {0, 3, 8, 9, 14, 16, 19, 21, 26, 32, 34, 280}) {
        EXPECT_EQ(At(x, 5), kBack) << x;
    }
    EXPECT_EQ(At(22, 18), kText);  // "2. c", 15 pixels below
    EXPECT_EQ(At(28, 18), kBack);
}

TEST_F(JListPaint, WithoutNumbersARowIsItsText) {
    list_.ShowNumeric(false);
    bench_.Add({u"ab"});
    EXPECT_EQ(At(4, 5), kText);
    EXPECT_EQ(At(10, 5), kText);
    EXPECT_EQ(At(16, 5), kBack);
    list_.ShowNumeric(true);
    EXPECT_EQ(At(22, 5), kBack);  // not before the next repaint
    list_.DisplayList();
    EXPECT_EQ(At(22, 5), kText);
}

TEST_F(JListPaint, NumbersGrowWithoutPadding) {
    bench_.AddMany(1000);
    list_.DisplayFrom(999);
    // "1000. r999" in the twelfth row: the blank is the sixth unit.
    EXPECT_EQ(At(28, 11 * 15 + 5), kText);
    EXPECT_EQ(At(34, 11 * 15 + 5), kBack);
    EXPECT_EQ(At(40, 11 * 15 + 5), kText);
}

TEST_F(JListPaint, LongTextIsCutAtTheRightEdgeOrAtTheStrip) {
    const std::u16string text(60, u'x');
    for (int i = 0; i < 12; ++i) {
        list_.AddItem(text, u"");
    }
    EXPECT_FALSE(list_.ScrollBarShown());
    EXPECT_EQ(At(280, 5), kText);  // (280 - 3) is 1 more than 46 units
    list_.AddItem(text, u"");
    list_.DisplayList();
    EXPECT_TRUE(list_.ScrollBarShown());
    EXPECT_EQ(list_.RightReserve(), 12);
    EXPECT_EQ(At(268, 5), kText);     // (268 - 3) is 1 more than 44 units
    EXPECT_EQ(At(269, 5), 0xE0E0E0);  // the thumb's border
}

TEST_F(JListPaint, TheRectangleComesAndGoesInBlackToo) {
    list_.FocusRectColor(0);
    bench_.AddMany(3);
    list_.ListCurrent(1);
    EXPECT_EQ(At(0, 15), 0);
    list_.ShowSelectRect(false);
    list_.DisplayList();
    EXPECT_EQ(At(0, 15), kBack);
    list_.ShowSelectRect(true);
    list_.DisplayList();
    EXPECT_EQ(At(0, 15), 0);
}

TEST_F(JListPaint, ASelectedRowHasTheGradientSqueezedIntoItsBar) {
    bench_.AddMany(3);
    list_.Selected(1, true);
    // 0x60 to 0xE0 in 281 steps: 96 + 128 * x / 280, cut.
    EXPECT_EQ(At(0, 15), 0x606060);
    EXPECT_EQ(At(140, 15), 0xA0A0A0);
    EXPECT_EQ(At(279, 29), 0xDFDFDF);
    EXPECT_EQ(At(280, 29), 0xE0E0E0);
    EXPECT_EQ(At(140, 14), kBack);
    EXPECT_EQ(At(140, 30), kBack);
    EXPECT_EQ(At(4, 20), kSelText);
    EXPECT_EQ(At(4, 5), kText);
    bench_.AddMany(10);
    list_.DisplayList();
    // 269 pixels take the pixels under their centres: 134.5 * 281 / 269 is 140.5.
    EXPECT_EQ(At(134, 15), 0xA0A0A0);
    EXPECT_EQ(At(268, 15), 0xE0E0E0);
}

TEST_F(JListPaint, NewBarColoursShowAtTheNextRepaint) {
    bench_.AddMany(1);
    list_.Selected(0, true);
    list_.SelColor1(0x0000FF);
    list_.SelColor2(0x0000FF);
    EXPECT_EQ(At(0, 0), 0x606060);
    list_.DisplayList();
    EXPECT_EQ(At(0, 0), 0x0000FF);
    EXPECT_EQ(At(280, 0), 0x0000FF);
}

TEST_F(JListPaint, TheCurrentRowHasItsTextColourOnThePlainGroundAndADottedRectangle) {
    bench_.AddMany(3);
    list_.ListCurrent(1);
    EXPECT_EQ(At(4, 20), kSelText);
    for (Long x = 0; x < 280; ++x) {
        const Colour expected = x / 3 % 2 == 0 ? kDots : kBack;
        ASSERT_EQ(At(x, 15), expected) << x;
        ASSERT_EQ(At(x, 29), expected) << x;
    }
    EXPECT_EQ(At(0, 17), kDots);
    EXPECT_EQ(At(0, 18), kBack);
    EXPECT_EQ(At(280, 17), kDots);
    EXPECT_EQ(At(140, 18), kBack);
    list_.ShowSelectRect(false);
    EXPECT_EQ(At(0, 15), kDots);
    list_.DisplayList();
    EXPECT_EQ(At(0, 15), kBack);
    EXPECT_EQ(At(4, 20), kSelText);
}

TEST_F(JListPaint, TheFirstStripOfAllClearsTheRows) {
    bench_.AddMany(12);
    EXPECT_EQ(At(4, 5), kText);
    bench_.AddMany(1);
    EXPECT_EQ(At(4, 5), kBack);
    EXPECT_EQ(At(275, 0), 0xE0E0E0);
    list_.DisplayList();
    EXPECT_EQ(At(4, 5), kText);
}

TEST_F(JListPaint, AThumbColourDrawsTheStripAtOnce) {
    bench_.AddMany(13);
    list_.DisplayList();
    list_.ThumbColor1(0x0000FF);
    EXPECT_EQ(At(279, 40) & 0xFF, 244);  // 144 + 111 * 10 / 11 of red, cut
    list_.ThumbColor2(0x0000FF);
    EXPECT_EQ(At(270, 40), 0x0000FF);
    EXPECT_EQ(At(4, 5), kText);
    list_.ThumbBorderColor(0x00FF00);
    EXPECT_EQ(At(269, 40), 0xE0E0E0);
    list_.DisplayList();
    EXPECT_EQ(At(269, 40), 0x00FF00);
}

TEST_F(JListPaint, AThumbColourSetOnAnEmptyListSparesTheRowsLater) {
    list_.ThumbColor1(0);  // the strip has its place from now on
    bench_.AddMany(13);
    EXPECT_EQ(At(4, 5), kText);
}

TEST_F(JListPaint, BackColorShowsWhenTheListIsMeasuredAgain) {
    bench_.AddMany(1);
    list_.BackColor(0x123456);
    EXPECT_EQ(At(200, 100), kBack);
    EXPECT_EQ(At(200, 5), kBack);
    list_.Enabled(true);
    EXPECT_EQ(At(4, 5), 0x123456);  // blank: the rows are back with the next repaint
    list_.DisplayList();
    EXPECT_EQ(At(4, 5), kText);
    EXPECT_EQ(At(200, 100), 0x123456);
}

TEST_F(JListPaint, CodesOfTheSystemsColoursAreTranslatedAndOthersAreWhite) {
    list_.TextColor(static_cast<Colour>(0x8000000D));
    bench_.AddMany(1);
    EXPECT_EQ(At(4, 5), 0x6A240A);
    list_.TextColor(static_cast<Colour>(0x80000099));
    list_.DisplayList();
    EXPECT_EQ(At(4, 5), 0xFFFFFF);
    // The pen takes its colour as it is.
    list_.FocusRectColor(static_cast<Colour>(0x80000005));
    list_.ListCurrent(0);
    EXPECT_EQ(At(0, 0), 0x000005);
}

TEST_F(JListPaint, ListFontLeavesOutTheTwoPixelsUntilTheListIsMeasured) {
    list_.ListFont({u"Other", 9, false, false});
    EXPECT_EQ(list_.RowHeight(), 13);
    EXPECT_EQ(list_.VisibleRows(), 13);
    EXPECT_EQ(list_.ListFont().name, u"Other");
    bench_.AddMany(2);
    EXPECT_EQ(At(4, 16), kText);  // 13 + 3
    list_.Enabled(true);
    EXPECT_EQ(list_.RowHeight(), 15);
}

TEST_F(JListPaint, RowsBehindTheTableOfRowTopsStayWhereItEnds) {
    ListBench tall({281, 900}, Stored());  // 60 rows fit, the table has 51
    tall.AddMany(60);
    EXPECT_EQ(tall.list->VisibleRows(), 60);
    EXPECT_EQ(tall.list->RowTop(50), 750);
    EXPECT_EQ(tall.At(4, 753), kText);
    EXPECT_EQ(tall.At(4, 768), kBack);
}

TEST_F(JListPaint, AResizeDoesNotMeasureRowsAgain) {
    bench_.AddMany(20);
    list_.Height(61);
    EXPECT_EQ(list_.VisibleRows(), 12);
    EXPECT_EQ(list_.Face().Height(), 61);
    EXPECT_EQ(list_.Thumb().barHeight, 61);
    list_.Enabled(true);
    EXPECT_EQ(list_.VisibleRows(), 4);
}

TEST_F(JListPaint, AWiderListErasesRowsAsFarAsTheOldGroundGoes) {
    bench_.AddMany(3);
    list_.Selected(1, true);
    list_.Width(301);
    EXPECT_EQ(At(300, 20), 0xE0E0E0);
    list_.ListIndex(1);
    list_.CaretIndex(1);
    bench_.windows.SetFocus(list_.HWnd());
    bench_.Key(38, 0, true);  // up: row 1 alone is erased
    EXPECT_EQ(At(280, 20), kBack);
    EXPECT_EQ(At(300, 20), 0xE0E0E0);
}

TEST_F(JListPaint, TextOutsideTheNarrowRangeStaysInTheRow) {
    list_.AddItem(u"\u017C\u4E16\U0001F3B5", u"");
    list_.ShowNumeric(false);
    list_.DisplayList();
    EXPECT_EQ(list_.List(0), u"\u017C\u4E16\U0001F3B5");
    EXPECT_EQ(At(22, 5), kText);  // four units
}

}  // namespace
}  // namespace sarnel

#include "controls/list/rowtext.h"

#include <gtest/gtest.h>

#include <compare>
#include <random>
#include <string>
#include <utility>

namespace sarnel {
namespace {

// One byte a unit up to U+00FF, two bytes a unit from there on.
const std::u16string kNarrow = u"Caf\u00E9 \u00FF";
const std::u16string kWide = u"Caf\u0101\xD834\xDD1E\xDCE9";

TEST(RowText, KeepsEveryUnitInEitherWidth) {
    for (const std::u16string& text :
         {std::u16string(), kNarrow, kWide, std::u16string(u"a\0b", 3), std::u16string(1, u'\0'),
          std::u16string(100'000, u'x'), std::u16string(100'000, u'\u4E00')}) {
        const RowText row(text);
        EXPECT_EQ(row.Text(), text);
        EXPECT_EQ(row.Size(), text.size());
        for (std::size_t i = 0; i < std::min<std::size_t>(text.size(), 20); ++i) {
            EXPECT_EQ(row.At(i), text[i]);
        }
    }
}

TEST(RowText, AnEmptyOneIsEmpty) {
    const RowText row;
    EXPECT_EQ(row.Text(), u"");
    EXPECT_EQ(row.Size(), 0U);
    EXPECT_TRUE(row == RowText(u""));
}

TEST(RowText, ACopyStandsByItself) {
    RowText row(kWide);
    const RowText copy = row.Copy();
    row = RowText(u"other");
    EXPECT_EQ(copy.Text(), kWide);
    EXPECT_EQ(row.Text(), u"other");
    EXPECT_EQ(RowText().Copy().Text(), u"");
    EXPECT_EQ(RowText(kNarrow).Copy().Text(), kNarrow);
}

TEST(RowText, MovingLeavesAnEmptyOneBehind) {
    RowText row(kNarrow);
    const RowText moved = std::move(row);
    EXPECT_EQ(moved.Text(), kNarrow);
    row = RowText(u"again");
    EXPECT_EQ(row.Text(), u"again");
}

TEST(RowText, OrdersByCodeUnitWhateverTheWidth) {
    // Each below the next: capitals below small letters, a prefix below the whole, U+00FF below
    // U+0100, a surrogate below U+E000 although its character lies above.
    const std::u16string rising[] = {u"",        u"A",       u"AB",           u"B",     u"a",
                                     u"a\u00FF", u"a\u0100", u"a\u0100x",     u"b",     u"\u00FF",
                                     u"\u00FFz", u"\u0100",  u"\xD834\xDD1E", u"\uE000"};
    for (const std::u16string& left : rising) {
        for (const std::u16string& right : rising) {
            const bool before = &left < &right;
            const bool same = &left == &right;
            EXPECT_EQ(RowText(left) < RowText(right), before);
            EXPECT_EQ(RowText(left) == RowText(right), same);
            EXPECT_EQ(std::is_lt(RowText(left).Compare(right)), before);
            EXPECT_EQ(std::is_eq(RowText(left).Compare(right)), same);
        }
    }
}

TEST(RowText, RandomTextsCompareAsStringsDo) {
    std::mt19937 random(3);
    const std::u16string units = u"aab\u00E9\u00FF\u0100\xDC80\xFFFF";
    const auto any = [&] {
        std::u16string text(random() % 5, u' ');
        for (char16_t& unit : text) {
            unit = units[random() % units.size()];
        }
        return text;
    };
    for (int i = 0; i < 5000; ++i) {
        const std::u16string a = any();
        const std::u16string b = any();
        ASSERT_EQ(RowText(a).Text(), a);
        ASSERT_EQ(RowText(a) < RowText(b), a < b);
        ASSERT_EQ(RowText(a) == RowText(b), a == b);
        ASSERT_EQ(std::is_gt(RowText(a).Compare(b)), a > b);
    }
}

TEST(RowText, UnitsShowsTheWidthThatIsStored) {
    EXPECT_EQ(RowText(kNarrow).Units([](const auto& units) { return sizeof(units[0]); }), 1U);
    EXPECT_EQ(RowText(kWide).Units([](const auto& units) { return sizeof(units[0]); }), 2U);
    EXPECT_EQ(RowText(u"\u00FF").Units([](const auto& units) { return UnitOf(units[0]); }),
              u'\u00FF');
}

}  // namespace
}  // namespace sarnel

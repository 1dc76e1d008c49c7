// Where lines end. In the fixed-width driver a unit is 6 pixels wide, so that 30 pixels take five.
#include "platform/drawing/text_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "platform/headless/headless_driver.h"

namespace platform {
namespace {

using Texts = std::vector<std::u16string>;

Texts Broken(std::u16string_view text, Long width) {
    const HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    Texts lines;
    for (const std::u16string_view line : BreakLines(driver, {}, text, width)) {
        lines.emplace_back(line);
    }
    return lines;
}

TEST(TextLines, EveryKindOfLineEndEndsALine) {
    EXPECT_EQ(Broken(u"a\r\nb\nc\rd", 0), (Texts{u"a", u"b", u"c", u"d"}));
    EXPECT_EQ(Broken(u"\n\r\r\n", 30), (Texts{u"", u"", u"", u""}));
}

TEST(TextLines, AnEmptyTextIsOneEmptyLineAndALastLineEndBeginsOne) {
    EXPECT_EQ(Broken(u"", 0), (Texts{u""}));
    EXPECT_EQ(Broken(u"", 30), (Texts{u""}));
    EXPECT_EQ(Broken(u"a\r\n", 30), (Texts{u"a", u""}));
}

TEST(TextLines, WithoutAWidthOnlyLineEndsBreak) {
    EXPECT_EQ(Broken(u"a long line that never ends", 0), (Texts{u"a long line that never ends"}));
}

TEST(TextLines, LinesAreBrokenBetweenWords) {
    EXPECT_EQ(Broken(u"aa bb cc", 30), (Texts{u"aa bb", u"cc"}));        // five units fit exactly
    EXPECT_EQ(Broken(u"aa bbb cc", 30), (Texts{u"aa", u"bbb", u"cc"}));  // six do not
    EXPECT_EQ(Broken(u"aa bb", 29), (Texts{u"aa", u"bb"}));
}

TEST(TextLines, TheBlanksAtABreakBelongToNoLine) {
    EXPECT_EQ(Broken(u"aaaa   bbbb", 30), (Texts{u"aaaa", u"bbbb"}));
    EXPECT_EQ(Broken(u"aaaaa bb", 30), (Texts{u"aaaaa", u"bb"}));
}

TEST(TextLines, BlanksAtTheEndMakeNoLineOfTheirOwn) {
    EXPECT_EQ(Broken(u"aaaaa   ", 30), (Texts{u"aaaaa"}));
    EXPECT_EQ(Broken(u"aaaaa   \nb", 30), (Texts{u"aaaaa", u"b"}));
    EXPECT_EQ(Broken(u"aa ", 30), (Texts{u"aa "}));
    EXPECT_EQ(Broken(u"         ", 30), (Texts{u"         "}));
}

TEST(TextLines, AWordTooLongForALineIsBrokenInside) {
    EXPECT_EQ(Broken(u"abcdefghijkl", 30), (Texts{u"abcde", u"fghij", u"kl"}));
    EXPECT_EQ(Broken(u"a bcdefghi", 30), (Texts{u"a", u"bcdef", u"ghi"}));
    EXPECT_EQ(Broken(u"abcdefg h", 30), (Texts{u"abcde", u"fg h"}));
}

TEST(TextLines, BlanksInFrontStayInFront) {
    EXPECT_EQ(Broken(u"  aa bb", 30), (Texts{u"  aa", u"bb"}));
    EXPECT_EQ(Broken(u"  aaaaa", 30), (Texts{u"  ", u"aaaaa"}));
}

TEST(TextLines, AtLeastOneCharacterGoesOnALineAndPairsStayWhole) {
    EXPECT_EQ(Broken(u"abc", 1), (Texts{u"a", u"b", u"c"}));
    const std::u16string clef = u"\U0001D11E";  // two units: 12 pixels
    EXPECT_EQ(Broken(clef + clef, 1), (Texts{clef, clef}));
    EXPECT_EQ(Broken(clef + clef + clef, 30), (Texts{clef + clef, clef}));  // not two and a half
}

TEST(TextLines, ViewsLieInTheText) {
    const HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    const std::u16string text = u"aa bb\r\ncc";
    const auto lines = BreakLines(driver, {}, text, 12);
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[1].data() - text.data(), 3);
    EXPECT_EQ(lines[2].data() - text.data(), 7);
}

// Counts what is measured. A unit is 3.5 pixels wide, so that sums of words are not exact.
class CountingDriver : public HeadlessDriver {
  public:
    CountingDriver() : HeadlessDriver(Clock::kVirtual) {}
    Size MeasureText(const Font& /*font*/, std::u16string_view text) const override {
        measured += text.size();
        return {static_cast<Long>(std::lround(3.5 * static_cast<double>(text.size()))), 13};
    }
    mutable std::size_t measured = 0;
};

TEST(TextLines, ALineNeverGetsTooLongByTheRoundingOfItsWords) {
    const CountingDriver driver;
    std::u16string text;
    for (int i = 0; i < 200; ++i) {
        text += std::u16string(static_cast<std::size_t>(1 + i % 4), u'a') + u" ";
    }
    // 100 pixels take 28 units (98), not 29 (101.5, rounded to 102).
    for (const std::u16string_view line : BreakLines(driver, {}, text, 100)) {
        EXPECT_LE(line.size(), 28U);
        EXPECT_GE(line.size(), 24U) << "another word of four would have fitted";
    }
}

// A letter is as many tenths of a pixel wide as its place in the alphabet says, and 26 more.
class UnevenDriver : public HeadlessDriver {
  public:
    UnevenDriver() : HeadlessDriver(Clock::kVirtual) {}
    Size MeasureText(const Font& /*font*/, std::u16string_view text) const override {
        Long tenths = 0;
        for (const char16_t unit : text) {
            tenths += unit == u' ' ? 27 : 26 + (unit - u'a');
        }
        return {(tenths + 5) / 10, 13};
    }
};

// The longest beginning of whole words that fits as a whole, again and again.
Texts BrokenOneByOne(const Driver& driver, std::u16string_view text, Long width) {
    Texts lines;
    while (!text.empty()) {
        std::size_t fits = 0;
        for (std::size_t end = text.find(u' '); fits < text.size();
             end = text.find(u' ', end + 1)) {
            end = std::min(end, text.size());
            if (fits > 0 && driver.MeasureText({}, text.substr(0, end)).width > width) {
                break;
            }
            fits = end;
        }
        lines.emplace_back(text.substr(0, fits));
        text.remove_prefix(std::min(fits + 1, text.size()));
    }
    return lines;
}

TEST(TextLines, TheSumOfRoundedWordsDecidesNothing) {
    const UnevenDriver driver;
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::u16string text;
        for (int word = 0; word < 60; ++word) {
            text += word > 0 ? u" " : u"";
            for (auto units = 1 + random() % 5; units > 0; --units) {
                text += static_cast<char16_t>(u'a' + random() % 26);
            }
        }
        const Long width = 40 + static_cast<Long>(random() % 40);
        Texts lines;
        for (const std::u16string_view line : BreakLines(driver, {}, text, width)) {
            lines.emplace_back(line);
        }
        ASSERT_EQ(lines, BrokenOneByOne(driver, text, width)) << round;
    }
}

TEST(TextLines, NoMoreLinesAreBrokenThanAreWanted) {
    const CountingDriver driver;
    const std::u16string text(1'000'000, u'x');
    EXPECT_EQ(BreakLines(driver, {}, text, 280, 3).size(), 3U);
    EXPECT_LT(driver.measured, 10'000U);
    EXPECT_EQ(BreakLines(driver, {}, u"a\nb\nc\nd", 0, 2).size(), 2U);
    EXPECT_EQ(BreakLines(driver, {}, u"a b\nc", 1, 3).size(), 3U);
}

// Else each line of a text that nobody can read through would be shaped before the first is shown.
TEST(TextLines, WordsFarBehindAreMeasuredByThoseInFront) {
    const CountingDriver driver;
    std::u16string text;
    while (text.size() < 2'000'000) {
        const std::u16string number = Widen(std::to_string(100'000 + text.size() / 8));
        text += u"w" + number + u" ";  // seven units each, no two the same
    }
    const auto lines = BreakLines(driver, {}, text, 280);  // ten, with their blanks, take 276.5
    EXPECT_LT(driver.measured, 300'000U);
    EXPECT_EQ(lines.front().size(), 79U);
    // Estimated, a line may end a word early; it never takes in another.
    for (const std::u16string_view line : lines) {
        ASSERT_LE(line.size(), 79U);
    }
    EXPECT_LT(lines.size(), text.size() / 80 * 5 / 4);
}

TEST(TextLines, ALineIsMeasuredByItsFirstUnits) {
    const CountingDriver driver;
    EXPECT_EQ(MeasureLine(driver, {}, std::u16string(8192, u'x')).width, 28672);  // 3.5 each
    driver.measured = 0;
    EXPECT_EQ(MeasureLine(driver, {}, std::u16string(81'920, u'x')).width, 286'720);
    EXPECT_EQ(driver.measured, 8192U);
    EXPECT_EQ(MeasureLine(driver, {}, std::u16string(8193, u'x')).height, 13);
}

TEST(TextLines, MeasuringGrowsWithTheTextOnly) {
    const std::size_t units = 2'000'000;
    const CountingDriver oneWord;
    EXPECT_EQ(BreakLines(oneWord, {}, std::u16string(units, u'x'), 280).size(), units / 80);
    EXPECT_LT(oneWord.measured, 20 * units);
    const CountingDriver words;
    std::u16string text;
    while (text.size() < units) {
        text += u"seven7 ";
    }
    BreakLines(words, {}, text, 280);
    EXPECT_LT(words.measured, 4 * units);
}

}  // namespace
}  // namespace platform

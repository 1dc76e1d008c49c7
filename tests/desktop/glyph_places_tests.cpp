// Places of glyphs in a finer size. The letters here are 10 pixels wide and blanks 5 in the plain
// size, unless a test says otherwise.
#include "platform/desktop/glyph_places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

namespace {

using platform::desktop::GlyphPlace;
using platform::desktop::LineMeasures;
using platform::desktop::PlaceGlyphs;

struct Shaped {
    std::vector<GlyphPlace> glyphs;
    LineMeasures line;
};

/// A line in which letters, and blanks, take so many stored pixels in the finer size.
Shaped Shape(std::string_view text, int density, double letter, double blank) {
    Shaped shaped;
    double plain = 0;
    for (const char c : text) {
        const bool isBlank = c == ' ';
        shaped.glyphs.push_back({plain, shaped.line.fineWidth, isBlank});
        plain += isBlank ? 5 : 10;
        shaped.line.fineWidth += isBlank ? blank : letter;
    }
    shaped.line.density = density;
    shaped.line.room = plain * density;
    return shaped;
}

/// Where the letters are drawn.
std::vector<double> Drawn(Shaped shaped) {
    PlaceGlyphs(shaped.glyphs, shaped.line);
    std::vector<double> places;
    for (const GlyphPlace& glyph : shaped.glyphs) {
        if (!glyph.blank) {
            places.push_back(glyph.fine + glyph.shift);
        }
    }
    return places;
}

TEST(GlyphPlaces, AreTheFinerSizesOwnWhereBothAgree) {
    EXPECT_EQ(Drawn(Shape("ab cd", 2, 20, 10)), (std::vector<double>{0, 20, 50, 70}));
    EXPECT_EQ(Drawn({}), std::vector<double>{});
    EXPECT_EQ(Drawn(Shape("  ", 2, 20, 10)), std::vector<double>{});
}

TEST(GlyphPlaces, WordsKeepTheirSpacingAndGapsGive) {
    // 94 of 90 pixels: the last letter comes 4 to the left, and the gap of 10 gives 3 of them.
    EXPECT_EQ(Drawn(Shape("ab cd", 2, 21, 10)), (std::vector<double>{0, 21, 49, 69}));
    // All gaps give alike: 5 pixels for four of them, and so 1, 1, 2 and 1.
    EXPECT_EQ(Drawn(Shape("a b c d e", 2, 21, 10)), (std::vector<double>{0, 30, 60, 89, 119}));
}

// 26 letters that are 1 pixel too wide push the last word, which cannot leave the line.
TEST(GlyphPlaces, TheGapInFrontOfAShortLastWordStaysAGap) {
    const std::vector<double> places = Drawn(Shape("abcdefghijklmnopqrstuvwxyz 2", 2, 21, 10));
    EXPECT_LE(places[26] + 21, 2 * 275);
    EXPECT_GE(places[26] - (places[25] + 21), 7);
}

// Long words drift to the right of their places; the next one follows, and does not begin at its
// own place while the gap in front of it closes.
TEST(GlyphPlaces, GapsBehindLongWordsStayGaps) {
    for (const int density : {2, 4}) {
        const Shaped shaped = Shape("abcdefghijklmnopqrst uv abcdefghijkl wx yzabcdefghi", density,
                                    10 * density + density / 2, 5 * density);
        const std::vector<double> places = Drawn(shaped);
        std::size_t letter = 0;
        for (std::size_t glyph = 1; glyph + 1 < shaped.glyphs.size(); ++glyph) {
            letter += shaped.glyphs[glyph].blank ? 0 : 1;
            if (shaped.glyphs[glyph].blank) {
                const double before = places[letter] + 10 * density + density / 2;
                EXPECT_GE(places[letter + 1] - before, 0.7 * 5 * density) << density << glyph;
            }
        }
    }
}

TEST(GlyphPlaces, NothingCrossesTheEndOfTheLine) {
    for (const int density : {2, 3, 4}) {
        for (const double wider : {1, 2, 3, 5}) {
            for (const auto* text : {"abcdefghijkl", "ab abcdefgh", "abcdefgh ab "}) {
                const double letter = 10 * density + wider;
                const Shaped shaped = Shape(text, density, letter, 5 * density);
                const auto places = Drawn(shaped);
                EXPECT_GE(places.front(), 0);
                EXPECT_TRUE(std::ranges::is_sorted(places));
                const double right = places.back() + letter;
                const double blanks = std::string_view(text).ends_with(' ') ? 5 * density : 0;
                EXPECT_LE(right + blanks, shaped.line.room) << density << text << wider;
            }
        }
    }
}

TEST(GlyphPlaces, ALetterWiderThanItsRoomTakesTheRoomInFrontOfIt) {
    Shaped shaped = Shape("a", 2, 22, 10);
    shaped.line.fineLead = -3;  // its ink begins there
    EXPECT_EQ(Drawn(shaped), (std::vector<double>{-2}));
}

TEST(GlyphPlaces, LinesBeginBelowEachOther) {
    Shaped shaped = Shape("ab cdefg", 2, 21, 10);
    shaped.line.fineLead = -3;
    EXPECT_EQ(Drawn(shaped).front(), 0);
}

TEST(GlyphPlaces, StayWithinAUnitOfThePlainOnes) {
    for (const int density : {2, 3, 4}) {
        for (const double wider : {-2, -1, 1, 2}) {
            Shaped shaped =
                Shape("abcdefghijklm nopqrstuvwxyzabc d e f", density, 10 * density + wider, 5);
            PlaceGlyphs(shaped.glyphs, shaped.line);
            for (std::size_t i = 0; i < shaped.glyphs.size(); ++i) {
                const GlyphPlace& glyph = shaped.glyphs[i];
                // The last word keeps clear of the line's end besides.
                const double over = i > 28 ? 3 : 0;
                if (!glyph.blank) {
                    EXPECT_NEAR(glyph.fine + glyph.shift, glyph.plain * density, density + over)
                        << i << " " << density << " " << wider;
                }
            }
        }
    }
}

TEST(GlyphPlaces, JoinedLettersAreNeverDrawnApart) {
    Shaped shaped = Shape("abcdefghijklm", 2, 18, 10);
    shaped.line.joined = true;
    PlaceGlyphs(shaped.glyphs, shaped.line);
    for (std::size_t i = 1; i < shaped.glyphs.size(); ++i) {
        EXPECT_LE(shaped.glyphs[i].shift, shaped.glyphs[i - 1].shift);
    }
    shaped.line.joined = false;
    EXPECT_GE(Drawn(shaped).back(), 2 * 120 - 2);
}

TEST(GlyphPlaces, InkInFrontOfTheLineIsBroughtIn) {
    Shaped shaped = Shape("ab cd", 2, 20, 10);
    shaped.line.fineLead = 1;
    EXPECT_EQ(Drawn(shaped), (std::vector<double>{1, 21, 50, 70}));
}

}  // namespace

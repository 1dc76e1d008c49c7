// Text at every density, and in every script.
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <numeric>
#include <string>

#include "platform/desktop/glyph_ink.h"
#include "platform/desktop/text_engine.h"
#include "platform/desktop/text_line.h"
#include "tests/desktop/on_toolkit.h"

namespace {

using namespace platform;
using namespace platform::desktop;

constexpr uchar kFaintCoverage = 64;

/// What the toolkit makes of a line, with room all around it.
struct Unclipped {
    QImage image;
    int left = 0;  ///< where the line's own picture would begin
    int top = 0;
};

Unclipped DrawUnclipped(const Font& font, std::u16string_view text, Long density) {
    FontFace face(font);
    const QString words(reinterpret_cast<const QChar*>(text.data()),
                        static_cast<qsizetype>(text.size()));
    const FontSetting& plain = face.Plain();
    const ShapedStretch shaped(words, plain.made, plain.room);
    const FontSetting& fine = face.At(density);
    const ShapedStretch fineShaped =
        density == 1 ? ShapedStretch(words, plain.made, plain.room)
                     : ShapedStretch(words, fine.made, fine.room, &shaped, density);
    const int margin = 2 * fine.room.height;
    const int width = static_cast<int>(fineShaped.Line().naturalTextWidth());
    Unclipped drawn{
        {width + 2 * margin, fine.room.height + 2 * margin, QImage::Format_Alpha8}, margin, margin};
    drawn.image.fill(0);
    QPainter painter(&drawn.image);
    painter.setPen(Qt::black);
    for (const GlyphGroup& group : fineShaped.Groups(shaped)) {
        painter.drawGlyphRun(QPointF(margin, margin + fine.room.base), group.run);
    }
    return drawn;
}

double InkIn(const QImage& image) {
    double ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        ink = std::accumulate(row, row + image.width(), ink);
    }
    return ink;
}

double InkIn(const TextPicture& picture) {
    return std::accumulate(picture.coverage.begin(), picture.coverage.end(), 0.0);
}

class FineText : public OnToolkit {
  protected:
    /// The row's height is all that it has: what lies above and below is no more than a faint rim.
    void ExpectWhole(std::u16string_view text, Long density) {
        const Unclipped drawn = DrawUnclipped(font_, text, density);
        const Long height = engine_.Measure(font_, text).height * density;
        int most = 0;
        for (int y = 0; y < drawn.image.height(); ++y) {
            if (y < drawn.top || y >= drawn.top + height) {
                const uchar* row = drawn.image.constScanLine(y);
                most = std::max<int>(most, *std::max_element(row, row + drawn.image.width()));
            }
        }
        const std::string name = QString(reinterpret_cast<const QChar*>(text.data()),
                                         static_cast<qsizetype>(text.size()))
                                     .toStdString();
        EXPECT_LT(most, kFaintCoverage) << name << " at " << density;
        // All of it is in the picture, but what letters that were drawn closer share.
        const double whole = InkIn(drawn.image);
        EXPECT_GT(whole, 0) << name;
        const double kept = InkIn(engine_.Render(font_, text, 0, 2048, density));
        EXPECT_GT(kept, whole * 0.97) << name << " at " << density;
    }

    TextEngine engine_;
    Font font_;
};

TEST_F(FineText, UnitsDoNotDependOnTheDensity) {
    for (const auto* text : {u"The Plucked Strings", u"\u0E17\u0E35\u0E48 A", u"x"}) {
        const Size size = engine_.Measure(font_, text);
        for (const Long density : {1, 2, 3, 4}) {
            const TextPicture picture = engine_.Render(font_, text, 0, 2048, density);
            EXPECT_EQ(picture.density, density);
            EXPECT_EQ(picture.width, size.width * density);
            EXPECT_EQ(picture.height, size.height * density);
            EXPECT_EQ(picture.coverage.size(),
                      static_cast<std::size_t>(picture.width * picture.height));
            EXPECT_EQ(engine_.Measure(font_, text), size);
        }
    }
}

TEST_F(FineText, NoWordIsCutAtAnyDensity) {
    for (const double size : {8.0, 8.25, 9.0, 9.75, 10.0, 11.0, 12.0}) {
        for (const int style : {0, 1, 2, 3}) {
            font_.size = size;
            font_.bold = (style & 1) != 0;
            font_.italic = (style & 2) != 0;
            for (const auto* text :
                 {u"jazz of", u"Wolfgang Amadeus Mozart", u"fjf", u"Stairs, part 1042",
                  u"Rindfleischetikettierung", u"WWWWWWWW", u"iiiiiiiiiiii", u"T"}) {
                for (const Long density : {1, 2, 3, 4}) {
                    SCOPED_TRACE(testing::Message() << size << " points, style " << style);
                    ExpectWhole(text, density);
                }
            }
        }
    }
}

TEST_F(FineText, SlicesFitTogether) {
    const std::u16string text = u"The Plucked Strings - Morning Stairs, part 1042";
    const TextPicture whole = engine_.Render(font_, text, 0, 2048, 2);
    const TextPicture slice = engine_.Render(font_, text, 50, 60, 2);
    ASSERT_EQ(slice.width, 120);
    for (Long y = 0; y < whole.height; ++y) {
        const auto* from = whole.coverage.data() + y * whole.width + 100;
        EXPECT_TRUE(std::equal(from, from + 120, slice.coverage.data() + y * slice.width)) << y;
    }
}

TEST_F(FineText, WordsStandWhereTheCaretIs) {
    std::u16string text;
    for (int i = 0; i < 12; ++i) {
        text += u"lane ";
    }
    for (const Long density : {2, 3, 4}) {
        const TextPicture picture = engine_.Render(font_, text, 0, 2048, density);
        const auto isBlank = [&](Long column) {
            for (Long y = 0; y < picture.height; ++y) {
                if (picture.coverage[static_cast<std::size_t>(y * picture.width + column)] > 0) {
                    return false;
                }
            }
            return true;
        };
        // Words begin behind as many blank columns as there are never between letters.
        std::vector<Long> starts;
        Long blanks = 3 * density;
        for (Long column = 0; column < picture.width; ++column) {
            if (isBlank(column)) {
                ++blanks;
                continue;
            }
            if (blanks >= 2 * density + 1) {
                starts.push_back(column);
            }
            blanks = 0;
        }
        ASSERT_EQ(starts.size(), 12U) << density;
        for (std::size_t i = 0; i < starts.size(); ++i) {
            const Long caret = engine_.Offset(font_, text, 5 * i) * density;
            EXPECT_LE(std::abs(starts[i] - starts[0] - caret), density) << i << " at " << density;
        }
    }
}

TEST_F(FineText, LettersWithStackedAndDeepMarksAreWhole) {
    for (const double size : {8.0, 8.25, 9.75, 12.0}) {
        font_.size = size;
        for (const auto* text :
             {u"\u1EA4 \u01DB \u1E7A", u"\u1EA4N T\u01AF\u1EE2NG g", u"\u1EC6 \u1EACg",
              u"\u00C9dith",
              u"\u0E17\u0E35\u0E48 \u0E1B\u0E39\u0E48 \u0E0D\u0E35\u0E48 \u0E0E\u0E0F",  // Thai
              u"\u0F66\u0F92\u0FB2\u0F74\u0F56 \u0F67\u0F71\u0F74\u0F83 Tibet",          // Tibetan
              u"\u0679\u06BE\u06CC\u06A9 \u0646\u0633\u0651\u0645",                      // Urdu
              u"\u0939\u094D\u0930\u0940\u0902 \u0915\u094D\u0924\u094D\u0930",          // Hindi
              u"\u4E45\u77F3\u8B72", u"Z\u0335\u0322\u031B\u0332\u0348\u0358\u0341\u0300o"}) {
            for (const Long density : {1, 2, 3, 4}) {
                ExpectWhole(text, density);
            }
        }
    }
}

TEST_F(FineText, WhatFitsKeepsItsSize) {
    FontFace face(font_);
    for (const auto* text : {u"Morning Stairs", u"\u00E4\u00F6\u00FC", u"\u0416\u0438"}) {
        const ShapedStretch shaped(QString::fromUtf16(text), face.Plain().made, face.Plain().room);
        EXPECT_TRUE(shaped.IsPlain());
    }
}

TEST_F(FineText, AWordIsOfOneFont) {
    // The last letter is not in the line's font, the others are.
    const QString word = QString::fromUtf16(u"\u0645\u06CC\u0631\u06D2");
    FontFace face(font_);
    const ShapedStretch shaped(word, face.Plain().made, face.Plain().room);
    EXPECT_EQ(shaped.Line().glyphRuns().size(), 1);
}

class Emoji : public FineText {
  protected:
    Long Width(std::u16string_view text) { return engine_.Measure(font_, text).width; }
    bool HasColoursIn(std::u16string_view text, Long density = 1) {
        const auto colours = engine_.Render(font_, text, 0, 2048, density).colours;
        return std::ranges::any_of(colours, [](Pixel pixel) {
            return (pixel >> 24) > 200 && (pixel >> 16 & 0xFF) != (pixel & 0xFF);
        });
    }
};

TEST_F(Emoji, BringTheirColours) {
    for (const Long density : {1, 2, 3, 4}) {
        const TextPicture picture = engine_.Render(font_, u"\U0001F389", 0, 2048, density);
        EXPECT_EQ(picture.colours.size(), picture.coverage.size());
        EXPECT_TRUE(HasColoursIn(u"\U0001F389", density));
        EXPECT_EQ(InkIn(picture), 0);
    }
    EXPECT_TRUE(HasColoursIn(u"\u2764\uFE0F"));
    EXPECT_TRUE(engine_.Render(font_, u"\u2764 Heart", 0, 2048).colours.empty());
    EXPECT_TRUE(engine_.Render(font_, u"Morning", 0, 2048).colours.empty());
}

TEST_F(Emoji, ASequenceIsOneSign) {
    const Long one = Width(u"\U0001F389");
    EXPECT_GT(one, 0);
    for (const auto* text :
         {u"\U0001F468\u200D\U0001F469\u200D\U0001F467", u"\U0001F1E9\U0001F1EA",
          u"\U0001F44D\U0001F3FD", u"1\uFE0F\u20E3", u"\u2764\uFE0F\u200D\U0001F525",
          u"\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F"}) {
        EXPECT_EQ(Width(text), one);
        EXPECT_FALSE(engine_.Render(font_, text, 0, 2048).colours.empty());
    }
}

}  // namespace

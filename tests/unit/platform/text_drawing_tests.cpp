// Text on surfaces. In the fixed-width driver each unit but a blank is a block that fills the
// columns 1 to 4 and the rows 3 to 9 of its 6 x 13 pixels.
#include "platform/drawing/text_drawing.h"

#include <gtest/gtest.h>

#include "tests/unit/support/text_watch.h"

namespace platform {
namespace {

class TextDrawingTest : public ::testing::Test {
  protected:
    // The box around all that was drawn in colour 1 on a fresh surface.
    Rect Inked(std::u16string_view text, const Rect& rect, Long format, Size size = {100, 60}) {
        Surface surface(size);
        drawing_.Draw(surface, font_, text, rect, format, 1);
        Rect inked;
        for (Long y = 0; y < size.height; ++y) {
            for (Long x = 0; x < size.width; ++x) {
                if (surface.GetPixel({x, y}) == 1) {
                    inked = Unite(inked, {x, y, x + 1, y + 1});
                }
            }
        }
        return inked;
    }

    TextWatch driver_;
    TextDrawing drawing_{driver_};
    Font font_;
};

TEST_F(TextDrawingTest, ALineBeginsAtTheTopLeftCorner) {
    EXPECT_EQ(Inked(u"ab", {10, 20, 60, 50}, DT_SINGLELINE), (Rect{11, 23, 21, 30}));
    EXPECT_EQ(Inked(u"", {10, 20, 60, 50}, DT_SINGLELINE), Rect{});
    EXPECT_EQ(Inked(u"  ", {10, 20, 60, 50}, DT_SINGLELINE), Rect{});
}

TEST_F(TextDrawingTest, CentringAndTheRightEdge) {
    // 12 pixels of text in 51: 39 are left over, 19 in front.
    EXPECT_EQ(Inked(u"ab", {10, 20, 61, 50}, DT_SINGLELINE | DT_CENTER), (Rect{30, 23, 40, 30}));
    EXPECT_EQ(Inked(u"ab", {10, 20, 60, 50}, DT_SINGLELINE | DT_RIGHT), (Rect{49, 23, 59, 30}));
    // 13 pixels of height in 30: 8 above.
    EXPECT_EQ(Inked(u"ab", {10, 20, 60, 50}, DT_SINGLELINE | DT_VCENTER), (Rect{11, 31, 21, 38}));
    EXPECT_EQ(Inked(u"ab", {10, 20, 60, 50}, DT_SINGLELINE | DT_VCENTER | DT_CENTER | DT_NOPREFIX),
              (Rect{30, 31, 40, 38}));
}

TEST_F(TextDrawingTest, AnAmpersandIsAPrefixMarkUnlessTheFormatSaysNo) {
    const auto ends = [&](std::u16string_view text, Long format) {
        return Inked(text, {0, 0, 60, 50}, DT_SINGLELINE | format).right;
    };
    EXPECT_EQ(ends(u"&a", DT_NOPREFIX), 11);
    EXPECT_EQ(ends(u"&a", 0), 5);
    EXPECT_EQ(ends(u"a&b&c", 0), 17);
    EXPECT_EQ(ends(u"a&&b", 0), 17);  // two are one
    EXPECT_EQ(ends(u"&&&a", 0), 11);  // one, and a mark of the a
    EXPECT_EQ(ends(u"&&&&", 0), 11);
    EXPECT_EQ(ends(u"a&", 0), 5);  // a mark of nothing
    EXPECT_EQ(ends(u"&", 0), 0);
    EXPECT_EQ(Inked(u"a&\n&b", {0, 0, 60, 50}, 0), (Rect{1, 3, 5, 23}));
    EXPECT_EQ(Inked(u"&ab", {0, 0, 60, 50}, DT_SINGLELINE | DT_RIGHT), (Rect{49, 3, 59, 10}));
    EXPECT_EQ(Inked(u"&ab", {0, 0, 51, 50}, DT_CENTER), (Rect{20, 3, 30, 10}));
}

TEST_F(TextDrawingTest, APrefixMarkHasNoWidth) {
    const auto width = [&](std::u16string_view text, Long format) {
        return drawing_.Calculate(font_, text, {}, format).Width();
    };
    EXPECT_EQ(width(u"A & B", DT_SINGLELINE), 24);
    EXPECT_EQ(width(u"A & B", DT_SINGLELINE | DT_NOPREFIX), 30);
    EXPECT_EQ(width(u"A && B", DT_SINGLELINE), 30);
    EXPECT_EQ(width(u"&\n&bb", 0), 12);
    EXPECT_EQ(drawing_.Calculate(font_, u"&aa &bb", {0, 0, 30, 0}, DT_WORDBREAK),
              (Rect{0, 0, 30, 13}));
}

TEST_F(TextDrawingTest, NothingIsDrawnOutsideOfTheRectangle) {
    EXPECT_EQ(Inked(u"abcdef", {10, 20, 28, 26}, DT_SINGLELINE), (Rect{11, 23, 27, 26}));
    // 36 pixels in the middle of 21 begin 7 before the rectangle.
    EXPECT_EQ(Inked(u"abcdef", {10, 0, 31, 20}, DT_SINGLELINE | DT_CENTER), (Rect{10, 3, 31, 10}));
    EXPECT_EQ(Inked(u"abcdef", {10, 0, 28, 20}, DT_SINGLELINE | DT_RIGHT), (Rect{11, 3, 27, 10}));
    EXPECT_EQ(Inked(u"ab", {10, 5, 10, 20}, DT_SINGLELINE), Rect{});
}

TEST_F(TextDrawingTest, NothingIsDrawnOutsideOfTheSurface) {
    EXPECT_EQ(Inked(u"abcdef", {-8, -5, 90, 50}, DT_SINGLELINE), (Rect{0, 0, 27, 5}));
    EXPECT_EQ(Inked(u"abcdef", {90, 55, 190, 90}, DT_SINGLELINE), (Rect{91, 58, 100, 60}));
    EXPECT_EQ(Inked(u"ab", {100, 0, 190, 60}, DT_SINGLELINE), Rect{});
}

TEST_F(TextDrawingTest, SeveralLinesLieBelowEachOther) {
    EXPECT_EQ(Inked(u"a\r\nbbb\rc\nd", {0, 0, 100, 60}, 0), (Rect{1, 3, 17, 49}));  // 39 + 10
    EXPECT_EQ(Inked(u"aa bb", {0, 0, 29, 60}, DT_WORDBREAK), (Rect{1, 3, 11, 23}));
    EXPECT_EQ(Inked(u"aa bb", {0, 0, 29, 60}, 0), (Rect{1, 3, 29, 10}));  // cut instead
    EXPECT_EQ(Inked(u"a\nb", {0, 0, 100, 14}, 0), (Rect{1, 3, 5, 10}));
    EXPECT_EQ(Inked(u"\n\nb", {0, 0, 100, 60}, 0), (Rect{1, 29, 5, 36}));
}

TEST_F(TextDrawingTest, EveryOneOfSeveralLinesIsCentred) {
    // 12 of 30 leave 9 in front, 6 leave 12; the vertical centring is for single lines only.
    EXPECT_EQ(Inked(u"bb\na", {0, 0, 30, 60}, DT_CENTER | DT_VCENTER), (Rect{10, 3, 20, 23}));
    EXPECT_EQ(Inked(u"\na", {0, 0, 30, 60}, DT_CENTER), (Rect{13, 16, 17, 23}));
    EXPECT_EQ(Inked(u"\na", {0, 0, 30, 60}, DT_RIGHT), (Rect{25, 16, 29, 23}));
}

TEST_F(TextDrawingTest, CalculateTellsTheSizeFromTheCornerOn) {
    EXPECT_EQ(drawing_.Calculate(font_, u"abc", {5, 6, 7, 8}, DT_SINGLELINE), (Rect{5, 6, 23, 19}));
    EXPECT_EQ(drawing_.Calculate(font_, u"a\nbbb\nbb", {0, 0, 0, 0}, 0), (Rect{0, 0, 18, 39}));
    EXPECT_EQ(drawing_.Calculate(font_, u"aa bb cc", {0, 0, 30, 0}, DT_WORDBREAK),
              (Rect{0, 0, 30, 26}));
    EXPECT_EQ(drawing_.Calculate(font_, u"aa bb cc", {0, 0, 29, 0}, DT_WORDBREAK),
              (Rect{0, 0, 12, 39}));
    EXPECT_EQ(drawing_.Calculate(font_, u"", {0, 0, 30, 0}, DT_WORDBREAK), (Rect{0, 0, 0, 13}));
}

TEST_F(TextDrawingTest, WhatWasRenderedIsKept) {
    for (int i = 0; i < 5; ++i) {
        Inked(u"title", {0, 0, 100, 20}, DT_SINGLELINE);
        Inked(u"title", {3, 9, 50, 20}, DT_SINGLELINE | DT_CENTER);  // wherever it stands
    }
    EXPECT_EQ(driver_.rendered, 1);
    for (const Font& font : {Font{u"Arial"}, Font{u"Tahoma", 9}, Font{u"Tahoma", 8.25, true},
                             Font{u"Tahoma", 8.25, false, true}}) {
        font_ = font;
        const int before = driver_.rendered;
        Inked(u"title", {0, 0, 100, 20}, DT_SINGLELINE);
        EXPECT_EQ(driver_.rendered, before + 1);
    }
    font_ = {};
    Inked(u"title", {0, 0, 100, 20}, DT_SINGLELINE);
    EXPECT_EQ(driver_.rendered, 5);
}

TEST_F(TextDrawingTest, ALongLineIsRenderedInPiecesAsTheyComeIntoView) {
    const std::u16string text(2000, u'x');  // 12000 pixels: six pieces of 2048
    EXPECT_EQ(Inked(text, {0, 0, 100, 20}, DT_SINGLELINE), (Rect{1, 3, 100, 10}));
    EXPECT_EQ(driver_.rendered, 1);
    // The border between the first two pieces, 2048, is in the middle of the view; a unit lies
    // across it. The view begins at 2000, 2 pixels into a unit.
    Surface surface({100, 20});
    drawing_.Draw(surface, font_, text, {-2000, 0, 100, 20}, DT_SINGLELINE, 1);
    EXPECT_EQ(driver_.rendered, 2);
    for (Long x = 0; x < 100; ++x) {
        const Long inUnit = (2000 + x) % 6;
        EXPECT_EQ(surface.GetPixel({x, 5}), inUnit >= 1 && inUnit <= 4 ? 1 : 0) << x;
    }
    // Of the end only what is seen.
    EXPECT_EQ(Inked(text, {-11990, 0, 100, 20}, DT_SINGLELINE), (Rect{0, 3, 9, 10}));
    EXPECT_EQ(driver_.rendered, 3);
    EXPECT_EQ(driver_.widest, 2048);
}

TEST_F(TextDrawingTest, OfATextWithoutEndOnlyTheBeginningGoesToTheDriver) {
    std::u16string text(5'000'000, u'x');
    EXPECT_EQ(Inked(text, {0, 0, 100, 20}, DT_SINGLELINE | DT_NOPREFIX).right, 100);
    EXPECT_LE(driver_.longest, 8192U);
    EXPECT_EQ(drawing_.Calculate(font_, text, {}, DT_SINGLELINE), (Rect{0, 0, 30'000'000, 13}));
    text[1'000'000] = u'&';  // a mark, and so without a width
    EXPECT_EQ(drawing_.Calculate(font_, text, {}, DT_SINGLELINE), (Rect{0, 0, 29'999'994, 13}));
    // As many lines as can be seen: 60 pixels take five.
    text.assign(5'000'000, u'\n');
    text[4] = u'x';
    EXPECT_EQ(Inked(text, {0, 0, 100, 60}, 0), (Rect{1, 55, 5, 60}));
    EXPECT_LE(driver_.longest, 8192U);
}

TEST_F(TextDrawingTest, ALongLineEndsAtTheRightEdge) {
    const std::u16string text(400, u'x');  // 2400 pixels
    EXPECT_EQ(Inked(text, {0, 0, 48, 20}, DT_SINGLELINE | DT_RIGHT), (Rect{1, 3, 47, 10}));
    const std::u16string exact = std::u16string(1024, u'x');  // 6144: three whole pieces
    EXPECT_EQ(Inked(exact, {-6120, 0, 50, 20}, DT_SINGLELINE), (Rect{1, 3, 23, 10}));
}

TEST_F(TextDrawingTest, OldPicturesGoWhenThereAreTooMany) {
    // A picture of 300 units is 1800 x 13 bytes: some 40 of them fill what is kept.
    const auto text = [](int i) { return std::u16string(300, static_cast<char16_t>(u'a' + i)); };
    for (int i = 0; i < 100; ++i) {
        Inked(text(i), {0, 0, 100, 20}, DT_SINGLELINE);
        Inked(text(0), {0, 0, 100, 20}, DT_SINGLELINE);  // in use all the time
    }
    EXPECT_EQ(driver_.rendered, 100);
    Inked(text(0), {0, 0, 100, 20}, DT_SINGLELINE);
    Inked(text(99), {0, 0, 100, 20}, DT_SINGLELINE);
    EXPECT_EQ(driver_.rendered, 100);
    EXPECT_EQ(Inked(text(1), {0, 0, 100, 20}, DT_SINGLELINE), (Rect{1, 3, 100, 10}));
    EXPECT_EQ(driver_.rendered, 101);
}

TEST_F(TextDrawingTest, APictureLargerThanAllThatIsKeptIsDrawn) {
    class Tall : public TextWatch {
        TextPicture RenderText(const Font&, std::u16string_view, Long, Long, Long) const override {
            ++rendered;
            return {1000, 2000, std::vector<std::uint8_t>(2'000'000, 255)};
        }
    };
    const Tall driver;
    TextDrawing drawing(driver);
    Surface surface({10, 10});
    for (const Colour colour : {1, 2}) {
        drawing.Draw(surface, font_, u"a", surface.Bounds(), DT_SINGLELINE, colour);
        drawing.Draw(surface, font_, u"b", surface.Bounds(), DT_SINGLELINE, colour);
        EXPECT_EQ(surface.GetPixel({9, 9}), colour);
    }
    EXPECT_EQ(driver.rendered, 4);
}

TEST_F(TextDrawingTest, TextsWithoutAWidthDoNotPileUp) {
    class Flat : public TextWatch {
        TextPicture RenderText(const Font&, std::u16string_view, Long, Long, Long) const override {
            ++rendered;
            return {};
        }
    };
    const Flat driver;
    TextDrawing drawing(driver);
    Surface surface({10, 10});
    const auto draw = [&](int i) {
        const std::u16string text(8000, static_cast<char16_t>(i));  // 16 KB each
        drawing.Draw(surface, font_, text, surface.Bounds(), DT_SINGLELINE, 1);
    };
    for (int i = 1; i <= 100; ++i) {
        draw(i);
    }
    draw(1);
    EXPECT_EQ(driver.rendered, 101);
}

}  // namespace
}  // namespace platform

// Text: what is measured, what is drawn, and where the caret stands.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "tests/conformance/trial.h"

namespace conformance {

namespace {

using platform::Font;
using platform::TextPicture;

constexpr Long kWide = 100'000;

std::vector<std::u16string> Texts() {
    return {u"x",
            u"Two words",
            u"  blanks  ",
            u"Ab\u0301ra\u00DF",
            u"\u4F60\u597D",
            std::u16string(u"\0\t\n", 3),
            std::u16string(1, 0xDC80),
            std::u16string(500, u'm')};
}

std::vector<Font> Fonts() {
    Font bold;
    bold.bold = true;
    bold.size = 12;
    return {Font(), bold, Font{u"No such font", 20, false, true}};
}

void HeightIsThatOfTheFont(Trial& trial) {
    for (const Font& font : Fonts()) {
        const Long height = trial.Desktop().MeasureText(font, u"").height;
        Trial::Require(height > 0, "a line without text has no height");
        for (const std::u16string& text : Texts()) {
            const Size size = trial.Desktop().MeasureText(font, text);
            Trial::Require(size.height == height, "two lines of a font differ in height");
            Trial::Require(size.width >= 0, "a line has a negative width");
        }
    }
}

void NothingHasNoWidth(Trial& trial) {
    for (const Font& font : Fonts()) {
        Trial::Require(trial.Desktop().MeasureText(font, u"").width == 0,
                       "a line without text has a width");
        Trial::Require(trial.Desktop().MeasureText(font, u"x").width > 0, "a letter has no width");
    }
}

void BlanksCount(Trial& trial) {
    const Long bare = trial.Desktop().MeasureText(Font(), u"x").width;
    Trial::Require(trial.Desktop().MeasureText(Font(), u"x ").width > bare,
                   "a blank at the end does not count");
    Trial::Require(trial.Desktop().MeasureText(Font(), u" x").width > bare,
                   "a blank at the start does not count");
}

void CaretGoesFromEndToEnd(Trial& trial) {
    for (const std::u16string& text : Texts()) {
        const Size size = trial.Desktop().MeasureText(Font(), text);
        Trial::Require(trial.Desktop().TextOffset(Font(), text, 0) == 0,
                       "the caret in front of a line stands elsewhere");
        Trial::Require(trial.Desktop().TextOffset(Font(), text, text.size()) == size.width,
                       "the caret behind a line does not stand at its width");
    }
    const std::u16string text = u"Two words";
    Long last = 0;
    for (std::size_t index = 1; index <= text.size(); ++index) {
        const Long offset = trial.Desktop().TextOffset(Font(), text, index);
        Trial::Require(offset > last, "the caret does not move on with a letter");
        last = offset;
    }
}

void AnswersStayTheSame(Trial& trial) {
    std::vector<Size> sizes;
    for (int round = 0; round < 2; ++round) {
        std::size_t at = 0;
        for (const Font& font : Fonts()) {
            for (const std::u16string& text : Texts()) {
                const Size size = trial.Desktop().MeasureText(font, text);
                if (round == 0) {
                    sizes.push_back(size);
                }
                Trial::Require(size == sizes[at++], "a line is measured, and then otherwise");
            }
        }
    }
}

void RequireWhole(const TextPicture& picture, const Size& size, Long density) {
    Trial::Require(picture.density == density, "a picture is of another density than asked for");
    Trial::Require(picture.height == size.height * density,
                   "a picture is not as high as MeasureText says");
    Trial::Require(picture.width >= 0 && picture.width <= size.width * density,
                   "a picture is wider than MeasureText says");
    const auto pixels = static_cast<std::size_t>(picture.width * picture.height);
    Trial::Require(picture.coverage.size() == pixels, "the coverage is of another size");
    Trial::Require(picture.colours.empty() || picture.colours.size() == pixels,
                   "the colours are of another size");
}

void PictureIsAsMeasured(Trial& trial) {
    for (const Font& font : Fonts()) {
        for (const std::u16string& text : Texts()) {
            const Size size = trial.Desktop().MeasureText(font, text);
            for (const Long density : {1, 2, 3}) {
                RequireWhole(trial.Desktop().RenderText(font, text, 0, kWide, density), size,
                             density);
            }
        }
    }
    const TextPicture letter = trial.Desktop().RenderText(Font(), u"x", 0, kWide, 1);
    Trial::Require(std::any_of(letter.coverage.begin(), letter.coverage.end(),
                               [](std::uint8_t value) { return value != 0; }),
                   "nothing is drawn of a letter");
}

// One line is asked for in pieces of any width.
void PiecesMakeTheWhole(Trial& trial) {
    constexpr Long kPiece = 7;
    const std::u16string text = u"Two words and more";
    for (const Long density : {1, 2}) {
        const TextPicture whole = trial.Desktop().RenderText(Font(), text, 0, kWide, density);
        Long done = 0;
        while (done < whole.width) {
            const TextPicture piece =
                trial.Desktop().RenderText(Font(), text, done / density, kPiece, density);
            Trial::Require(piece.height == whole.height && piece.density == density,
                           "a piece of a line is of another height or density");
            Trial::Require(piece.width == std::min(kPiece * density, whole.width - done),
                           "a piece of a line is of another width");
            for (Long y = 0; y < piece.height; ++y) {
                const auto at = [&](const TextPicture& picture, Long x) {
                    return picture.coverage[static_cast<std::size_t>(y * picture.width + x)];
                };
                for (Long x = 0; x < piece.width; ++x) {
                    Trial::Require(at(piece, x) == at(whole, done + x),
                                   "a piece of a line differs from the whole");
                }
            }
            done += piece.width;
        }
        Trial::Require(trial.Desktop().RenderText(Font(), text, kWide, kPiece, density).width == 0,
                       "there is something beyond the end of a line");
        Trial::Require(trial.Desktop().RenderText(Font(), u"", 0, kPiece, density).width == 0,
                       "something is drawn of an empty line");
    }
}

constexpr std::array kTextRules{
    Rule{"text.height_is_that_of_the_font", HeightIsThatOfTheFont},
    Rule{"text.nothing_has_no_width", NothingHasNoWidth},
    Rule{"text.blanks_count", BlanksCount},
    Rule{"text.caret_goes_from_end_to_end", CaretGoesFromEndToEnd},
    Rule{"text.answers_stay_the_same", AnswersStayTheSame},
    Rule{"text.picture_is_as_measured", PictureIsAsMeasured},
    Rule{"text.pieces_make_the_whole", PiecesMakeTheWhole},
};

}  // namespace

std::span<const Rule> RulesOfText() {
    return kTextRules;
}

}  // namespace conformance

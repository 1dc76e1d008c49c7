// Thousands of pages made of markers, entities, pieces of them and stray units, cut by the rules as
// they are said, one unit after the other.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lyrics/lyrics.h"
#include "platform/base/text.h"

namespace sarnel {
namespace {

using Count = std::ptrdiff_t;

bool StandsAt(const std::u16string& text, std::size_t at, std::u16string_view what,
              bool ignoringCase) {
    for (std::size_t i = 0; i < what.size(); ++i) {
        if (at + i >= text.size()) {
            return false;
        }
        const char16_t own = ignoringCase ? platform::UpperUnit(text[at + i]) : text[at + i];
        const char16_t wanted = ignoringCase ? platform::UpperUnit(what[i]) : what[i];
        if (own != wanted) {
            return false;
        }
    }
    return true;
}

// From 1; 0 if it is nowhere.
Count PlaceIgnoringCase(const std::u16string& text, std::u16string_view what) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (StandsAt(text, at, what, true)) {
            return static_cast<Count>(at) + 1;
        }
    }
    return 0;
}

std::u16string EachReplaced(const std::u16string& text, std::u16string_view what,
                            std::u16string_view with) {
    std::u16string replaced;
    for (std::size_t at = 0; at < text.size();) {
        if (StandsAt(text, at, what, false)) {
            replaced += with;
            at += what.size();
        } else {
            replaced += text[at++];
        }
    }
    return replaced;
}

std::u16string CutAsSaid(std::u16string text) {
    const auto length = static_cast<Count>(text.size());
    const Count last = length - PlaceIgnoringCase(text, u"<div id=\"lyrics\">") - 17;
    if (last >= 0) {
        text = text.substr(static_cast<std::size_t>(length - last));
    }
    const Count first = PlaceIgnoringCase(text, u"</div>") - 2;
    if (first >= 0) {
        text = text.substr(0, static_cast<std::size_t>(first));
    }
    text = EachReplaced(text, u"nbsp;", u" ");
    text = EachReplaced(text, u"&amp;", u"&");
    text = EachReplaced(text, u"\u00E2\u20AC\u2122", u"'");
    text = EachReplaced(text, u"\u2019", u"'");
    text = EachReplaced(text, u"\u00E2\u20AC\u02DC", u"'");
    text = EachReplaced(text, u"\u2018", u"'");
    text = EachReplaced(text, u"<br />", u"");
    text = EachReplaced(text, u"&quot;", u"\"");
    return EachReplaced(text, u"\n", u"\r\n");
}

class RandomPages {
  public:
    explicit RandomPages(unsigned seed) : random_(seed) {}

    std::u16string Next() {
        std::u16string page;
        for (std::size_t left = Below(14); left > 0; --left) {
            page += Piece();
        }
        return page;
    }

  private:
    std::size_t Below(std::size_t end) { return random_() % end; }

    // Some pieces whole, some torn in two, some with a letter in the other case.
    std::u16string Piece() {
        static const std::vector<std::u16string> kPieces{u"<div id=\"lyrics\">",
                                                         u"</div>",
                                                         u"<div>",
                                                         u"nbsp;",
                                                         u"&amp;",
                                                         u"&quot;",
                                                         u"<br />",
                                                         u"\n",
                                                         u"\r\n",
                                                         u"\u00E2\u20AC\u2122",
                                                         u"\u00E2\u20AC\u02DC",
                                                         u"\u2019",
                                                         u"\u2018",
                                                         u"words ",
                                                         u"\u0131\u017F\u212A",
                                                         std::u16string(1, 0),
                                                         u" ",
                                                         u"&",
                                                         u";",
                                                         std::u16string(1, 0xDC80)};
        std::u16string piece = kPieces[Below(kPieces.size())];
        const std::size_t at = Below(piece.size());
        switch (Below(8)) {
            case 0:
                return piece.substr(at);
            case 1:
                return piece.substr(0, at);
            case 2:
                piece[at] = platform::UpperUnit(piece[at]);
                return piece;
            case 3:
                piece[at] = piece[at] == u'i' ? u'\u0131' : piece[at];
                return piece;
            case 4:
                return std::u16string(1, static_cast<char16_t>(random_()));
            case 5:
                return piece.substr(0, at) + kPieces[Below(kPieces.size())] + piece.substr(at);
            default:
                return piece;
        }
    }

    std::mt19937 random_;
};

TEST(RandomLyricsPages, AreCutAsTheRulesSay) {
    RandomPages pages(20'261'122);
    int withFront = 0;
    for (int i = 0; i < 40'000; ++i) {
        const std::u16string page = pages.Next();
        withFront += PlaceIgnoringCase(page, u"<div id=\"lyrics\">") > 0 ? 1 : 0;
        ASSERT_EQ(CutLyrics(page), CutAsSaid(page)) << ::testing::PrintToString(page);
    }
    EXPECT_GT(withFront, 4'000);  // or the pages are none
}

}  // namespace
}  // namespace sarnel

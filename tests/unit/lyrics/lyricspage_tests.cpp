// What is made of a row's text and of the bytes of a page: each rule by itself, and pages that were
// never meant to be read.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "lyrics/lyrics.h"

namespace sarnel {
namespace {

using namespace std::string_literals;

constexpr std::u16string_view kFront = u"<div id=\"lyrics\">";
constexpr std::u16string_view kBack = u"</div>";

std::u16string Marked(std::u16string_view words) {
    return u"<p>" + std::u16string(kFront) + u"\n" + std::u16string(words) + u"\n" +
           std::u16string(kBack) + u"<p>";
}

// The cut alone, seen from the words.
std::u16string Cleaned(std::u16string_view words) {
    return CutLyrics(Marked(words));
}

// A row's text.

void ExpectSplit(std::u16string_view name, std::u16string_view artist, std::u16string_view title) {
    const ArtistAndTitle parts = SplitName(name);
    EXPECT_EQ(parts.artist, artist) << ::testing::PrintToString(std::u16string(name));
    EXPECT_EQ(parts.title, title) << ::testing::PrintToString(std::u16string(name));
}

TEST(SplitName, TheFirstSeparatorParts) {
    ExpectSplit(u"Artist - Title", u"Artist", u"Title");
    ExpectSplit(u"A - B - C", u"A", u"B - C");
    ExpectSplit(u"A-B - C", u"A-B", u"C");
    ExpectSplit(u"A  -  B", u"A ", u" B");
}

TEST(SplitName, APartMayBeEmpty) {
    ExpectSplit(u" - Title", u"", u"Title");
    ExpectSplit(u"Artist - ", u"Artist", u"");
    ExpectSplit(u" - ", u"", u"");
    ExpectSplit(u" -  - ", u"", u" - ");
}

TEST(SplitName, WithoutASeparatorTheFirstThreeUnitsGo) {
    ExpectSplit(u"Overture", u"", u"rture");
    ExpectSplit(u"abcd", u"", u"d");
    ExpectSplit(u"abc", u"", u"");
    ExpectSplit(u"ab", u"", u"");
    ExpectSplit(u"", u"", u"");
    ExpectSplit(u"A -B", u"", u"B");
    ExpectSplit(u"Artist -", u"", u"ist -");
    ExpectSplit(u"Artist \u2013 Title", u"", u"ist \u2013 Title");
}

TEST(SplitName, UnitsAreCountedAndNotCharacters) {
    ExpectSplit(u"\U0001F3B5\U0001F3B5", u"", std::u16string(1, char16_t{0xDFB5}));
    ExpectSplit(u"\xDC80 - \xDCFF"s, u"\xDC80"s, u"\xDCFF"s);
    ExpectSplit(u"a\0b - c\0d"s, u"a\0b"s, u"c\0d"s);
}

// The bytes of a page.

constexpr std::u16string_view kEightToNine =
    u"\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D"
    u"\u008F"
    u"\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E"
    u"\u0178";

// The character of a byte in code page 1252.
char16_t Old(int byte) {
    return byte >= 0x80 && byte < 0xA0 ? kEightToNine.at(static_cast<std::size_t>(byte - 0x80))
                                       : static_cast<char16_t>(byte);
}

TEST(DecodePage, EachByteByItself) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(DecodePage(std::string(1, static_cast<char>(byte))), std::u16string(1, Old(byte)))
            << byte;
    }
}

TEST(DecodePage, EachPairOfBytes) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const bool isOne = first >= 0xC2 && first <= 0xDF && second >= 0x80 && second <= 0xBF;
            const std::u16string expected =
                isOne
                    ? std::u16string(1, static_cast<char16_t>((first - 0xC0) * 64 + second - 0x80))
                    : std::u16string{Old(first), Old(second)};
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(DecodePage(bytes), expected) << first << ' ' << second;
        }
    }
}

TEST(DecodePage, Utf8OfAnyLength) {
    EXPECT_EQ(DecodePage(""), u"");
    EXPECT_EQ(DecodePage("a\0z"s), u"a\0z"s);
    EXPECT_EQ(DecodePage("\xE2\x80\x99"), u"\u2019");
    EXPECT_EQ(DecodePage("\xF0\x9F\x8E\xB5"), u"\U0001F3B5");
    EXPECT_EQ(DecodePage("\xF4\x8F\xBF\xBF"), u"\U0010FFFF");
    EXPECT_EQ(DecodePage("\xEF\xBF\xBF"), u"\uFFFF");
}

// One byte that is none makes the whole page one of the other kind.
TEST(DecodePage, WhatIsNoUtf8IsCodePage1252) {
    for (const std::string& stray :
         {"\xC0\x80"s, "\xE0\x80\x80"s, "\xED\xA0\x80"s, "\xED\xBF\xBF"s, "\xF4\x90\x80\x80"s,
          "\xF0\x9F\x8E"s, "\xE2\x80"s, "\x80"s, "\xFF"s}) {
        const std::string page = "\xC3\xA9" + stray;
        std::u16string expected;
        for (const char byte : page) {
            expected += Old(static_cast<unsigned char>(byte));
        }
        EXPECT_EQ(DecodePage(page), expected) << ::testing::PrintToString(stray);
    }
}

TEST(DecodePage, AStrayByteBehindMegabytesCounts) {
    std::string page;
    for (int i = 0; i < 1'000'000; ++i) {
        page += "\xC3\xA9";
    }
    EXPECT_EQ(DecodePage(page), std::u16string(1'000'000, u'\u00E9'));
    page += '\x92';
    const std::u16string text = DecodePage(page);
    EXPECT_EQ(text.size(), 2'000'001u);
    EXPECT_TRUE(text.starts_with(u"\u00C3\u00A9\u00C3"));
    EXPECT_TRUE(text.ends_with(u"\u2019"));
}

// The two cuts.

TEST(CutLyrics, AUnitMoreGoesAtEachMarker) {
    EXPECT_EQ(CutLyrics(u"<p><div id=\"lyrics\">\nwords\n</div>rest"), u"words");
    EXPECT_EQ(CutLyrics(u"<div id=\"lyrics\">xwordsy</div>"), u"words");
}

TEST(CutLyrics, WithoutAFrontMarkerSeventeenUnitsGo) {
    EXPECT_EQ(CutLyrics(u"0123456789abcdefghij"), u"hij");
    EXPECT_EQ(CutLyrics(u"0123456789abcdefghij</div>"), u"hi");
    EXPECT_EQ(CutLyrics(u"0123456789abcdefg"), u"");
}

// Nothing can be left over then, and the text stays.
TEST(CutLyrics, APageThatIsShorterStays) {
    for (std::size_t length = 0; length <= 40; ++length) {
        const std::u16string page(length, u'x');
        EXPECT_EQ(CutLyrics(page), length < 17 ? page : page.substr(17)) << length;
    }
    EXPECT_EQ(CutLyrics(u"short</div>"), u"shor");
}

TEST(CutLyrics, AFrontMarkerAtTheEnd) {
    const std::u16string marker(kFront);
    EXPECT_EQ(CutLyrics(marker), marker);  // 18 units are to go, and 17 are there
    EXPECT_EQ(CutLyrics(u"0123456789abcdefghij" + marker), u"0123456789abcdefghij" + marker);
    EXPECT_EQ(CutLyrics(u"0123456789abcdefghij" + marker + u"\n"), u"");
    EXPECT_EQ(CutLyrics(marker + u"\nx"), u"x");
}

TEST(CutLyrics, ABackMarkerWithNothingInFront) {
    const std::u16string marker(kFront);
    EXPECT_EQ(CutLyrics(marker + u"\n</div>rest"), u"</div>rest");
    EXPECT_EQ(CutLyrics(marker + u"\nx</div>rest"), u"");
    EXPECT_EQ(CutLyrics(marker + u"</div>rest"), u"/div>rest");
}

TEST(CutLyrics, TheFirstOfSeveralMarkersCounts) {
    EXPECT_EQ(Cleaned(u"one </div> two"), u"one");
    EXPECT_EQ(Cleaned(u"one <div id=\"lyrics\"> two"), u"one <div id=\"lyrics\"> two");
    EXPECT_EQ(Cleaned(u"<b>one</b><div>two</div>three"), u"<b>one</b><div>tw");
}

TEST(CutLyrics, ABackMarkerBeforeTheFrontOneIsCutOff) {
    EXPECT_EQ(CutLyrics(u"</div>" + Marked(u"words")), u"words");
    EXPECT_EQ(CutLyrics(u"</div><div id=\"lyrics\">\nwords"), u"words");
}

TEST(CutLyrics, MarkersAreFoundIgnoringCaseInTheOneFolding) {
    EXPECT_EQ(CutLyrics(u"<DIV ID=\"LYRICS\">\nwords\n</DIV>x"), u"words");
    EXPECT_EQ(CutLyrics(u"<dIv iD=\"LyRiCs\">\nwords\n</DiV>x"), u"words");
    EXPECT_EQ(CutLyrics(u"<d\u0131v \u0131d=\"lyr\u0131c\u017F\">\nwords\n</d\u0131v>x"), u"words");
    // The dotted capital is a letter of its own.
    EXPECT_EQ(Cleaned(u"one </D\u0130V> two"), u"one </D\u0130V> two");
}

TEST(CutLyrics, WhatIsNearlyAMarkerIsNone) {
    EXPECT_EQ(CutLyrics(u"<div id='lyrics'>\nwords"), u"\r\nwords");
    EXPECT_EQ(CutLyrics(u"<div  id=\"lyrics\">\nwords"), u">\r\nwords");
    EXPECT_EQ(Cleaned(u"one </div > two"), u"one </div > two");
    EXPECT_EQ(Cleaned(u"one </div"), u"one </div");
}

// What goes behind the front marker may be the beginning of a back marker.
TEST(CutLyrics, OnlyWhatIsLeftIsLookedThroughForTheBackMarker) {
    EXPECT_EQ(CutLyrics(u"<div id=\"lyrics\"></div>\n</div>"), u"/div>");
}

// The replacements.

TEST(CutLyrics, EachReplacement) {
    EXPECT_EQ(Cleaned(u"a&nbsp;b"), u"a& b");
    EXPECT_EQ(Cleaned(u"anbsp;b"), u"a b");
    EXPECT_EQ(Cleaned(u"a&amp;b"), u"a&b");
    EXPECT_EQ(Cleaned(u"a\u00E2\u20AC\u2122b"), u"a'b");
    EXPECT_EQ(Cleaned(u"a\u00E2\u20AC\u02DCb"), u"a'b");
    EXPECT_EQ(Cleaned(u"a\u2019b\u2018c"), u"a'b'c");
    EXPECT_EQ(Cleaned(u"a<br />b"), u"ab");
    EXPECT_EQ(Cleaned(u"a&quot;b"), u"a\"b");
    EXPECT_EQ(Cleaned(u"a\nb"), u"a\r\nb");
    EXPECT_EQ(Cleaned(u"a\r\nb"), u"a\r\r\nb");
    EXPECT_EQ(Cleaned(u"a\rb"), u"a\rb");
}

TEST(CutLyrics, ReplacementsTellCaseApart) {
    for (const std::u16string_view other :
         {u"a&NBSP;b", u"a&Amp;b", u"a<BR />b", u"a<br/>b", u"a<br>b", u"a&QUOT;b", u"a&#39;b",
          u"a&lt;b", u"a\u201Cb\u201D", u"a\u00C2\u20AC\u2122b", u"a\u00E2\u20ACb"}) {
        EXPECT_EQ(Cleaned(other), other);
    }
}

TEST(CutLyrics, TheOrderOfReplacements) {
    EXPECT_EQ(Cleaned(u"&amp;quot;"), u"\"");  // the ampersand comes before the quote
    EXPECT_EQ(Cleaned(u"&amp;nbsp;"), u"& ");  // and behind the blank
    EXPECT_EQ(Cleaned(u"&nbsp;quot;"), u"& quot;");
    EXPECT_EQ(Cleaned(u"&amp;amp;amp;"), u"&amp;amp;");
    EXPECT_EQ(Cleaned(u"&qu<br />ot;"), u"\"");  // the line break before the quote
    EXPECT_EQ(Cleaned(u"<br &quot;/>"), u"<br \"/>");
    EXPECT_EQ(Cleaned(u"&am<br />p;"), u"&amp;");  // but behind the ampersand
    EXPECT_EQ(Cleaned(u"\u00E2<br />\u20AC\u2122"), u"\u00E2\u20AC\u2122");
    EXPECT_EQ(Cleaned(u"n<br />bsp;"), u"nbsp;");
    EXPECT_EQ(Cleaned(u"<<br />br />"), u"<br />");  // what a replacement leaves is not looked at
    EXPECT_EQ(Cleaned(u"<brnbsp;/>"), u"");          // a blank that the first one made
}

TEST(CutLyrics, ReplacementsMakeNoMarkers) {
    EXPECT_EQ(Cleaned(u"one </d<br />iv> two"), u"one </div> two");
    EXPECT_EQ(CutLyrics(u"<div id=&quot;lyrics&quot;>\nwords"), u"ics\">\r\nwords");
}

TEST(CutLyrics, EveryUnitSurvives) {
    std::u16string all;
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        if (unit != '\n' && unit != 0x2018 && unit != 0x2019) {
            all += static_cast<char16_t>(unit);
        }
    }
    EXPECT_TRUE(Cleaned(all) == all);
    const std::u16string broken = u"\0\xD800\0\xDC00\xDC00\xD800"s;
    EXPECT_EQ(Cleaned(broken), broken);
}

// The largest page there is. What takes time with the square of the length would never end.
TEST(CutLyrics, MegabytesTakeNoTime) {
    struct Case {
        std::u16string_view piece;
        std::u16string_view becomes;
    };
    constexpr Case kCases[] = {{u"\n", u"\r\n"},   {u"&amp;quot;", u"\""},
                               {u"\u2019", u"'"},  {u"<br />", u""},
                               {u"</di", u"</di"}, {u"<div id=\"lyrics", u"<div id=\"lyrics"}};
    constexpr std::size_t kLength = 2 << 20;
    for (const auto& [piece, becomes] : kCases) {
        std::u16string page(kFront);
        page += u'\n';
        std::u16string expected;
        const std::size_t count = kLength / piece.size();
        for (std::size_t i = 0; i < count; ++i) {
            page += piece;
            expected += becomes;
        }
        EXPECT_TRUE(CutLyrics(page) == expected) << ::testing::PrintToString(std::u16string(piece));
    }
}

}  // namespace
}  // namespace sarnel

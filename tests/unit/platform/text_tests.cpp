#include "platform/text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace platform {
namespace {

// A byte that is no part of UTF-8, as the unit that stands for it.
std::u16string Escaped(std::string_view bytes) {
    std::u16string text;
    for (const char byte : bytes) {
        text.push_back(static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(byte)));
    }
    return text;
}

std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) {
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

TEST(Text, AByteBelow128IsItselfAndAnyOtherAloneIsEscaped) {
    for (int value = 0; value < 256; ++value) {
        const std::string bytes = Bytes({value});
        const std::u16string expected =
            value < 128 ? std::u16string(1, static_cast<char16_t>(value)) : Escaped(bytes);
        EXPECT_EQ(Widen(bytes), expected) << value;
        EXPECT_EQ(Narrow(expected), bytes) << value;
    }
}

TEST(Text, OfAllPairsOfBytesOnlyTwoByteSequencesAreOneCharacter) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string bytes = Bytes({first, second});
            const bool sequence =
                first >= 0xC2 && first <= 0xDF && second >= 0x80 && second <= 0xBF;
            const std::u16string expected =
                sequence ? std::u16string(
                               1, static_cast<char16_t>((first - 0xC0) * 64 + (second - 0x80)))
                         : Widen(bytes.substr(0, 1)) + Widen(bytes.substr(1));
            ASSERT_EQ(Widen(bytes), expected) << first << ' ' << second;
            ASSERT_EQ(Narrow(expected), bytes) << first << ' ' << second;
        }
    }
}

TEST(Text, KnownCharactersOfEveryLength) {
    const std::vector<std::pair<std::string, std::u16string>> known{
        {"abc", u"abc"},
        {"\xC2\x80", u"\u0080"},
        {"\xC3\xA9", u"\u00E9"},
        {"\xDF\xBF", u"\u07FF"},
        {"\xE0\xA0\x80", u"\u0800"},
        {"\xE2\x82\xAC", u"\u20AC"},
        {"\xED\x9F\xBF", u"\uD7FF"},
        {"\xEE\x80\x80", u"\uE000"},
        {"\xEF\xBF\xBF", u"\uFFFF"},
        {"\xF0\x90\x80\x80", u"\U00010000"},
        {"\xF0\x9D\x84\x9E", u"\U0001D11E"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
    };
    for (const auto& [bytes, text] : known) {
        EXPECT_EQ(Widen(bytes), text);
        EXPECT_EQ(Narrow(text), bytes);
    }
}

TEST(Text, OverlongFormsAreNoCharacters) {
    for (const std::string& bytes :
         {Bytes({0xC0, 0x80}), Bytes({0xC1, 0xBF}), Bytes({0xE0, 0x80, 0x80}),
          Bytes({0xE0, 0x9F, 0xBF}), Bytes({0xF0, 0x80, 0x80, 0x80}),
          Bytes({0xF0, 0x8F, 0xBF, 0xBF})}) {
        EXPECT_EQ(Widen(bytes), Escaped(bytes));
        EXPECT_EQ(Narrow(Widen(bytes)), bytes);
    }
}

TEST(Text, EncodedSurrogatesAreNoCharacters) {
    for (int second = 0xA0; second <= 0xBF; ++second) {
        for (const int third : {0x80, 0x9E, 0xBF}) {
            const std::string bytes = Bytes({0xED, second, third});
            EXPECT_EQ(Widen(bytes), Escaped(bytes));
            EXPECT_EQ(Narrow(Widen(bytes)), bytes);
        }
    }
    // A pair of them neither: as text it would be one character and lose its six bytes.
    const std::string pair = Bytes({0xED, 0xA0, 0xB4, 0xED, 0xB4, 0x9E});
    EXPECT_EQ(Widen(pair), Escaped(pair));
    EXPECT_EQ(Narrow(Widen(pair)), pair);
}

TEST(Text, NumbersPastTheLastCharacterAreNone) {
    for (const std::string& bytes :
         {Bytes({0xF4, 0x90, 0x80, 0x80}), Bytes({0xF5, 0x80, 0x80, 0x80}),
          Bytes({0xF8, 0x88, 0x80, 0x80, 0x80}), Bytes({0xFF, 0xFE})}) {
        EXPECT_EQ(Widen(bytes), Escaped(bytes));
        EXPECT_EQ(Narrow(Widen(bytes)), bytes);
    }
}

TEST(Text, ASequenceThatBreaksOffIsEscapedAndWhatFollowsIsRead) {
    EXPECT_EQ(Widen("\xE2\x82"), Escaped("\xE2\x82"));
    EXPECT_EQ(Widen("\xE2\x82z"), Escaped("\xE2\x82") + u"z");
    EXPECT_EQ(Widen("\xE2\xC3\xA9"), Escaped("\xE2") + u"\u00E9");
    EXPECT_EQ(Widen("\xF0\x9D\x84\xC3\xA9"), Escaped("\xF0\x9D\x84") + u"\u00E9");
    EXPECT_EQ(Widen("a\xF0\x9D\x84"), u"a" + Escaped("\xF0\x9D\x84"));
}

TEST(Text, AZeroByteIsACharacterLikeOthers) {
    const std::string bytes("a\0b", 3);
    EXPECT_EQ(Widen(bytes), std::u16string(u"a\0b", 3));
    EXPECT_EQ(Narrow(Widen(bytes)), bytes);
}

TEST(Text, RandomBytesSurviveTheRoundTrip) {
    std::mt19937 random(20261121);
    // Mostly bytes that mean something to a decoder: leads, edges, continuations.
    const std::string telling =
        Bytes({0x00, 0x41, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xC2,
               0xDF, 0xE0, 0xE1, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF4, 0xF5, 0xFF});
    for (int round = 0; round < 50'000; ++round) {
        std::string bytes(random() % 12, '\0');
        for (char& byte : bytes) {
            byte = random() % 4 == 0 ? static_cast<char>(random() % 256)
                                     : telling[random() % telling.size()];
        }
        ASSERT_EQ(Narrow(Widen(bytes)), bytes) << "round " << round;
    }
}

TEST(Text, WidenIntoTakesThePlaceOfWhatWasThere) {
    std::u16string text = u"something that is longer";
    WidenInto("a\xC3\xA9z", text);
    EXPECT_EQ(text, u"a\u00E9z");
    WidenInto("", text);
    EXPECT_EQ(text, u"");
}

// Capitals and their small letters, of every alphabet that is lowered.
constexpr std::u16string_view kCapitals =
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    u"ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞ"
    u"ĀĂĄĆĈĊČĎĐĒĔĖĘĚĜĞĠĢĤĦĨĪĬĮĲĴĶĹĻĽĿŁŃŅŇŊŌŎŐŒŔŖŘŚŜŞŠŢŤŦŨŪŬŮŰŲŴŶŸŹŻŽ"
    u"ΆΈΉΊΌΎΏΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΤΥΦΧΨΩΪΫ"
    u"ЀЁЂЃЄЅІЇЈЉЊЋЌЍЎЏАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯ";
constexpr std::u16string_view kSmall =
    u"abcdefghijklmnopqrstuvwxyz"
    u"àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþ"
    u"āăąćĉċčďđēĕėęěĝğġģĥħĩīĭįĳĵķĺļľŀłńņňŋōŏőœŕŗřśŝşšţťŧũūŭůűųŵŷÿźżž"
    u"άέήίόύώαβγδεζηθικλμνξοπρστυφχψωϊϋ"
    u"ѐёђѓєѕіїјљњћќѝўџабвгдежзийклмнопрстуфхцчшщъыьэюя";
static_assert(kCapitals.size() == kSmall.size());

TEST(Text, CapitalsOfTheNamedAlphabetsAreLoweredAndNothingElseChanges) {
    for (char32_t unit = 0; unit < 0x460; ++unit) {
        const auto plain = static_cast<char16_t>(unit);
        const std::size_t at = kCapitals.find(plain);
        const char16_t expected = at == std::u16string_view::npos ? plain : kSmall[at];
        EXPECT_EQ(LowerUnit(plain), expected) << std::hex << static_cast<unsigned>(unit);
    }
    for (const char16_t unit : std::u16string_view(u"\x4E00\xD800\xDCC3\xDFFF\xFFFF")) {
        EXPECT_EQ(LowerUnit(unit), unit);
    }
}

TEST(Text, LowerWorksUnitByUnit) {
    EXPECT_EQ(Lower(u"/Music/ÄRGER 12.MP3"), u"/music/ärger 12.mp3");
    EXPECT_EQ(Lower(u""), u"");
    EXPECT_EQ(Lower(kCapitals), kSmall);
}

TEST(Text, EqualIgnoringCaseComparesLengthAndEveryUnit) {
    EXPECT_TRUE(EqualIgnoringCase(u"/ADD", u"/add"));
    EXPECT_TRUE(EqualIgnoringCase(u"ЁЛКА", u"ёлка"));
    EXPECT_TRUE(EqualIgnoringCase(u"", u""));
    EXPECT_FALSE(EqualIgnoringCase(u"abc", u"abcd"));
    EXPECT_FALSE(EqualIgnoringCase(u"abcd", u"abc"));
    EXPECT_FALSE(EqualIgnoringCase(u"[", u"{"));  // 32 apart as capitals are, but no letters
    EXPECT_FALSE(EqualIgnoringCase(u"×", u"÷"));
}

TEST(Text, TrimBlanksTakesBlanksAndNoOtherSpace) {
    EXPECT_EQ(TrimBlanks(u"  a b  "), u"a b");
    EXPECT_EQ(TrimBlanks(u"a"), u"a");
    EXPECT_EQ(TrimBlanks(u"   "), u"");
    EXPECT_EQ(TrimBlanks(u""), u"");
    EXPECT_EQ(TrimBlanks(u" \ta\n "), u"\ta\n");
    EXPECT_EQ(TrimBlanks(u"\u00A0a\u00A0"), u"\u00A0a\u00A0");
}

}  // namespace
}  // namespace platform

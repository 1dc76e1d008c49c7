#include "platform/base/text.h"

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

TEST(Text, HalvesOfACharacterAreToldApart) {
    EXPECT_FALSE(IsSurrogate(0xD7FF));
    for (const char16_t unit : {char16_t{0xD800}, char16_t{0xDBFF}}) {
        EXPECT_TRUE(IsSurrogate(unit) && IsHighSurrogate(unit) && !IsLowSurrogate(unit));
    }
    for (const char16_t unit : {char16_t{0xDC00}, char16_t{0xDFFF}}) {
        EXPECT_TRUE(IsSurrogate(unit) && IsLowSurrogate(unit) && !IsHighSurrogate(unit));
    }
    EXPECT_FALSE(IsSurrogate(0xE000));
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

// Small letters and their capitals, of every alphabet that has two cases.
constexpr std::u16string_view kSmall =
    u"abcdefghijklmnopqrstuvwxyz"
    u"\u00B5àáâãäåæçèéêëìíîïðñòóôõöøùúûüýþÿ"
    u"āăąćĉċčďđēĕėęěĝğġģĥħĩīĭįıĳĵķĺļľŀłńņňŋōŏőœŕŗřśŝşšţťŧũūŭůűųŵŷźżž\u017F"  // long s
    u"ƀƃƅƈƌƒƕƙƚƞơƣƥƨƭưƴƶƹƽƿǅǆǈǉǋǌǎǐǜǝǟǳǵșțȟȼɂɓɔɖəɣɨɯɵʊʒ"
    u"άέήίόύώαβγδεζηθικλμνξοπρςστυφχψωϊϋϐϑϕϖϗϙϝϲϳϵϸϻ"
    u"абвгдежзийклмнопрстуфхцчшщъыьэюяѐёђѓєѕіїјљњћќѝўџѡѳҁґқүәӂӏө"
    u"աբգօֆ"                     // Armenian
    u"აბჰჺჽჿ"                    // Georgian: the capitals are the young ones
    u"\u13F8\u13FD\uAB70\uABBF"  // Cherokee: the small letters are
    u"ḁẕẛạảấằặẽếểễệỉịọỏốồổỗộớờởỡợụủứừửữựỳỵỷỹỻ"
    u"ἀἇὀὑὣὰᾀᾧᾰᾳ\u1FBEῃῥῳ"
    u"ⅎⅰⅿↄⓐⓩⰰⱡⱥⱬⲁⳣⴀⴥꙁꚁꜣꝏꝺꞌꞔꟃꭓａｚ";
constexpr std::u16string_view kCapitals =
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZ"
    u"\u039CÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖØÙÚÛÜÝÞŸ"
    u"ĀĂĄĆĈĊČĎĐĒĔĖĘĚĜĞĠĢĤĦĨĪĬĮIĲĴĶĹĻĽĿŁŃŅŇŊŌŎŐŒŔŖŘŚŜŞŠŢŤŦŨŪŬŮŰŲŴŶŹŻŽS"
    u"ɃƂƄƇƋƑǶƘȽȠƠƢƤƧƬƯƳƵƸƼǷǄǄǇǇǊǊǍǏǛƎǞǱǴȘȚȞȻɁƁƆƉƏƔƗƜƟƱƷ"
    u"ΆΈΉΊΌΎΏΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣΣΤΥΦΧΨΩΪΫΒΘΦΠϏϘϜϹͿΕϷϺ"
    u"АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯЀЁЂЃЄЅІЇЈЉЊЋЌЍЎЏѠѲҀҐҚҮӘӁӀӨ"
    u"ԱԲԳՕՖ"
    u"\u1C90\u1C91\u1CB0\u1CBA\u1CBD\u1CBF"
    u"\u13F0\u13F5\u13A0\u13EF"
    u"ḀẔṠẠẢẤẰẶẼẾỂỄỆỈỊỌỎỐỒỔỖỘỚỜỞỠỢỤỦỨỪỬỮỰỲỴỶỸỺ"
    u"ἈἏὈὙὫ\u1FBAᾈᾯᾸᾼΙῌῬῼ"
    u"ℲⅠⅯↃⒶⓏⰀⱠȺⱫⲀⳢႠჅꙀꚀꜢꝎꝹꞋꟄꟂꞳＡＺ";
static_assert(kCapitals.size() == kSmall.size());

TEST(Text, TheCaseOfAsciiChangesItsLettersAlone) {
    const std::string capitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    const std::string small = "abcdefghijklmnopqrstuvwxyz";
    for (int value = 0; value < 256; ++value) {
        const char byte = static_cast<char>(value);
        const std::size_t capital = capitals.find(byte);
        const std::size_t letter = small.find(byte);
        EXPECT_EQ(LowerAscii(byte), capital != std::string::npos ? small[capital] : byte) << value;
        EXPECT_EQ(UpperAscii(byte), letter != std::string::npos ? capitals[letter] : byte) << value;
    }
    EXPECT_EQ(LowerAscii(u'Z'), u'z');
    EXPECT_EQ(UpperAscii(u'z'), u'Z');
    EXPECT_EQ(LowerAscii(u'\u0141'), u'\u0141');  // whose low byte is an A
    EXPECT_EQ(UpperAscii(u'\u0161'), u'\u0161');  // and an a
}

TEST(Text, SmallLettersOfEveryAlphabetHaveTheirCapitals) {
    for (std::size_t i = 0; i < kSmall.size(); ++i) {
        EXPECT_EQ(UpperUnit(kSmall[i]), kCapitals[i]) << std::hex << unsigned{kSmall[i]};
        EXPECT_EQ(UpperUnit(kCapitals[i]), kCapitals[i]) << std::hex << unsigned{kCapitals[i]};
    }
    EXPECT_EQ(Upper(kSmall), kCapitals);
    EXPECT_TRUE(EqualIgnoringCase(kSmall, kCapitals));
}

// Stretches of the alphabets, each wholly: every `step`th unit from one to another lies so far
// behind its capital, and the units between are no small letters.
struct Stretch {
    char16_t first;
    char16_t last;
    int step;
    int distance;
};
const std::vector<Stretch> kStretches{
    {u'a', u'z', 1, 32},        {0xE0, 0xF6, 1, 32},        {0xF8, 0xFE, 1, 32},
    {0x101, 0x12F, 2, 1},       {0x133, 0x137, 2, 1},       {0x13A, 0x148, 2, 1},
    {0x14B, 0x177, 2, 1},       {0x17A, 0x17E, 2, 1},       {0x1CE, 0x1DC, 2, 1},
    {0x1DF, 0x1EF, 2, 1},       {0x1F9, 0x21F, 2, 1},       {0x223, 0x233, 2, 1},
    {0x247, 0x24F, 2, 1},       {0x3AD, 0x3AF, 1, 37},      {0x3B1, 0x3C1, 1, 32},
    {0x3C3, 0x3CB, 1, 32},      {0x3D9, 0x3EF, 2, 1},       {0x430, 0x44F, 1, 32},
    {0x450, 0x45F, 1, 80},      {0x461, 0x481, 2, 1},       {0x48B, 0x4BF, 2, 1},
    {0x4C2, 0x4CE, 2, 1},       {0x4D1, 0x52F, 2, 1},       {0x561, 0x586, 1, 48},
    {0x10D0, 0x10FA, 1, -3008}, {0x10FD, 0x10FF, 1, -3008}, {0x13F8, 0x13FD, 1, 8},
    {0x1E01, 0x1E95, 2, 1},     {0x1EA1, 0x1EFF, 2, 1},     {0x1F00, 0x1F07, 1, -8},
    {0x2170, 0x217F, 1, 16},    {0x24D0, 0x24E9, 1, 26},    {0x2C30, 0x2C5F, 1, 48},
    {0x2C81, 0x2CE3, 2, 1},     {0x2D00, 0x2D25, 1, 7264},  {0xA641, 0xA66D, 2, 1},
    {0xA681, 0xA69B, 2, 1},     {0xA723, 0xA72F, 2, 1},     {0xA733, 0xA76F, 2, 1},
    {0xAB70, 0xABBF, 1, 38864}, {0xFF41, 0xFF5A, 1, 32},
};

TEST(Text, WholeAlphabetsLieSoFarBehindTheirCapitals) {
    for (const Stretch& stretch : kStretches) {
        for (int unit = stretch.first; unit <= stretch.last; ++unit) {
            const bool isSmall = (unit - stretch.first) % stretch.step == 0;
            EXPECT_EQ(UpperUnit(static_cast<char16_t>(unit)),
                      isSmall ? unit - stretch.distance : unit)
                << std::hex << unit;
        }
    }
}

TEST(Text, ACapitalIsItsOwnAndWhatHasNoCapitalToo) {
    int small = 0;
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t upper = UpperUnit(static_cast<char16_t>(unit));
        EXPECT_EQ(UpperUnit(upper), upper) << std::hex << unit;
        small += upper != unit ? 1 : 0;
    }
    EXPECT_EQ(small, 1190);  // so many letters of Unicode 15
    // Two letters as a capital (sharp s, an n with an apostrophe, a ligature), no letters, no
    // character, and letters without a capital or with one past U+FFFF only.
    for (const char16_t unit :
         std::u16string_view(u"\u00DF\u0149\u01F0\u0390\u0587\u1E96\u1F50\uFB01×÷[{`@\u0130"
                             u"\u00AA\u02B0\u1D2C\x4E00\xD800\xDC28\xDCC3\xDFFF\xFFFF")) {
        EXPECT_EQ(UpperUnit(unit), unit) << std::hex << unsigned{unit};
    }
}

TEST(Text, UpperWorksUnitByUnit) {
    EXPECT_EQ(Upper(u"/Music/Ärger straße 12.mp3"), u"/MUSIC/ÄRGER STRAßE 12.MP3");
    EXPECT_EQ(Upper(u""), u"");
    EXPECT_EQ(Upper(u"\U00010428"), u"\U00010428");  // the small letter of U+10400
}

TEST(Text, EqualIgnoringCaseComparesLengthAndEveryUnit) {
    EXPECT_TRUE(EqualIgnoringCase(u"/ADD", u"/add"));
    EXPECT_TRUE(EqualIgnoringCase(u"ЁЛКА", u"ёлка"));
    EXPECT_TRUE(EqualIgnoringCase(u"Nhạc Việt", u"NHẠC VIỆT"));
    EXPECT_TRUE(EqualIgnoringCase(u"ΟΔΟΣ", u"οδος"));  // its last letter has a form of its own
    EXPECT_TRUE(EqualIgnoringCase(u"οδοσ", u"οδος"));
    EXPECT_FALSE(EqualIgnoringCase(u"straße", u"STRASSE"));
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

#include "tests/scenario/words.h"

#include <gtest/gtest.h>

namespace scenario {
namespace {

std::vector<std::string> Raw(std::string_view line) {
    std::vector<std::string> raw;
    for (const Word& word : SplitWords(line)) {
        raw.push_back(word.raw);
    }
    return raw;
}

using Words = std::vector<std::string>;

TEST(SplitWordsTest, CutsAtBlanksAndTabs) {
    EXPECT_EQ(Raw("  host\topen  x "), (Words{"host", "open", "x"}));
    EXPECT_EQ(Raw(" \t "), Words{});
}

TEST(SplitWordsTest, QuotedWordsHoldBlanksAndEscapedQuotes) {
    const std::vector<Word> words = SplitWords(R"(say "a b" "" "\"x\\" y)");
    ASSERT_EQ(words.size(), 5u);
    EXPECT_EQ(words[1].raw, "a b");
    EXPECT_TRUE(words[1].quoted);
    EXPECT_EQ(words[2].raw, "");
    EXPECT_TRUE(words[2].quoted);
    EXPECT_EQ(words[3].raw, R"(\"x\\)");
    EXPECT_EQ(words[4].raw, "y");
    EXPECT_FALSE(words[4].quoted);
}

TEST(SplitWordsTest, ParenthesesHoldBlanksAndQuotes) {
    EXPECT_EQ(Raw(R"(? f( 1, "a ) b" ) x)"), (Words{"?", R"(f( 1, "a ) b" ))", "x"}));
}

TEST(SplitWordsTest, RefusesWhatIsNotClosed) {
    EXPECT_THROW(SplitWords(R"(a "b)"), Mistake);
    EXPECT_THROW(SplitWords(R"(a "b\")"), Mistake);
    EXPECT_THROW(SplitWords(R"(f("a)"), Mistake);
    EXPECT_THROW(SplitWords("f(1"), Mistake);
    EXPECT_THROW(SplitWords("f(1))"), Mistake);
    EXPECT_THROW(SplitWords(R"("a"b)"), Mistake);
    EXPECT_THROW(SplitWords(std::string(100000, '(')), Mistake);
}

TEST(UnescapeTest, ResolvesEveryEscape) {
    EXPECT_EQ(Unescape(R"(\"\\\r\n\t)"), u"\"\\\r\n\t");
    EXPECT_EQ(Unescape(R"(\x41\x00z)"), std::u16string(u"A\0z", 3));
    EXPECT_EQ(Unescape(R"(\u00e9\uD83D\uDE00)"), u"\u00e9\U0001F600");
}

TEST(UnescapeTest, BytesMakeCharactersTogether) {
    EXPECT_EQ(Unescape(R"(\xC3\xA9)"), u"\u00e9");
    EXPECT_EQ(Unescape("\xC3\\xA9"), u"\u00e9");
    const char16_t strayByte[] = {u'a', 0xDCE9, 0};
    EXPECT_EQ(Unescape(R"(a\xE9)"), strayByte);
}

TEST(UnescapeTest, RefusesOtherEscapes) {
    for (const char* raw : {R"(\q)", R"(\x)", R"(\x4)", R"(\xG1)", R"(\u123)", R"(\u12G4)", "\\",
                            R"(\X41)", R"(\x-1)", R"(\x+1)"}) {
        EXPECT_THROW(Unescape(raw), Mistake) << raw;
    }
}

TEST(QuoteTest, EscapesWhatWouldBreakALine) {
    EXPECT_EQ(Quote(u"a \"b\" \\ \r\n\t"), R"("a \"b\" \\ \r\n\t")");
    EXPECT_EQ(Quote(u""), R"("")");
}

TEST(QuoteTest, OtherCharactersAreUtf8) {
    EXPECT_EQ(Quote(u"\u017b\u6771\U0001F600"), "\"\u017b\u6771\U0001F600\"");
}

TEST(QuoteTest, WhatIsNoCharacterIsEscaped) {
    const char16_t text[] = {1, 0x7F, 0xDCE9, 0xD800, 0xDC00, 0xDC01, 0};
    EXPECT_EQ(Quote(text), "\"\\x01\\x7F\\xE9\U00010000\\uDC01\"");
    const char16_t lone[] = {0xD800, u'x', 0};
    EXPECT_EQ(Quote(lone), R"("\uD800x")");
}

TEST(QuoteTest, IsUndoneByUnescape) {
    const char16_t text[] = {u'"', u'\\', 0x1F, 0xDC80, u'\u00e9', 0xD83D, 0xDE00, u'\n', 0};
    const std::string quoted = Quote(text);
    EXPECT_EQ(Unescape(quoted.substr(1, quoted.size() - 2)), text);
}

TEST(CanonicalTest, WritesQuotedWordsInOneForm) {
    EXPECT_EQ(Canonical(R"(10 "\u00e9" 0 "\x41")"), "10 \"\u00e9\" 0 \"A\"");
    EXPECT_EQ(Canonical("True"), "True");
}

TEST(CanonicalTest, LeavesWhatIsNoQuotedWord) {
    EXPECT_EQ(Canonical(R"(5" wide)"), R"(5" wide)");
    EXPECT_EQ(Canonical(R"("\q")"), R"("\q")");
}

TEST(ReplacedTest, ReplacesEveryOccurrence) {
    EXPECT_EQ(Replaced(u"$D/a:$D", u"$D", u"/x$D"), u"/x$D/a:/x$D");
    EXPECT_EQ(Replaced(u"", u"$D", u"y"), u"");
}

}  // namespace
}  // namespace scenario

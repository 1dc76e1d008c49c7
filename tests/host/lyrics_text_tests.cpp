// Words from bytes, and the names of songs and of their files.
#include <gtest/gtest.h>

#include "host/lyrics/song.h"
#include "host/lyrics/words_text.h"

namespace veldrin {
namespace {

TEST(LyricsText, LineEndsAndEmptyEndsArePutRight) {
    EXPECT_EQ(CleanWords("\r\n \n  one\r\ntwo\rthree\n\nfour \n\n\t"), "  one\ntwo\nthree\n\nfour");
    EXPECT_EQ(CleanWords(""), "");
    EXPECT_EQ(CleanWords(" \r\n\t"), "");
    EXPECT_EQ(CleanWords(std::string("a\0b\0", 4)), "ab");
}

TEST(LyricsText, BytesAreUtf8OrCodePage1252) {
    EXPECT_EQ(CleanWords("\xEF\xBB\xBF\xC3\xA9"), "\xC3\xA9");
    EXPECT_EQ(CleanWords("caf\xE9 \x80"), "caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(CleanWords("\xED\xA0\x80").find('\xED'), std::string::npos);  // half a character
}

TEST(LyricsText, Utf16IsReadWhereItSaysSo) {
    EXPECT_EQ(CleanWords(std::string("\xFF\xFE"
                                     "a\0\xE9\0\r\0\n\0b\0",
                                     12)),
              "a\xC3\xA9\nb");
    EXPECT_EQ(CleanWords(std::string("\xFE\xFF\0a\0b", 6)), "ab");
    EXPECT_EQ(CleanWords(std::string("\xFF\xFE\x80\xDC"
                                     "a\0!",
                                     7)),
              "\xEF\xBF\xBD"
              "a");
    EXPECT_EQ(CleanWords("\xFF\xFE"), "");
}

TEST(LyricsText, TooManyWordsAreNone) {
    EXPECT_EQ(CleanWords(std::string(kMostWords, 'x')).size(), kMostWords);
    EXPECT_EQ(CleanWords(std::string(kMostWords + 1, 'x')), "");
}

TEST(LyricsText, TimesAndFactsGo) {
    EXPECT_EQ(
        WithoutTimes("[ar:Ann]\n[ti: Blue]\n[offset:+100]\n[LENGTH: 3:10]\n\n[00:01.00]One\n"
                     "[00:02.50][01:02.50] Two\n[00:03.00]\n[00:04:25]<00:04.25>Th<00:04.50>ree"),
        "One\nTwo\n\nThree");
}

TEST(LyricsText, WhatOnlyLooksLikeTimesStays) {
    const std::string words =
        "[Chorus]\n[Ann: sings]\nAt [02:10] in the <night>\n[]\n[:]\n[1:2x]\n[12]\n[1:]\n[:1]\n"
        "<00:01>\n[000000000000000:01]\n[ar:open";
    EXPECT_EQ(WithoutTimes(words), words);
    EXPECT_EQ(WithoutTimes(""), "");
    EXPECT_EQ(WithoutTimes("[00:01.00]"), "");
}

TEST(LyricsText, SongIsPartedAtTheFirstSeparator) {
    EXPECT_EQ(SongNamed("Ann - Blue - Live"), (Song{"Ann", "Blue - Live"}));
    EXPECT_EQ(SongNamed("Morning"), (Song{"", "Morning"}));
    EXPECT_EQ(SongAskedFor("Ann - Blue - Live"), (Song{"Ann", "Blue - Live"}));
    EXPECT_EQ(SongAskedFor("Morning"), (Song{"", "ning"}));
    EXPECT_EQ(SongAskedFor("b\xE9"), (Song{"", ""}));
    EXPECT_EQ(LineOf({"Ann", "Blue"}), "Ann - Blue");
    EXPECT_EQ(LineOf({"", "Blue"}), "Blue");
}

TEST(LyricsText, NamesOfFilesLeadNowhereElse) {
    EXPECT_EQ(WordsFileName({"Ann", "Blue"}), "Ann - Blue.txt");
    EXPECT_EQ(WordsFileName({"AC/DC", "../x"}), "AC_DC - .._x.txt");
    EXPECT_EQ(WordsFileName({"..", "x"}), "__ - x.txt");
    EXPECT_EQ(WordsFileName({"", ".."}), "__.txt");
    EXPECT_EQ(WordsFileName({"", ""}), "_.txt");
    EXPECT_EQ(WordsFileName({std::string("a\0b", 3), "\n"}), "a_b - _.txt");
}

TEST(LyricsText, LongNamesOfFilesAreCutAndStillTwo) {
    std::string accents;
    for (int i = 0; i < 200; ++i) {
        accents += "\xC3\xA9";
    }
    const std::string one = WordsFileName({"A", accents + "1"});
    const std::string two = WordsFileName({"A", accents + "2"});
    EXPECT_NE(one, two);
    for (const std::string& name : {one, two}) {
        EXPECT_LE(name.size(), 240u);
        EXPECT_GE(name.size(), 238u);
        EXPECT_TRUE(name.ends_with(".txt"));
        EXPECT_EQ(CleanWords(name), name);  // no half characters
    }
}

}  // namespace
}  // namespace veldrin

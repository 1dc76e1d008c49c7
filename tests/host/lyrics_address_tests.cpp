#include "host/lyrics/address.h"

#include <gtest/gtest.h>

namespace veldrin {
namespace {

using Note = LyricsAddress::Note;
using LyricsPage = LyricsAddress::Page;

Song ReadAs(const std::string& target) {
    const auto address = ParseAddress(target);
    EXPECT_TRUE(address && address->page == LyricsPage::kRead) << target;
    return address ? address->song : Song();
}

LyricsAddress EditAs(const std::string& target) {
    const auto address = ParseAddress(target);
    EXPECT_TRUE(address && address->page == LyricsPage::kEdit) << target;
    return address.value_or(LyricsAddress());
}

TEST(LyricsAddress, NamesComeWithNothingEscapedButBlanks) {
    EXPECT_EQ(ReadAs("/winamp03/plugin/?artist=Ann%20Lee&title=Blue%20Sky"),
              (Song{"Ann Lee", "Blue Sky"}));
    EXPECT_EQ(ReadAs("/winamp03/plugin/?artist=A&B=C?&title=Why? 1+1=2&more"),
              (Song{"A&B=C?", "Why? 1+1=2&more"}));
    EXPECT_EQ(ReadAs("/winamp03/plugin/?artist=x&title=y&title=z"), (Song{"x&title=y", "z"}));
    EXPECT_EQ(ReadAs("/winamp03/plugin/?artist=&title="), (Song{"", ""}));
    EXPECT_EQ(ReadAs("/winamp03/plugin/?artist=?artist=&title=t&new=1"),
              (Song{"?artist=", "t&new=1"}));
}

TEST(LyricsAddress, EscapesAreBytesAndBadOnesStand) {
    EXPECT_EQ(ReadAs("/winamp03/plugin/?artist=Bj%C3%B6rk&title=%e9%00%2F"),
              (Song{"Bj\xC3\xB6rk", std::string("\xE9\0/", 3)}));
    EXPECT_EQ(ReadAs("/winamp03/plugin/?artist=100%&title=5%zz%4%%41"), (Song{"100%", "5%zz%4%A"}));
}

TEST(LyricsAddress, EditAddressHasPlusForBlanksAndAnEnd) {
    const LyricsAddress address = EditAs("/winamp03/edit/?artist=Ann+Lee&title=Blue+Sky%2B&new=1");
    EXPECT_EQ(address.song, (Song{"Ann Lee", "Blue Sky+"}));
    EXPECT_TRUE(address.whole);
    EXPECT_EQ(address.note, Note::kNone);
    EXPECT_EQ(EditAs("/winamp03/edit/?artist=a&title=t&new=1&new=1").song, (Song{"a", "t&new=1"}));
}

TEST(LyricsAddress, EditAddressThatABrowserCutIsKnownForOne) {
    const LyricsAddress address = EditAs("/winamp03/edit/?artist=Ann&title=Song+");
    EXPECT_FALSE(address.whole);
    EXPECT_TRUE(StandsFor(address, {"Ann", "Song #1"}));
    EXPECT_FALSE(StandsFor(address, {"Ann", "Song 1"}));
    EXPECT_FALSE(StandsFor(address, {"Bob", "Song #1"}));
    EXPECT_FALSE(
        StandsFor(EditAs("/winamp03/edit/?artist=Ann&title=Song+&new=1"), {"Ann", "Song #1"}));
}

TEST(LyricsAddress, OtherPathsAreNoPages) {
    for (const char* target :
         {"", "/", "/winamp03/plugin/", "/winamp03/plugin/?artist=a",
          "/winamp03/plugin?artist=a&title=b", "/winamp03/./plugin/?artist=a&title=b",
          "/winamp03/../winamp03/plugin/?artist=a&title=b", "//winamp03/plugin/?artist=a&title=b",
          "/winamp03/edit/?title=b&artist=a&new=1", "/WINAMP03/plugin/?artist=a&title=b",
          "/winamp03/plugin/?title=a&artist=b"}) {
        EXPECT_FALSE(ParseAddress(target)) << target;
    }
}

TEST(LyricsAddress, WhatItMakesItReads) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    for (const Song& song :
         {Song{"Ann & Bob", "100% + #1 <b>\"?\""}, Song{"", "t"}, Song{all, all}}) {
        for (const Note note : {Note::kNone, Note::kSaved, Note::kRemoved}) {
            const std::string target = EditTarget(song, note);
            EXPECT_EQ(EditAs(target).song, song);
            EXPECT_EQ(EditAs(target).note, note);
            EXPECT_EQ(target.find_first_of("\"'<> \r\n#\\"), std::string::npos);
        }
    }
    EXPECT_EQ(EditTarget({"A B", "\xC3\xB6/."}),
              "/winamp03/edit/?artist=A%20B&title=%C3%B6%2F.&new=1");
}

TEST(LyricsAddress, StandsForNamesThatLoseSomethingOnTheirWay) {
    const LyricsAddress edit = EditAs("/winamp03/edit/?artist=A+B&title=1+1&new=1");
    EXPECT_TRUE(StandsFor(edit, {"A B", "1+1"}));
    EXPECT_TRUE(StandsFor(edit, {"A+B", "1 1"}));
    EXPECT_FALSE(StandsFor(edit, {"A B", "11"}));
    const LyricsAddress read = *ParseAddress("/winamp03/plugin/?artist=A&title=50%25");
    EXPECT_TRUE(StandsFor(read, {"A", "50%25"}));
    EXPECT_TRUE(StandsFor(read, {"A", "50%"}));
    EXPECT_FALSE(StandsFor(read, {"A", "50"}));
}

}  // namespace
}  // namespace veldrin

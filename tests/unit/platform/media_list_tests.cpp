#include "platform/files/media_list.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace platform {
namespace {

using namespace std::string_literals;
using PathNames = std::vector<std::string>;

TEST(MediaList, TheEndingOfTheNameTellsTheKind) {
    EXPECT_EQ(MediaListKindOf("/m/a.m3u"), MediaListKind::kM3u);
    EXPECT_EQ(MediaListKindOf("/m/A.M3U8"), MediaListKind::kM3u);
    EXPECT_EQ(MediaListKindOf("a.Pls"), MediaListKind::kPls);
    EXPECT_EQ(MediaListKindOf("a.xspf"), MediaListKind::kXspf);
    EXPECT_EQ(MediaListKindOf("a.cue"), MediaListKind::kCue);
    for (const char* name : {"a.mp3", "m3u", "a.m3u.mp3", "", "a.m3u9"}) {
        EXPECT_FALSE(MediaListKindOf(name)) << name;
    }
}

TEST(MediaList, LinesOfM3uEndInAnyWay) {
    const PathNames all{"a.mp3", "b.mp3", "c.mp3", "d.mp3"};
    EXPECT_EQ(NamesInM3u("a.mp3\nb.mp3\nc.mp3\nd.mp3"), all);
    EXPECT_EQ(NamesInM3u("a.mp3\r\nb.mp3\r\nc.mp3\r\nd.mp3\r\n"), all);
    EXPECT_EQ(NamesInM3u("a.mp3\rb.mp3\rc.mp3\rd.mp3\r"), all);
    EXPECT_EQ(NamesInM3u("\n\na.mp3\n\r\n \nb.mp3\rc.mp3\r\nd.mp3"), all);
}

TEST(MediaList, RemarksOfM3uAreNoNames) {
    EXPECT_EQ(NamesInM3u("#EXTM3U\n#EXTINF:12,Title\na\n # b\n./#c\n"), (PathNames{"a", "./#c"}));
    EXPECT_TRUE(NamesInM3u("").empty());
    EXPECT_TRUE(NamesInM3u("#EXTM3U\n").empty());
}

TEST(MediaList, BlanksAtTheEndsAreKept) {
    EXPECT_EQ(NamesInM3u("  a b \t\nc\n"), (PathNames{"  a b \t", "c"}));
}

TEST(MediaList, BytesAreKeptAndMarksTakenOff) {
    EXPECT_EQ(NamesInM3u("\xEF\xBB\xBF#EXTM3U\nb\xC3\xA9\n"), (PathNames{"b\xC3\xA9"}));
    EXPECT_EQ(NamesInM3u("\xEF\xBB\xBF/a\n"), (PathNames{"/a"}));
    EXPECT_EQ(NamesInM3u("b\xE9.mp3\n"), (PathNames{"b\xE9.mp3"}));
}

TEST(MediaList, ListsInUtf16AreReadWithTheirMark) {
    EXPECT_EQ(NamesInM3u("\xFF\xFE"
                         "a\0\xE9\0\n\0"
                         "b\0"s),
              (PathNames{"a\xC3\xA9", "b"}));
    EXPECT_EQ(NamesInM3u("\xFE\xFF"
                         "\0a\0\xE9\0\n\0b"s),
              (PathNames{"a\xC3\xA9", "b"}));
    EXPECT_EQ(NamesInM3u("\xFF\xFE"
                         "a\0b"s),
              (PathNames{"a"}));  // cut within a unit
}

TEST(MediaList, NoNameHoldsAZeroOrIsEndless) {
    EXPECT_EQ(NamesInM3u("a\0b\nc\n"s), (PathNames{"c"}));
    const std::string longest(65'536, 'x');
    EXPECT_EQ(NamesInM3u(longest + "y\n" + longest + "\nz\n"), (PathNames{longest, "z"}));
}

TEST(MediaList, BehindAMillionNamesNoneIsTaken) {
    std::string bytes;
    for (int i = 0; i < 1'000'001; ++i) {
        bytes += "a\n";
    }
    EXPECT_EQ(NamesInM3u(bytes).size(), 1'000'000U);
}

TEST(MediaList, PlsGoesByItsNumbers) {
    EXPECT_EQ(NamesInPls("[playlist]\r\nNumberOfEntries=3\r\nFile10=c d.mp3\r\nTitle2=no\r\n"
                         "file2 = b.mp3 \r\nFILE1=/a=1.mp3\r\nLength1=-1\r\nVersion=2\r\n"),
              (PathNames{"/a=1.mp3", "b.mp3", "c d.mp3"}));
}

TEST(MediaList, WhatIsNoEntryOfPlsIsPassedOver) {
    EXPECT_EQ(NamesInPls("File=a\nFile1\nFile2=\nFilex=b\nFile99999999999999999999=c\n"
                         "File-1=d\nFiles3=e\nFile4=f"),
              (PathNames{"f"}));
    EXPECT_TRUE(NamesInPls("").empty());
}

TEST(MediaList, ACueSheetNamesItsFiles) {
    EXPECT_EQ(
        NamesInCue("REM x\r\nTITLE \"T\"\r\nFILE \"a \"b\" c.flac\" WAVE\r\n  TRACK 01 AUDIO\r\n"
                   "    TITLE \"FILE\"\r\n  TRACK 02 AUDIO\r\nfile plain name.mp3 MP3\r\n"
                   "  TRACK 03 AUDIO\r\n"),
        (PathNames{"a \"b\" c.flac", "plain name.mp3"}));
}

TEST(MediaList, ACueSheetWithoutTracksIsNone) {
    EXPECT_FALSE(NamesInCue("FILE \"a.flac\" WAVE\r\n"));
    EXPECT_FALSE(NamesInCue(""));
    EXPECT_EQ(NamesInCue("TRACK 01 AUDIO\n"), PathNames());
    EXPECT_EQ(NamesInCue("FILE\nFILE \nFILE \"\" WAVE\nTRACK 1 AUDIO"), PathNames());
}

}  // namespace
}  // namespace platform

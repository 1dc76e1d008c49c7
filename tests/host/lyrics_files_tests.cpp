// Words on the disk, in files that may be anything.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>

#include "host/lyrics/words_files.h"
#include "host/lyrics/words_text.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

class LyricsFiles : public testing::Test {
  protected:
    void Write(const std::string& name, const std::string& bytes) {
        std::ofstream(scratch_.Path(name), std::ios::binary) << bytes;
    }
    std::string Beside(const std::string& media) { return WordsBeside(scratch_.Path(media)); }

    ScratchFolder scratch_;
    WordsFolder folder_{scratch_.Path("a/b")};
};

TEST_F(LyricsFiles, FileBesideTheMusicHasItsNameAndAnyCaseOfEnding) {
    Write("song.live.TXT", "text");
    EXPECT_EQ(Beside("song.live.mp3"), "text");
    EXPECT_EQ(Beside("song.mp3"), "");
    Write("song.live.Lrc", "[ar:x]\n[00:01.00]times");
    EXPECT_EQ(Beside("song.live.mp3"), "times");
    Write("b\xE9.txt", "bytes");
    EXPECT_EQ(Beside("b\xE9.ogg"), "bytes");
    Write("none.txt", "no ending");
    EXPECT_EQ(Beside("none"), "no ending");
}

TEST_F(LyricsFiles, EmptyFileIsPassedOver) {
    Write("s.lrc", "[ar:x]\n[00:01.00]\n");
    Write("s.txt", "text");
    EXPECT_EQ(Beside("s.mp3"), "text");
}

TEST_F(LyricsFiles, TimesInATextAreWords) {
    Write("s.txt", "[00:01.00]One");
    EXPECT_EQ(Beside("s.mp3"), "[00:01.00]One");
}

TEST_F(LyricsFiles, WhatIsNoTextFileHasNoWords) {
    ASSERT_EQ(mkfifo(scratch_.Path("pipe.txt").c_str(), 0600), 0);
    EXPECT_EQ(Beside("pipe.mp3"), "");
    std::filesystem::create_directory(scratch_.Path("folder.txt"));
    EXPECT_EQ(Beside("folder.mp3"), "");
    std::filesystem::create_symlink("loop.txt", scratch_.Path("loop.txt"));
    EXPECT_EQ(Beside("loop.mp3"), "");
    Write("long.txt", std::string(kMostWords + 1, 'x'));
    EXPECT_EQ(Beside("long.mp3"), "");
    EXPECT_EQ(Beside("missing.mp3"), "");
    EXPECT_EQ(WordsBeside(""), "");
}

TEST_F(LyricsFiles, FolderKeepsWhatIsSaved) {
    const Song song{"AC/DC", "../../x"};
    EXPECT_EQ(folder_.Find(song), "");
    EXPECT_EQ(folder_.PathFor(song), scratch_.Path("a/b/AC_DC - .._.._x.txt"));
    ASSERT_TRUE(folder_.Save(song, "One\n"));
    EXPECT_EQ(folder_.Find(song), "One");
    EXPECT_EQ(RightsOf(scratch_.Path("a/b")), 0700U);
    EXPECT_EQ(RightsOf(folder_.PathFor(song)), 0600U);
    ASSERT_TRUE(folder_.Save(song, "Two\n"));
    EXPECT_EQ(folder_.Find(song), "Two");
    EXPECT_TRUE(folder_.Remove(song));
    EXPECT_EQ(folder_.Find(song), "");
    EXPECT_TRUE(folder_.Remove(song));
}

TEST_F(LyricsFiles, LongNamesAreSaved) {
    const Song song{std::string(300, 'a'), std::string(3000, 'b')};
    ASSERT_TRUE(folder_.Save(song, "One"));
    EXPECT_EQ(folder_.Find(song), "One");
}

TEST_F(LyricsFiles, CaseIsIgnoredWhereTheNameIsMissing) {
    std::filesystem::create_directories(scratch_.Path("a/b"));
    Write("a/b/ANN - \xC3\x89t\xC3\xA9.TXT", "other");
    const Song song{"Ann", "\xC3\xA9t\xC3\xA9"};
    EXPECT_EQ(folder_.Find(song), "other");
    ASSERT_TRUE(folder_.Save(song, "changed"));
    EXPECT_EQ(folder_.PathFor(song), scratch_.Path("a/b/ANN - \xC3\x89t\xC3\xA9.TXT"));
    Write("a/b/Ann - \xC3\xA9t\xC3\xA9.txt", "exact");
    EXPECT_EQ(folder_.Find(song), "exact");
}

TEST_F(LyricsFiles, FolderThatCannotBeSaysSo) {
    Write("a", "a file where the folder should be");
    EXPECT_FALSE(folder_.Save({"x", "y"}, "words"));
    EXPECT_EQ(folder_.Find({"x", "y"}), "");
    EXPECT_TRUE(folder_.Remove({"x", "y"}));
}

}  // namespace
}  // namespace veldrin

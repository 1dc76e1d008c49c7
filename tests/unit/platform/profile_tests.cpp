// Reading a profile. What a write leaves is in profile_write_tests.cpp.
#include "platform/files/profile.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

using namespace std::string_view_literals;

class ProfileRead : public ::testing::Test {
  protected:
    static constexpr std::size_t kBuffer = 255;

    /// What "X" in section "Memory" reads as in a file of these bytes; "none" is the default.
    std::string Read(std::string_view bytes, std::string_view key = "X") {
        folder_.Write("p.ini", bytes);
        return GetPrivateProfileString("Memory", key, "none", kBuffer, folder_.Text("p.ini"));
    }

    support::TempFolder folder_;
};

TEST_F(ProfileRead, AMissingFileSectionOrKeyGivesTheDefault) {
    EXPECT_EQ(GetPrivateProfileString("Memory", "X", "none", kBuffer, folder_.Text("missing.ini")),
              "none");
    EXPECT_FALSE(folder_.Exists("missing.ini"));
    EXPECT_EQ(Read(""), "none");
    EXPECT_EQ(Read("[Other]\r\nX=1\r\n"), "none");
    EXPECT_EQ(Read("[Memory]\r\nY=1\r\n"), "none");
}

TEST_F(ProfileRead, EveryLineEndIsOne) {
    EXPECT_EQ(Read("[Memory]\r\nA=0\r\nX=1\r\nB=2\r\n"), "1");
    EXPECT_EQ(Read("[Memory]\nA=0\nX=1\nB=2\n"), "1");
    EXPECT_EQ(Read("[Memory]\rA=0\rX=1\rB=2\r"), "1");
    EXPECT_EQ(Read("[Memory]\nA=0\r\nX=1\rB=2"), "1");
}

TEST_F(ProfileRead, TheLastLineNeedsNoEnd) {
    EXPECT_EQ(Read("[Memory]\r\nX=last"), "last");
    EXPECT_EQ(Read("[Memory]\r\nX="), "");
    EXPECT_EQ(Read("[Memory]"), "none");
}

TEST_F(ProfileRead, AnEmptyValueIsAValue) {
    EXPECT_EQ(Read("[Memory]\r\nX=\r\n"), "");
    EXPECT_EQ(Read("[Memory]\r\nX=   \r\n"), "");
}

TEST_F(ProfileRead, BlanksAroundSectionKeyAndValueDoNotCount) {
    EXPECT_EQ(Read("[Memory]   \r\nX=1\r\n"), "1");
    EXPECT_EQ(Read("  [Memory]\r\nX=1\r\n"), "1");
    EXPECT_EQ(Read("[ Memory ]\r\nX=1\r\n"), "1");
    EXPECT_EQ(Read("[Memory]\r\n \t X \t = \t one two \t \r\n"), "one two");
}

TEST_F(ProfileRead, CaseOfSectionAndKeyDoesNotCount) {
    EXPECT_EQ(Read("[MEMORY]\r\nx=1\r\n"), "1");
    EXPECT_EQ(Read("[memory]\r\nMusicVolume=7\r\n", "MUSICvolume"), "7");
}

TEST_F(ProfileRead, AValueGoesOnBehindFurtherEqualsSigns) {
    EXPECT_EQ(Read("[Memory]\r\nX=a=b==c\r\n"), "a=b==c");
    EXPECT_EQ(Read("[Memory]\r\nX==\r\n"), "=");
}

TEST_F(ProfileRead, ASemicolonBeginsACommentAtTheStartOfALineOnly) {
    EXPECT_EQ(Read("[Memory]\r\n;X=1\r\n"), "none");
    EXPECT_EQ(Read("[Memory]\r\n  ; X=1\r\nX=2\r\n"), "2");
    EXPECT_EQ(Read("[Memory]\r\nX=1;2\r\n"), "1;2");
    EXPECT_EQ(Read(";[Memory]\r\nX=1\r\n"), "none");
}

TEST_F(ProfileRead, AByteOrderMarkIsNoPartOfTheFirstLine) {
    EXPECT_EQ(Read("\xEF\xBB\xBF[Memory]\r\nX=1\r\n"), "1");
    EXPECT_EQ(Read("\xEF\xBB\xBF"), "none");
}

TEST_F(ProfileRead, OfTwoKeysWithOneNameTheFirstCounts) {
    EXPECT_EQ(Read("[Memory]\r\nX=1\r\nx=2\r\n"), "1");
}

TEST_F(ProfileRead, OfTwoSectionsWithOneNameTheFirstCounts) {
    EXPECT_EQ(Read("[Memory]\r\nA=1\r\n[Other]\r\n[Memory]\r\nX=2\r\n"), "none");
    EXPECT_EQ(Read("[Memory]\r\nX=1\r\n[Memory]\r\nX=2\r\n"), "1");
}

TEST_F(ProfileRead, AKeyCountsInItsSectionOnly) {
    EXPECT_EQ(Read("X=0\r\n[Other]\r\nX=1\r\n[Memory]\r\nY=2\r\n[More]\r\nX=3\r\n"), "none");
    EXPECT_EQ(Read("X=0\r\n[Other]\r\nX=1\r\n[Memory]\r\nX=2\r\n[More]\r\nX=3\r\n"), "2");
}

TEST_F(ProfileRead, LinesThatAreNoSettingsAreSkipped) {
    EXPECT_EQ(Read("[Memory]\r\n\r\nX\r\nnonsense\r\n   \r\n[broken\r\nX=1\r\n"), "1");
    EXPECT_EQ(Read("[Memory]\r\n\0\x01\xFF\r\nX=1\r\n"sv), "1");
}

TEST_F(ProfileRead, ALongerKeyIsAnotherKey) {
    EXPECT_EQ(Read("[Memory]\r\nXY=1\r\n"), "none");
    EXPECT_EQ(Read("[Memory]\r\nXY=1\r\n", "X Y"), "none");
    EXPECT_EQ(Read("[MemoryX]\r\nX=1\r\n"), "none");
}

TEST_F(ProfileRead, AValueIsCutToTheBufferLessOneByte) {
    EXPECT_EQ(Read("[Memory]\r\nX=" + std::string(254, 'a') + "\r\n"), std::string(254, 'a'));
    EXPECT_EQ(Read("[Memory]\r\nX=" + std::string(255, 'a') + "\r\n"), std::string(254, 'a'));
    // Bytes are counted, not characters: here the last one loses its second byte.
    std::string umlauts = "x";
    for (int i = 0; i < 200; ++i) {
        umlauts += "\xC3\xA4";
    }
    EXPECT_EQ(Read("[Memory]\r\nX=" + umlauts), umlauts.substr(0, 254));
}

TEST_F(ProfileRead, TheDefaultIsCutLikewise) {
    EXPECT_EQ(GetPrivateProfileString("Memory", "X", std::string(300, 'd'), kBuffer,
                                      folder_.Text("missing.ini")),
              std::string(254, 'd'));
    EXPECT_EQ(GetPrivateProfileString("Memory", "X", "default", 4, folder_.Text("missing.ini")),
              "def");
}

TEST_F(ProfileRead, AFolderInTheFilesPlaceReadsAsMissing) {
    folder_.MakeFolder("p.ini");
    EXPECT_EQ(GetPrivateProfileString("Memory", "X", "none", kBuffer, folder_.Text("p.ini")),
              "none");
}

}  // namespace
}  // namespace platform

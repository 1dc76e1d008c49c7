#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "platform/files/profile.h"
#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

class ProfileWrite : public ::testing::Test {
  protected:
    bool Write(std::string_view key, std::string_view value) {
        return WritePrivateProfileString("Memory", key, value, folder_.Text("p.ini"),
                                         Disk::kWritable, &memory_);
    }
    std::string Read(std::string_view key, std::string_view section = "Memory") {
        return GetPrivateProfileString(section, key, "none", 255, folder_.Text("p.ini"), &memory_);
    }
    /// The file after a write of `key` into a file of these bytes.
    std::string Written(std::string_view bytes, std::string_view key, std::string_view value) {
        folder_.Write("p.ini", bytes);
        EXPECT_TRUE(Write(key, value));
        return folder_.Read("p.ini").value_or("no file");
    }

    support::TempFolder folder_;
    ProfileMemory memory_;
};

TEST_F(ProfileWrite, AMissingFileIsMadeWithItsSection) {
    EXPECT_TRUE(Write("X", "1"));
    EXPECT_EQ(folder_.Read("p.ini"), "[Memory]\r\nX=1\r\n");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"p.ini"}));
}

TEST_F(ProfileWrite, AnEmptyFileGetsTheSection) {
    EXPECT_EQ(Written("", "X", "1"), "[Memory]\r\nX=1\r\n");
}

TEST_F(ProfileWrite, AKnownKeyChangesInItsPlace) {
    EXPECT_EQ(Written("[Memory]\r\nA=0\r\nX=1\r\nB=2\r\n", "X", "99"),
              "[Memory]\r\nA=0\r\nX=99\r\nB=2\r\n");
    EXPECT_EQ(Written("[Memory]\r\nX=1\r\n", "X", ""), "[Memory]\r\nX=\r\n");
}

TEST_F(ProfileWrite, AllOtherLinesStayToTheByte) {
    const std::string before =
        "; my player\r\n\r\n[Other]\r\n  X = 7 \r\n\r\n[Memory]\r\n;X=0\r\nnonsense\r\n a=b=c \r\n";
    const std::string after = "\r\n; end\r\n\r\n[Last]\r\nX=8";
    EXPECT_EQ(Written(before + "X=1\r\n" + after, "X", "2"), before + "X=2\r\n" + after);
}

TEST_F(ProfileWrite, ANewKeyJoinsItsSectionInFrontOfTheBlankLines) {
    EXPECT_EQ(Written("[Memory]\r\nA=0\r\n\r\n[Other]\r\nB=2\r\n", "X", "1"),
              "[Memory]\r\nA=0\r\nX=1\r\n\r\n[Other]\r\nB=2\r\n");
    EXPECT_EQ(Written("[Memory]\r\n[Other]\r\nB=2\r\n", "X", "1"),
              "[Memory]\r\nX=1\r\n[Other]\r\nB=2\r\n");
}

TEST_F(ProfileWrite, AMissingSectionComesToTheEnd) {
    EXPECT_EQ(Written("[Other]\r\nX=0\r\n", "X", "1"), "[Other]\r\nX=0\r\n[Memory]\r\nX=1\r\n");
    EXPECT_EQ(Read("X"), "1");
    EXPECT_EQ(Read("X", "Other"), "0");
}

TEST_F(ProfileWrite, LineEndsAreThoseOfTheFile) {
    EXPECT_EQ(Written("[Memory]\nA=0\n", "X", "1"), "[Memory]\nA=0\nX=1\n");
    EXPECT_EQ(Written("[Memory]\rA=0\r", "X", "1"), "[Memory]\rA=0\rX=1\r");
    EXPECT_EQ(Written("[Other]\nA=0\n", "X", "1"), "[Other]\nA=0\n[Memory]\nX=1\n");
    EXPECT_EQ(Written("[Memory]\nX=0\nA=0\n", "X", "1"), "[Memory]\nX=1\nA=0\n");
}

TEST_F(ProfileWrite, AMissingFinalLineEndComesBeforeWhatIsNewAndIsNotMissedElsewhere) {
    EXPECT_EQ(Written("[Memory]\r\nA=0", "X", "1"), "[Memory]\r\nA=0\r\nX=1\r\n");
    EXPECT_EQ(Written("[Memory]\nA=0", "X", "1"), "[Memory]\nA=0\nX=1\n");
    EXPECT_EQ(Written("[Other]\nA=0", "X", "1"), "[Other]\nA=0\n[Memory]\nX=1\n");
    EXPECT_EQ(Written("[Memory]\r\nX=0", "X", "1"), "[Memory]\r\nX=1");
    EXPECT_EQ(Written("[Memory]", "X", "1"), "[Memory]\r\nX=1\r\n");
}

TEST_F(ProfileWrite, AByteOrderMarkStaysInFront) {
    EXPECT_EQ(Written("\xEF\xBB\xBF[Memory]\r\nX=0\r\n", "X", "1"),
              "\xEF\xBB\xBF[Memory]\r\nX=1\r\n");
    EXPECT_EQ(Written("\xEF\xBB\xBF", "X", "1"), "\xEF\xBB\xBF[Memory]\r\nX=1\r\n");
}

TEST_F(ProfileWrite, OfTwoKeysOrSectionsWithOneNameTheFirstChanges) {
    EXPECT_EQ(Written("[Memory]\r\nX=1\r\nx=2\r\n", "X", "3"), "[Memory]\r\nX=3\r\nx=2\r\n");
    EXPECT_EQ(Written("[Memory]\r\nA=1\r\n[Memory]\r\nX=2\r\n", "X", "3"),
              "[Memory]\r\nA=1\r\nX=3\r\n[Memory]\r\nX=2\r\n");
    EXPECT_EQ(Read("X"), "3");
}

TEST_F(ProfileWrite, ASectionLineWithBlanksBehindItIsFound) {
    EXPECT_EQ(Written("[Memory]  \r\nX=1\r\n", "X", "2"), "[Memory]  \r\nX=2\r\n");
    EXPECT_EQ(Written("[memory]\t\r\n", "X", "2"), "[memory]\t\r\nX=2\r\n");
}

TEST_F(ProfileWrite, AValueEndsAtItsFirstLineEndOrZeroAndCanMakeNoKeyOfItsOwn) {
    EXPECT_EQ(Written("[Memory]\r\n", "LastDir", "/music\r\nRandom=True"),
              "[Memory]\r\nLastDir=/music\r\n");
    EXPECT_EQ(Read("Random"), "none");
    EXPECT_EQ(Written("[Memory]\r\n", "X", "a\nb"), "[Memory]\r\nX=a\r\n");
    EXPECT_EQ(Written("[Memory]\r\n", "X", "a\rb"), "[Memory]\r\nX=a\r\n");
    EXPECT_EQ(Written("[Memory]\r\n", "X", std::string_view("a\0b", 3)), "[Memory]\r\nX=a\r\n");
}

TEST_F(ProfileWrite, AValueOfAnyLengthIsWrittenWhole) {
    EXPECT_EQ(Written("", "X", std::string(5000, 'v')),
              "[Memory]\r\nX=" + std::string(5000, 'v') + "\r\n");
}

TEST_F(ProfileWrite, ALinkStaysALinkAndPermissionsStay) {
    folder_.MakeFolder("real");
    folder_.Write("real/settings", "[Memory]\r\nX=1\r\n");
    std::filesystem::permissions(folder_.Path("real/settings"), std::filesystem::perms(0644));
    folder_.Link("real/settings", "p.ini");
    EXPECT_TRUE(Write("X", "2"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("p.ini")));
    EXPECT_EQ(folder_.Read("real/settings"), "[Memory]\r\nX=2\r\n");
    EXPECT_EQ(folder_.Mode("real/settings"), 0644U);
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"p.ini", "real"}));
}

TEST_F(ProfileWrite, AFailedWriteLeavesTheFileAndNoOther) {
    folder_.Write("p.ini", "[Memory]\r\nX=1\r\n");
    const support::AsOrdinaryUser user(folder_);
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0555));
    EXPECT_FALSE(Write("X", "2"));
    EXPECT_FALSE(WritePrivateProfileString("Memory", "X", "2", folder_.Text("new.ini")));
    std::filesystem::permissions(folder_.Path(), std::filesystem::perms(0755));
    EXPECT_EQ(folder_.Read("p.ini"), "[Memory]\r\nX=1\r\n");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"p.ini"}));
}

TEST_F(ProfileWrite, AValueThatIsThereAlreadyCostsNoNewFile) {
    const auto node = [this] {
        struct stat status {};
        EXPECT_EQ(stat(folder_.Path("p.ini").c_str(), &status), 0);
        return status.st_ino;
    };
    folder_.Write("p.ini", "[Memory]\r\nX=1\r\nY=2\r\n");
    std::filesystem::create_hard_link(folder_.Path("p.ini"), folder_.Path("old"));
    const auto before = node();
    EXPECT_TRUE(Write("X", "1"));
    EXPECT_EQ(node(), before);
    EXPECT_TRUE(Write("X", "2"));
    EXPECT_NE(node(), before);
    EXPECT_EQ(folder_.Read("p.ini"), "[Memory]\r\nX=2\r\nY=2\r\n");
}

TEST_F(ProfileWrite, AFullDiskLeavesTheFile) {
    folder_.Write("p.ini", "[Memory]\r\nX=1\r\n");
    const auto write = [this](const char* key, const char* file) {
        return WritePrivateProfileString("Memory", key, "2", folder_.Text(file), Disk::kFull);
    };
    EXPECT_FALSE(write("X", "p.ini"));
    EXPECT_FALSE(write("Y", "p.ini"));
    EXPECT_FALSE(write("X", "new.ini"));
    EXPECT_EQ(folder_.Read("p.ini"), "[Memory]\r\nX=1\r\n");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"p.ini"}));
}

TEST_F(ProfileWrite, AFileThatCannotBeReadIsNotReplaced) {
    folder_.Write("p.ini", "[Memory]\r\nX=1\r\n");
    {
        const support::AsOrdinaryUser user(folder_);
        std::filesystem::permissions(folder_.Path("p.ini"), std::filesystem::perms(0200));
        EXPECT_FALSE(Write("Y", "2"));
    }
    std::filesystem::permissions(folder_.Path("p.ini"), std::filesystem::perms(0600));
    EXPECT_EQ(folder_.Read("p.ini"), "[Memory]\r\nX=1\r\n");
}

TEST_F(ProfileWrite, AFolderOrAPipeInTheFilesPlaceStays) {
    folder_.MakeFolder("p.ini");
    EXPECT_FALSE(Write("X", "1"));
    EXPECT_TRUE(std::filesystem::is_directory(folder_.Path("p.ini")));
    ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(WritePrivateProfileString("Memory", "X", "1", folder_.Text("pipe")));
    EXPECT_TRUE(std::filesystem::is_fifo(folder_.Path("pipe")));
}

TEST_F(ProfileWrite, AFileTooLargeToBeReadStays) {
    const std::string large = "[Memory]\r\nX=1\r\n;" + std::string(4U << 20U, '.');
    folder_.Write("p.ini", large);
    EXPECT_FALSE(Write("X", "2"));
    EXPECT_EQ(folder_.Read("p.ini"), large);
    EXPECT_EQ(Read("X"), "none");
}

TEST_F(ProfileWrite, NoFileGetsTooLargeToBeRead) {
    const std::string large = "[Memory]\r\nX=1\r\n;" + std::string((4U << 20U) - 20, '.');
    folder_.Write("p.ini", large);
    EXPECT_FALSE(Write("Y", std::string(200, 'y')));
    EXPECT_EQ(folder_.Read("p.ini"), large);
    EXPECT_TRUE(Write("X", "2"));
    EXPECT_EQ(Read("X"), "2");
}

// What it leads to may be back tomorrow.
TEST_F(ProfileWrite, ALinkThatLeadsNowhereStays) {
    folder_.Link("nowhere/settings", "p.ini");
    EXPECT_EQ(Read("X"), "none");
    EXPECT_FALSE(Write("X", "1"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("p.ini")));
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"p.ini"}));
}

TEST_F(ProfileWrite, WhatIsThereAlreadyIsNotWritten) {
    folder_.Write("p.ini", "[Memory]\r\nX=1\r\n");
    const auto before = StampOf(folder_.Text("p.ini"));
    EXPECT_TRUE(Write("X", "1"));
    EXPECT_EQ(StampOf(folder_.Text("p.ini")), before);
}

std::string BrokenProfile(std::mt19937& random) {
    static const std::vector<std::string> pieces{
        "[Memory]", "[Other]", "[memory] ", "[",     "]",        "X=1", "Y = 2", "x=3",
        ";X=4",     "=",       "Z=",        "=5",    "nonsense", " ",   "Y=a=b", "[X]=1",
        "\xFF",     "X",       "\t",        "[]",    "\r\n",     "\n",  "\r",    "",
        "\r\n",     "\r\n",    "\n\n",      "\r\n ", "\r\r",     "\r\n"};
    std::string bytes;
    for (std::size_t count = random() % 14; count > 0; --count) {
        bytes += pieces[random() % pieces.size()];
    }
    return bytes;
}

// Large files are not gone through for each key, small ones are; nobody can tell.
TEST_F(ProfileWrite, ALargeFileReadsAsASmallOne) {
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        const std::string bytes = BrokenProfile(random);
        // Each under a name of its own: two writes within one tick of the disk's clock are one.
        const std::string name = std::to_string(round) + ".ini";
        folder_.Write("p.ini", bytes);
        folder_.Write(name, bytes + "\r\n;" + std::string(1 << 16U, '.'));
        for (const std::string_view section : {"Memory", "Other", "memory"}) {
            for (const std::string_view key : {"X", "Y", "Z", "y", "nonsense", "\xFF", ""}) {
                ASSERT_EQ(GetPrivateProfileString(section, key, "none", 255, folder_.Text(name),
                                                  &memory_),
                          Read(key, section))
                    << testing::PrintToString(bytes) << ' ' << key;
            }
        }
    }
}

TEST_F(ProfileWrite, ALargeFileThatChangesIsReadAnew) {
    const std::string rest = "\r\n;" + std::string(1 << 16U, '.');
    folder_.Write("p.ini", "[Memory]\r\nX=1" + rest);
    EXPECT_EQ(Read("X"), "1");
    folder_.Write("p.ini", "[Memory]\r\nX=22" + rest);
    EXPECT_EQ(Read("X"), "22");
    EXPECT_TRUE(Write("X", "33"));  // as long as before
    EXPECT_EQ(Read("X"), "33");
    EXPECT_TRUE(Write("Y", "4"));
    EXPECT_EQ(Read("Y"), "4");
    std::filesystem::remove(folder_.Path("p.ini"));
    EXPECT_EQ(Read("X"), "none");
}

/// Bytes that this process has read from files so far.
std::uint64_t BytesRead() {
    std::ifstream numbers("/proc/self/io");
    std::string name;
    std::uint64_t number = 0;
    numbers >> name >> number;
    return number;
}

TEST_F(ProfileWrite, ALargeFileIsReadOnceForAllKeys) {
    constexpr std::size_t kLarge = 1U << 20U;
    folder_.Write("p.ini", "[Memory]\r\nX=1\r\n;" + std::string(kLarge, '.'));
    const std::uint64_t before = BytesRead();
    for (int i = 0; i < 60; ++i) {
        EXPECT_EQ(Read("X"), "1");
        EXPECT_EQ(Read("Y"), "none");
    }
    EXPECT_LT(BytesRead() - before, 2 * kLarge);
}

// Any file, however broken: the written key reads back, and every other key reads as before.
TEST_F(ProfileWrite, InAnyFileTheKeyReadsBackAndAllOthersReadAsBefore) {
    const std::vector<std::string> keys{"X", "Y", "Z", "New", "nonsense"};
    std::mt19937 random(7);
    for (int round = 0; round < 400; ++round) {
        const std::string bytes = BrokenProfile(random);
        folder_.Write("p.ini", bytes);
        const std::string& written = keys[random() % 4];
        std::vector<std::string> before;
        for (const std::string& key : keys) {
            before.push_back(Read(key));
            before.push_back(Read(key, "Other"));
        }
        ASSERT_TRUE(Write(written, "new value"));
        for (std::size_t i = 0; i < keys.size(); ++i) {
            ASSERT_EQ(Read(keys[i]), keys[i] == written ? "new value" : before[2 * i])
                << testing::PrintToString(bytes) << ' ' << keys[i];
            ASSERT_EQ(Read(keys[i], "Other"), before[2 * i + 1]) << testing::PrintToString(bytes);
        }
    }
}

}  // namespace
}  // namespace platform

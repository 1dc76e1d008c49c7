#include "platform/files/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

class Files : public ::testing::Test {
  protected:
    support::TempFolder folder_;
};

TEST_F(Files, JoinPathPutsOneSeparatorBetween) {
    EXPECT_EQ(JoinPath(u"/home/me", u"list.omk"), u"/home/me/list.omk");
}

TEST_F(Files, FileLengthCountsBytesAndAnEmptyFileHasOne) {
    folder_.Write("five", "12\r\n\xFF");
    folder_.Write("empty", "");
    EXPECT_EQ(FileLength(folder_.Text("five")), 5);
    EXPECT_EQ(FileLength(folder_.Text("empty")), 0);
}

TEST_F(Files, FileLengthHasNoneForAFolderAMissingFileOrNoPath) {
    folder_.MakeFolder("sub");
    folder_.Write("file", "x");
    EXPECT_EQ(FileLength(folder_.Text("sub")), std::nullopt);
    EXPECT_EQ(FileLength(folder_.Text("sub/")), std::nullopt);
    EXPECT_EQ(FileLength(folder_.Text("none")), std::nullopt);
    EXPECT_EQ(FileLength(folder_.Text("file/")), std::nullopt);
    EXPECT_EQ(FileLength(u""), std::nullopt);
}

TEST_F(Files, FileLengthFollowsALinkAndKnowsADeadOne) {
    folder_.Write("file", "123");
    folder_.Link("file", "link");
    folder_.Link("nowhere", "dead");
    EXPECT_EQ(FileLength(folder_.Text("link")), 3);
    EXPECT_EQ(FileLength(folder_.Text("dead")), std::nullopt);
}

TEST_F(Files, APathWithAZeroCharacterNamesNothing) {
    folder_.Write("file", "123");
    const std::u16string path = folder_.Text("file") + std::u16string(u"\0x", 2);
    EXPECT_EQ(FileLength(path), std::nullopt);
    EXPECT_FALSE(DirectoryMatches(path));
    EXPECT_FALSE(OrdinaryFileMatches(path));
}

TEST_F(Files, DirectoryMatchesWantsAFolderBehindASeparator) {
    folder_.MakeFolder("sub");
    folder_.MakeFolder(".hidden");
    folder_.Write("file", "");
    EXPECT_TRUE(DirectoryMatches(folder_.Text("sub/")));
    EXPECT_TRUE(DirectoryMatches(folder_.Text(".hidden/")));
    EXPECT_TRUE(DirectoryMatches(u"/"));
    EXPECT_TRUE(DirectoryMatches(folder_.Text("file")));
    EXPECT_FALSE(DirectoryMatches(folder_.Text("file/")));
    EXPECT_FALSE(DirectoryMatches(folder_.Text("none/")));
}

TEST_F(Files, OrdinaryFileMatchesSeesNoFolderAndNoHiddenFile) {
    folder_.MakeFolder("sub");
    folder_.MakeFolder(".hiddenFolder");
    folder_.Write("file", "");
    folder_.Write(".hidden", "");
    folder_.Write(".hiddenFolder/file", "");
    folder_.Link("file", "link");
    EXPECT_TRUE(OrdinaryFileMatches(folder_.Text("file")));
    EXPECT_TRUE(OrdinaryFileMatches(folder_.Text("link")));
    EXPECT_TRUE(OrdinaryFileMatches(folder_.Text(".hiddenFolder/file")));
    EXPECT_FALSE(OrdinaryFileMatches(folder_.Text(".hidden")));
    EXPECT_FALSE(OrdinaryFileMatches(folder_.Text("sub")));
    EXPECT_FALSE(OrdinaryFileMatches(folder_.Text("none")));
}

TEST_F(Files, ReadWholeFileGivesEveryByte) {
    const std::string bytes("a\0\r\n\xFF z", 7);
    folder_.Write("file", bytes);
    folder_.Write("empty", "");
    EXPECT_EQ(ReadWholeFile(folder_.Text("file"), 100), bytes);
    EXPECT_EQ(ReadWholeFile(folder_.Text("empty"), 100), "");
    EXPECT_EQ(ReadWholeFile(folder_.Text("empty"), 0), "");
}

TEST_F(Files, ReadWholeFileHasNoneForAFileOfMoreThanIsBorne) {
    folder_.Write("file", "1234567");
    EXPECT_EQ(ReadWholeFile(folder_.Text("file"), 7), "1234567");
    EXPECT_EQ(ReadWholeFile(folder_.Text("file"), 6), std::nullopt);
    // A terabyte without a byte on the disk.
    folder_.Write("huge", "");
    std::filesystem::resize_file(folder_.Path("huge"), std::uintmax_t{1} << 40U);
    EXPECT_EQ(ReadWholeFile(folder_.Text("huge"), 1000), std::nullopt);
    // What the system makes up has no length until it is read.
    EXPECT_EQ(ReadWholeFile(u"/proc/self/status", 10), std::nullopt);
    EXPECT_NE(ReadWholeFile(u"/proc/self/status", 100'000).value_or(""), "");
}

TEST_F(Files, ReadWholeFileHasNoneForAFolderAPipeOrNothing) {
    folder_.MakeFolder("sub");
    ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadWholeFile(folder_.Text("sub"), 100), std::nullopt);
    EXPECT_EQ(ReadWholeFile(folder_.Text("none"), 100), std::nullopt);
    EXPECT_EQ(ReadWholeFile(folder_.Text("pipe"), 100),
              std::nullopt);  // and does not wait for a writer
    EXPECT_EQ(ReadWholeFile(u"/dev/zero", 100), std::nullopt);
    folder_.Write("file", "bytes");
    const std::u16string behindZero = folder_.Text("file") + std::u16string(u"\0", 1);
    EXPECT_EQ(ReadWholeFile(behindZero, 100), std::nullopt);
}

TEST_F(Files, IsTakenByWhateverBearsTheName) {
    folder_.MakeFolder("sub");
    folder_.Link("nowhere", "dead");
    EXPECT_TRUE(IsTaken(folder_.Text("sub")));
    EXPECT_TRUE(IsTaken(folder_.Text("dead")));
    EXPECT_FALSE(IsTaken(folder_.Text("none")));
}

TEST_F(Files, AStampChangesWithTheFile) {
    folder_.Write("file", "1234567");
    folder_.Write("other", "1234567");
    folder_.MakeFolder("sub");
    const auto stamp = StampOf(folder_.Text("file"));
    ASSERT_TRUE(stamp);
    EXPECT_EQ(StampOf(folder_.Text("file")), stamp);
    EXPECT_NE(StampOf(folder_.Text("other")), stamp);
    folder_.Write("file", "12345678");
    EXPECT_NE(StampOf(folder_.Text("file")), stamp);
    EXPECT_EQ(StampOf(folder_.Text("sub")), std::nullopt);
    EXPECT_EQ(StampOf(folder_.Text("none")), std::nullopt);
}

TEST_F(Files, AWriterWaitsForNobodyToRead) {
    ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
    FileWriter unread(folder_.Text("pipe"));
    EXPECT_FALSE(unread.IsOpen());
    const int reader = open(folder_.Path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    FileWriter writer(folder_.Text("pipe"));
    writer.Write(std::string(1U << 20U, '.'));  // more than it holds
    EXPECT_FALSE(writer.Close());
    close(reader);
}

TEST_F(Files, ReplaceFileMakesANewFileOrTakesTheOldOnesPlace) {
    EXPECT_TRUE(ReplaceFile(folder_.Text("file"), "first"));
    EXPECT_EQ(folder_.Read("file"), "first");
    EXPECT_TRUE(ReplaceFile(folder_.Text("file"), std::string("\0x", 2)));
    EXPECT_EQ(folder_.Read("file"), std::string("\0x", 2));
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"file"}));
}

TEST_F(Files, ReplaceFileKeepsWhoeverReadsWithTheOldContent) {
    folder_.Write("file", "old content");
    FILE* reader = fopen(folder_.Path("file").c_str(), "rb");
    ASSERT_NE(reader, nullptr);
    EXPECT_TRUE(ReplaceFile(folder_.Text("file"), "new"));
    char buffer[32] = {};
    EXPECT_EQ(fread(buffer, 1, sizeof buffer, reader), 11U);
    EXPECT_EQ(std::string(buffer), "old content");
    fclose(reader);
}

TEST_F(Files, ReplaceFileReplacesNothingButAnOrdinaryFile) {
    folder_.MakeFolder("sub");
    ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
    folder_.Link("pipe", "link");
    for (const char* name : {"sub", "pipe", "link"}) {
        EXPECT_FALSE(ReplaceFile(folder_.Text(name), "new")) << name;
    }
    EXPECT_TRUE(std::filesystem::is_fifo(folder_.Path("link")));
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"link", "pipe", "sub"}));
}

TEST_F(Files, ReplaceFileKeepsThePermissions) {
    folder_.Write("file", "old");
    std::filesystem::permissions(folder_.Path("file"), std::filesystem::perms(0640));
    EXPECT_TRUE(ReplaceFile(folder_.Text("file"), "new"));
    EXPECT_EQ(folder_.Mode("file"), 0640U);
    // A new file is the owner's alone: it tells what somebody listens to.
    EXPECT_TRUE(ReplaceFile(folder_.Text("fresh"), "new"));
    EXPECT_EQ(folder_.Mode("fresh"), 0600U);
}

TEST_F(Files, ReplaceFileLeavesALinkALink) {
    folder_.MakeFolder("elsewhere");
    folder_.Write("elsewhere/file", "old");
    folder_.Link("elsewhere/file", "link");
    EXPECT_TRUE(ReplaceFile(folder_.Text("link"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("link")));
    EXPECT_EQ(folder_.Read("elsewhere/file"), "new");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"elsewhere", "link"}));
}

TEST_F(Files, ReplaceFileInAFolderThatTakesNoFilesLeavesTheOldOne) {
    folder_.Write("sub/file", "old");
    const support::AsOrdinaryUser user(folder_);
    std::filesystem::permissions(folder_.Path("sub"), std::filesystem::perms(0555));
    EXPECT_FALSE(ReplaceFile(folder_.Text("sub/file"), "new"));
    EXPECT_FALSE(ReplaceFile(folder_.Text("sub/other"), "new"));
    EXPECT_EQ(folder_.Read("sub/file"), "old");
    EXPECT_FALSE(folder_.Exists("sub/other"));
    std::filesystem::permissions(folder_.Path("sub"), std::filesystem::perms(0755));
}

TEST_F(Files, ReplaceFileLeavesAFileThatMayNotBeWritten) {
    folder_.Write("file", "old");
    const support::AsOrdinaryUser user(folder_);
    std::filesystem::permissions(folder_.Path("file"), std::filesystem::perms(0444));
    EXPECT_FALSE(ReplaceFile(folder_.Text("file"), "new"));
    EXPECT_EQ(folder_.Read("file"), "old");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"file"}));
}

TEST_F(Files, ReplaceFileInTheWayOfAFolderFailsAndLeavesNothingBehind) {
    folder_.Write("sub/inside", "x");
    EXPECT_FALSE(ReplaceFile(folder_.Text("sub"), "new"));
    EXPECT_FALSE(ReplaceFile(folder_.Text("none/file"), "new"));
    EXPECT_EQ(folder_.Read("sub/inside"), "x");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"sub"}));
}

TEST_F(Files, NothingLeavesADescriptorOpen) {
    const auto open = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    folder_.Write("file", "old");
    const auto before = open();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(ReadWholeFile(folder_.Text("file"), 100));
        EXPECT_FALSE(ReadWholeFile(folder_.Text(), 100));
        EXPECT_TRUE(ReplaceFile(folder_.Text("file"), "new"));
        EXPECT_FALSE(ReplaceFile(folder_.Text(), "new"));
        FileWriter closed(folder_.Text("other"));
        EXPECT_TRUE(closed.Close());
        const FileWriter forgotten(folder_.Text("other"));
    }
    EXPECT_EQ(open(), before);
}

TEST_F(Files, RemoveFileTakesAFileAndNoFolder) {
    folder_.Write("file", "");
    folder_.MakeFolder("sub");
    EXPECT_TRUE(RemoveFile(folder_.Text("file")));
    EXPECT_FALSE(RemoveFile(folder_.Text("file")));
    EXPECT_FALSE(RemoveFile(folder_.Text("sub")));
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"sub"}));
}

TEST_F(Files, FileWriterBeginsAnewAndWritesAllOfIt) {
    folder_.Write("file", "something old and long");
    std::string expected;
    FileWriter writer(folder_.Text("file"));
    ASSERT_TRUE(writer.IsOpen());
    for (int i = 0; i < 40'000; ++i) {  // several times the buffer
        const std::string line = std::to_string(i) + "\r\n";
        writer.Write(line);
        expected += line;
    }
    EXPECT_TRUE(writer.Close());
    EXPECT_FALSE(writer.IsOpen());
    EXPECT_EQ(folder_.Read("file"), expected);
}

TEST_F(Files, FileWriterTellsThatItCouldNotOpenOrWrite) {
    FileWriter nowhere(folder_.Text("none/file"));
    EXPECT_FALSE(nowhere.IsOpen());
    nowhere.Write("x");
    EXPECT_FALSE(nowhere.Close());
    FileWriter full(u"/dev/full");
    ASSERT_TRUE(full.IsOpen());
    full.Write("x");
    EXPECT_FALSE(full.Close());
}

TEST_F(Files, OnAFullDiskNothingIsWrittenMadeOrDeleted) {
    folder_.Write("file", "old");
    EXPECT_FALSE(ReplaceFile(folder_.Text("file"), "new", Disk::kFull));
    EXPECT_FALSE(ReplaceFile(folder_.Text("other"), "new", Disk::kFull));
    EXPECT_FALSE(RemoveFile(folder_.Text("file"), Disk::kFull));
    FileWriter writer(folder_.Text("file"), Disk::kFull);
    EXPECT_FALSE(writer.IsOpen());
    writer.Write("new");
    EXPECT_FALSE(writer.Close());
    EXPECT_EQ(folder_.Read("file"), "old");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"file"}));
}

}  // namespace
}  // namespace platform

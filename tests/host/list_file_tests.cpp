// The playlist's file looked at without the component.
#include "host/rescue/list_file.h"

#include <fcntl.h>

#include "tests/host/rescue_fixture.h"

namespace veldrin {
namespace {

using ListKind = ListState::Kind;
namespace fs = std::filesystem;

class ListFile : public RescueFixture {
  protected:
    ListKind Judged(const std::string& bytes) {
        WriteBytes(places_.list, bytes);
        return JudgeList(places_.list).kind;
    }
};

TEST_F(ListFile, AWholeOneHasALineForEachTextOfItsRows) {
    EXPECT_EQ(JudgeList(places_.list).kind, ListKind::kMissing);
    EXPECT_EQ(Judged(ListOf(0)), ListKind::kWhole);
    EXPECT_EQ(Judged(ListOf(2)), ListKind::kWhole);
    EXPECT_EQ(Judged("OMK v1.1\r\n 1 \r\n-1 \r\n\r\n\r\n"), ListKind::kWhole);
    EXPECT_EQ(Judged(ListOf(20000)), ListKind::kWhole);
}

TEST_F(ListFile, ATextMayHoldALinesEnd) {
    EXPECT_EQ(Judged("OMK v1.1\r\n 1 \r\n 0 \r\none\rtwo\r\n/a\r\n"), ListKind::kWhole);
}

TEST_F(ListFile, EveryCutIsSeen) {
    const std::string whole = ListOf(3);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(Judged(whole.substr(0, length)), ListKind::kDamaged) << length;
    }
    const std::string large = ListOf(20000);
    for (std::size_t length = large.size() - 40; length < large.size(); ++length) {
        EXPECT_EQ(Judged(large.substr(0, length)), ListKind::kDamaged) << length;
    }
}

TEST_F(ListFile, OtherFilesAreNoList) {
    EXPECT_EQ(Judged("OMK v1.2\r\n 0 \r\n-1 \r\n"), ListKind::kDamaged);
    EXPECT_EQ(Judged("OMK v1.1\r\n x \r\n-1 \r\n"), ListKind::kDamaged);
    EXPECT_EQ(Judged(std::string(4096, '\0')), ListKind::kDamaged);
    EXPECT_EQ(Judged(ListOf(3) + std::string(100, '\0')), ListKind::kDamaged);
}

TEST_F(ListFile, WhatIsNoFileCannotBeRead) {
    fs::create_directory(places_.list);
    EXPECT_EQ(GlanceAtList(places_.list).kind, ListKind::kUnreadable);
    fs::remove(places_.list);
    ASSERT_EQ(mkfifo(places_.list.c_str(), 0600), 0);
    EXPECT_EQ(GlanceAtList(places_.list).kind, ListKind::kUnreadable);
    fs::remove(places_.list);
    fs::create_symlink("/nowhere/at/all", places_.list);
    EXPECT_EQ(JudgeList(places_.list).kind, ListKind::kUnreadable);
    fs::remove(places_.list);
    fs::create_symlink("/dev/zero", places_.list);
    EXPECT_EQ(JudgeList(places_.list).kind, ListKind::kUnreadable);
}

TEST_F(ListFile, ALinkToAListIsAList) {
    WriteBytes(Path("elsewhere"), ListOf(2));
    fs::create_symlink(Path("elsewhere"), places_.list);
    EXPECT_EQ(JudgeList(places_.list).kind, ListKind::kWhole);
}

TEST_F(ListFile, TheHeadTellsRowsAndCurrentRow) {
    WriteBytes(places_.list, ListOf(12));
    const auto head = ReadListHead(places_.list);
    ASSERT_TRUE(head);
    EXPECT_EQ(head->count, 12);
    EXPECT_EQ(head->current, 11);
    EXPECT_FALSE(ReadListHead(Path("nothing")));
}

TEST_F(ListFile, SameBytes) {
    WriteBytes(Path("a"), ListOf(9000));
    WriteBytes(Path("b"), ListOf(9000));
    EXPECT_TRUE(HaveSameBytes(Path("a"), Path("b")));
    WriteBytes(Path("b"), ListOf(9000) + "x");
    EXPECT_FALSE(HaveSameBytes(Path("a"), Path("b")));
    EXPECT_FALSE(HaveSameBytes(Path("b"), Path("a")));
    WriteBytes(Path("b"), ListOf(9000, "u"));
    EXPECT_FALSE(HaveSameBytes(Path("a"), Path("b")));
    EXPECT_FALSE(HaveSameBytes(Path("a"), Path("none")));
}

TEST_F(ListFile, WhatIsSetAsideGetsTheFirstFreeName) {
    for (int i = 1; i <= 11; ++i) {
        WriteBytes(places_.list, std::to_string(i));
        const std::string number = i == 1 ? "" : "." + std::to_string(std::min(i, 9));
        EXPECT_EQ(SetAside(places_.list), kListName + std::string(".damaged") + number) << i;
    }
    EXPECT_FALSE(fs::exists(places_.list));
    EXPECT_EQ(BytesOf(places_.list + ".damaged"), "1");
    EXPECT_EQ(BytesOf(places_.list + ".damaged.8"), "8");
    EXPECT_EQ(BytesOf(places_.list + ".damaged.9"), "11");
    EXPECT_FALSE(SetAside(places_.list));
}

TEST_F(ListFile, ADuplicateHasTheBytesAndStaysWhenTheFileIsReplaced) {
    WriteBytes(places_.list, ListOf(3));
    EXPECT_TRUE(DuplicateFile(places_.list, places_.copy));
    EXPECT_EQ(BytesOf(places_.copy), ListOf(3));
    WriteBytes(places_.list, ListOf(1));
    EXPECT_EQ(BytesOf(places_.copy), ListOf(3));
    fs::create_directory(Path("sub"));
    EXPECT_FALSE(DuplicateFile(Path("sub"), Path("copy")));
    EXPECT_FALSE(DuplicateFile(Path("none"), Path("copy")));
    EXPECT_FALSE(fs::exists(Path("copy")));
}

TEST_F(ListFile, LeftoversOfKilledRunsGoAndNothingElse) {
    const std::string settings = "Sarnel.Ambrisor.ini";
    for (const char* ending : {".aB3dE9", ".x7Qp0Z", ".abc123", ".QwErTy"}) {
        WriteBytes(Path(settings + ending), "left");
        WriteBytes(Path(kListName + std::string(ending)), "left");
    }
    const std::string kept[] = {"",         ".backup", ".Backup",  ".BACKUP", ".202611",
                                ".damaged", ".aB3dE",  ".aB3dE90", "aB3dE9",  ".aB-dE9"};
    for (const std::string& ending : kept) {
        WriteBytes(Path(settings + ending), "mine");
    }
    WriteBytes(Path("x" + settings + ".aB3dE9"), "mine");
    fs::create_directory(Path(settings + ".fO1der"));
    fs::create_symlink("/nowhere", Path(settings + ".l1NkeD"));
    RemoveLeftovers(folder_.Path());
    std::size_t names = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder_.Path())) {
        ++names;
    }
    for (const std::string& ending : kept) {
        EXPECT_TRUE(fs::exists(Path(settings + ending))) << ending;
    }
    constexpr std::size_t kOthers = 4;  // x..., the folder, the link, "state"
    EXPECT_EQ(names, std::size(kept) + kOthers);
}

}  // namespace
}  // namespace veldrin

// Desktop entries: their values, and which ones stand for a class of files.
#include "platform/desktop/associations/desktop_entry.h"

#include <gtest/gtest.h>

#include "platform/desktop/associations/entries.h"

namespace {

using namespace platform;
using namespace platform::desktop;

TEST(ExecValue, PlainArgumentsStandAsTheyAre) {
    EXPECT_EQ(ExecValue({"/usr/bin/p", "/ADD", "%1"}), "/usr/bin/p /ADD %F");
    EXPECT_EQ(ExecValue({"/m\xC3\xBCsik/\xE9", "%1"}), "/m\xC3\xBCsik/\xE9 %F");
    EXPECT_EQ(ExecValue({"/p"}), "/p");
}

TEST(ExecValue, ReservedCharactersAreQuoted) {
    EXPECT_EQ(ExecValue({"/a b", "", "%1"}), R"("/a b" "" %F)");
    for (const char reserved : std::string_view("'><~|&;*?#()")) {
        const std::string path = std::string("/a") + reserved;
        EXPECT_EQ(ExecValue({path}), '"' + path + '"');
    }
}

// Once for the quotes, and once more as every backslash of a value.
TEST(ExecValue, WhatQuotesDoNotHoldIsEscapedTwice) {
    EXPECT_EQ(ExecValue({R"(/a"b)"}), R"("/a\\"b")");
    EXPECT_EQ(ExecValue({"/a`b"}), R"("/a\\`b")");
    EXPECT_EQ(ExecValue({"/a$b"}), R"("/a\\$b")");
    EXPECT_EQ(ExecValue({R"(/a\b)"}), R"("/a\\\\b")");
    EXPECT_EQ(ExecValue({"/a\nb\tc\rd"}), R"("/a\nb\tc\rd")");
}

TEST(ExecValue, PercentSignsAndEqualsSignsGoThroughTheShell) {
    const std::string shell = R"(sh -c "exec \\"\\$0\\" \\"\\$@\\"" )";
    EXPECT_EQ(ExecValue({"/100% a", "%1"}), shell + R"("/100%% a" %F)");
    EXPECT_EQ(ExecValue({"/a=b", "%1"}), shell + "/a=b %F");
    EXPECT_EQ(ExecValue({"/p", "5%", "a=b"}), "/p 5%% a=b");
    EXPECT_EQ(ExecValue({"/%1", "%1"}), shell + "/%%1 %F");
}

TEST(ExecValue, WhatCannotBeExpressedIsNothing) {
    EXPECT_EQ(ExecValue({}), std::nullopt);
    EXPECT_EQ(ExecValue({""}), std::nullopt);
    EXPECT_EQ(ExecValue({"p", "%1"}), std::nullopt);
    EXPECT_EQ(ExecValue({"/a\x01"}), std::nullopt);
    EXPECT_EQ(ExecValue({"/a\x7F"}), std::nullopt);
    EXPECT_EQ(ExecValue({"/p", "--file=%1"}), std::nullopt);
}

const ProgramIdentity kSomePlayer{"some", "Some", "Music Player", "AudioVideo;Audio;"};

FileClass SomeClass() {
    FileClass found;
    found.verbs = {{"enqueue", "Enqueue in Some", {"/a b/p", "/ADD", "%1"}},
                   {"open", "Play with Some", {"/a b/p", "%1"}}};
    found.folderVerbs = found.verbs;
    return found;
}

TEST(Entries, TheProgramsComesFirst) {
    const auto entries = EntriesFor(kSomePlayer, SomeClass(), {"audio/mpeg", "audio/ogg"});
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].file, "some.desktop");
    EXPECT_EQ(entries[0].text, R"([Desktop Entry]
Type=Application
Version=1.0
Name=Some
GenericName=Music Player
Icon=some
TryExec=/a b/p
Exec="/a b/p" %F
Terminal=false
StartupNotify=false
StartupWMClass=some
Categories=AudioVideo;Audio;
MimeType=audio/mpeg;audio/ogg;
Actions=Enqueue;

[Desktop Action Enqueue]
Name=Enqueue in Some
Exec="/a b/p" /ADD %F
)");
}

TEST(Entries, FurtherVerbsAndFoldersHaveHiddenOnes) {
    const auto entries = EntriesFor(kSomePlayer, SomeClass(), {"audio/mpeg"});
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[1].file, "some_enqueue.desktop");
    EXPECT_EQ(entries[1].text, R"([Desktop Entry]
Type=Application
Version=1.0
Name=Enqueue in Some
GenericName=Music Player
Icon=some
TryExec=/a b/p
Exec="/a b/p" /ADD %F
Terminal=false
StartupNotify=false
StartupWMClass=some
NoDisplay=true
MimeType=audio/mpeg;inode/directory;
)");
    EXPECT_EQ(entries[2].file, "some_folder.desktop");
    EXPECT_EQ(entries[2].text, R"([Desktop Entry]
Type=Application
Version=1.0
Name=Play with Some
GenericName=Music Player
Icon=some
TryExec=/a b/p
Exec="/a b/p" %F
Terminal=false
StartupNotify=false
StartupWMClass=some
NoDisplay=true
MimeType=inode/directory;
)");
}

TEST(Entries, AFoldersVerbWithACommandOfItsOwnHasItsOwnEntry) {
    FileClass found = SomeClass();
    found.folderVerbs.front().command = {"/other", "%1"};
    const auto entries = EntriesFor(kSomePlayer, found, {});
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries[1].text.find("MimeType"), std::string::npos);
    EXPECT_EQ(entries[2].file, "some_folder_enqueue.desktop");
    EXPECT_NE(entries[2].text.find("\nExec=/other %F\n"), std::string::npos);
    EXPECT_NE(entries[2].text.find("\nMimeType=inode/directory;\n"), std::string::npos);
}

TEST(Entries, OneCommandThatCannotBeExpressedMeansNone) {
    FileClass found = SomeClass();
    found.verbs.front().command = {"/\x02", "%1"};
    EXPECT_TRUE(EntriesFor(kSomePlayer, found, {"audio/mpeg"}).empty());
}

TEST(Entries, AVerbThatNoFileNameOrActionCanHaveIsPassedOver) {
    FileClass found = SomeClass();
    found.verbs.front().name = "../x";
    const auto entries = EntriesFor(kSomePlayer, found, {});
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0].text.find("Actions"), std::string::npos);
    EXPECT_EQ(entries[1].file, "some_folder_enqueue.desktop");
}

}  // namespace

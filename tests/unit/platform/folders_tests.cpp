#include "platform/files/folders.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "platform/base/text.h"
#include "platform/files/files.h"
#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

using Names = std::vector<std::u16string>;

class Folders : public ::testing::Test {
  protected:
    /// What is listed, folders with a separator behind their names.
    Names Listed(std::string_view name = "") const {
        return NamesOf(ListFolder(folder_.Text(name)).value());
    }
    static Names NamesOf(const std::vector<FolderEntry>& entries) {
        Names names;
        for (const FolderEntry& entry : entries) {
            names.push_back(entry.isFolder ? entry.name + u"/" : entry.name);
        }
        return names;
    }

    support::TempFolder folder_;
};

TEST_F(Folders, AFolderIsListedIgnoringCaseWithoutDotFiles) {
    for (const char* name : {"b", "Z", "a", ".hidden", "B", "10", "2", "_x", "A", "aa"}) {
        folder_.Write(name, "");
    }
    folder_.MakeFolder("Cd");
    folder_.MakeFolder(".git");
    // Names that differ only in case stand by code unit, the capital first.
    EXPECT_EQ(Listed(), (Names{u"10", u"2", u"A", u"a", u"aa", u"B", u"b", u"Cd/", u"Z", u"_x"}));
}

TEST_F(Folders, TheOrderOfAFolderIgnoresTheCaseOfEveryAlphabet) {
    for (const char* name : {"ạb", "Ạa", "Ạc", "ğ", "Ğz", "șx", "Șa"}) {
        folder_.Write(name, "");
    }
    EXPECT_EQ(Listed(), (Names{u"ğ", u"Ğz", u"Șa", u"șx", u"Ạa", u"ạb", u"Ạc"}));
}

TEST_F(Folders, AListedLinkCountsAsWhatItLeadsTo) {
    folder_.MakeFolder("sub");
    folder_.Write("file", "");
    folder_.Link("sub", "linkToFolder");
    folder_.Link("file", "linkToFile");
    EXPECT_EQ(Listed(), (Names{u"file", u"linkToFile", u"linkToFolder/", u"sub/"}));
}

TEST_F(Folders, ANameThatIsNoUtf8IsListedAndCanBeOpened) {
    folder_.Write("caf\xE9.mp3", "12");
    const auto entries = ListFolder(folder_.Text()).value();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].name, u"caf\xDCE9.mp3");
    EXPECT_EQ(FileLength(JoinPath(folder_.Text(), entries[0].name)), 2);
}

TEST_F(Folders, ASearchDoesNotEnterAFolderThatItIsIn) {
    folder_.MakeFolder("a/b");
    folder_.MakeFolder("other");
    folder_.Link("..", "a/b/parent");
    folder_.Link("/", "a/root");
    folder_.Link(folder_.Path("a"), "a/b/byName");
    folder_.Link("../../other", "a/b/aside");
    FolderTrail trail(folder_.Text("a/"));
    EXPECT_FALSE(trail.Enter(folder_.Text("a/root/")));
    EXPECT_FALSE(trail.Enter(folder_.Text("a/")));
    ASSERT_TRUE(trail.Enter(folder_.Text("a/b/")));
    EXPECT_FALSE(trail.Enter(folder_.Text("a/b/")));
    EXPECT_FALSE(trail.Enter(folder_.Text("a/b/parent/")));
    EXPECT_FALSE(trail.Enter(folder_.Text("a/b/byName/")));
    ASSERT_TRUE(trail.Enter(folder_.Text("a/b/aside/")));
    EXPECT_FALSE(trail.Enter(folder_.Text("other/")));  // the same one
    trail.Leave();
    EXPECT_TRUE(trail.Enter(folder_.Text("other/")));
}

TEST_F(Folders, ASearchDoesNotEnterWhatItCannotReach) {
    FolderTrail trail(folder_.Text() + u"/");
    EXPECT_FALSE(trail.Enter(u""));
    EXPECT_FALSE(trail.Enter(folder_.Text("none/")));
    EXPECT_FALSE(trail.Enter(u"/" + std::u16string(5000, u'x') + u"/"));
    // Where it begins may be missing too.
    folder_.MakeFolder("sub");
    FolderTrail nowhere(u"");
    EXPECT_TRUE(nowhere.Enter(folder_.Text("sub/")));
}

TEST_F(Folders, AnEmptyFolderIsNotOneThatCannotBeRead) {
    folder_.MakeFolder("empty");
    folder_.Write("file", "");
    const auto entries = ListFolder(folder_.Text("empty"));
    ASSERT_TRUE(entries);
    EXPECT_TRUE(entries->empty());
    EXPECT_FALSE(ListFolder(folder_.Text("none")));
    EXPECT_FALSE(ListFolder(folder_.Text("file")));
    EXPECT_FALSE(ListFolder(u""));
    EXPECT_FALSE(ListFolder(folder_.Text("empty") + std::u16string(u"\0x", 2)));
}

TEST_F(Folders, PermissionsDecideWhatCanBeRead) {
    folder_.Write("closed/file", "");
    folder_.Write("unentered/file", "");
    folder_.MakeFolder("unentered/sub");
    folder_.Link("file", "unentered/link");
    const support::AsOrdinaryUser user(folder_);
    std::filesystem::permissions(folder_.Path("closed"), std::filesystem::perms(0300));
    std::filesystem::permissions(folder_.Path("unentered"), std::filesystem::perms(0400));
    EXPECT_FALSE(ListFolder(folder_.Text("closed")));
    // Its names can be read, but no link in it followed.
    EXPECT_EQ(Listed("unentered"), (Names{u"file", u"sub/"}));
    EXPECT_FALSE(FolderTrail(folder_.Text() + u"/").Enter(folder_.Text("unentered/sub/")));
}

TEST_F(Folders, NamesAreListedWhateverTheyHold) {
    const std::string longest(255, 'n');
    const std::string longestOfTwoBytes = std::string(1, 'z') + [] {
        std::string letters;
        for (int i = 0; i < 127; ++i) {
            letters += "é";
        }
        return letters;
    }();
    for (const std::string& name :
         {std::string("line\r\nend"), std::string("back\\slash"), std::string(" "),
          std::string("[..]"), std::string("\x01\x7F"), std::string("\xFF\xFE"),
          std::string("音楽 🎵"), std::string("a:b*c?\"<>|"), longest, longestOfTwoBytes}) {
        folder_.Write(name, "12");
    }
    folder_.Write("...", "");
    const auto entries = ListFolder(folder_.Text()).value();
    EXPECT_EQ(entries.size(), 10U);  // "..." begins with a dot
    std::vector<std::string> narrow;
    for (const FolderEntry& entry : entries) {
        narrow.push_back(Narrow(entry.name));
        EXPECT_EQ(FileLength(JoinPath(folder_.Text(), entry.name)), 2) << narrow.back();
    }
    std::sort(narrow.begin(), narrow.end());
    auto expected = folder_.Names();
    std::erase(expected, "...");
    EXPECT_EQ(narrow, expected);
}

TEST_F(Folders, ALinkThatLeadsNowhereIsLeftOut) {
    folder_.Write("file", "");
    folder_.Link("nowhere", "dead");
    folder_.Link("self", "self");
    folder_.Link("there", "here");
    folder_.Link("here", "there");
    folder_.Link("file/below", "through a file");
    EXPECT_EQ(Listed(), (Names{u"file"}));
}

TEST_F(Folders, WhatMayNeverEndIsLeftOut) {
    ASSERT_EQ(mkfifo(folder_.Path("pipe.mp3").c_str(), 0600), 0);
    folder_.Link("pipe.mp3", "link.mp3");
    folder_.Link("/dev/zero", "zero.mp3");
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder_.Path("socket.mp3");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    ASSERT_EQ(bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    close(descriptor);
    folder_.Write("song.mp3", "");
    EXPECT_EQ(Listed(), (Names{u"song.mp3"}));
}

TEST_F(Folders, FilesMayComeAndGoWhileAFolderIsRead) {
    for (int i = 0; i < 300; ++i) {
        folder_.Write("stays" + std::to_string(1000 + i), "");
    }
    std::atomic<bool> done = false;
    std::thread other([&] {
        for (int i = 0; !done; ++i) {
            const std::string name = "goes" + std::to_string(i % 50);
            folder_.Write(name, "");
            folder_.Link("stays1000", name + "link");
            folder_.Remove(name);
            folder_.Remove(name + "link");
        }
    });
    for (int i = 0; i < 200; ++i) {
        auto names = Listed();
        std::erase_if(names, [](const std::u16string& name) { return name.starts_with(u"goes"); });
        EXPECT_EQ(names.size(), 300U);
        EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    }
    done = true;
    other.join();
}

TEST_F(Folders, TwentyThousandNamesComeInOrder) {
    for (int i = 0; i < 20'000; ++i) {
        folder_.Write((i % 2 == 0 ? "Song " : "sONG ") + std::to_string(10'000 + i), "");
    }
    const auto entries = ListFolder(folder_.Text()).value();
    ASSERT_EQ(entries.size(), 20'000U);
    EXPECT_EQ(entries[0].name, u"Song 10000");
    EXPECT_EQ(entries[1].name, u"sONG 10001");
    EXPECT_EQ(entries[19'999].name, u"sONG 29999");
}

TEST_F(Folders, NoDescriptorStaysOpen) {
    const auto open = [] {
        const std::filesystem::directory_iterator all("/proc/self/fd");
        return std::distance(begin(all), end(all));
    };
    folder_.Write("file", "");
    const auto before = open();
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(ListFolder(folder_.Text()));
        EXPECT_FALSE(ListFolder(folder_.Text("file")));
    }
    EXPECT_EQ(open(), before);
}

}  // namespace
}  // namespace platform

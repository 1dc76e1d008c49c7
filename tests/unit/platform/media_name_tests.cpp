#include "platform/files/media_name.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/files/file_address.h"
#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

class MediaName : public ::testing::Test {
  protected:
    /// From the temporary folder on; "-" if there is no such file.
    std::string Found(std::string_view name, MediaNames names = MediaNames::kPaths) const {
        const auto path = PathOfMediaName(name, names, folder_.Path());
        return path ? path->substr(folder_.Path().size()) : "-";
    }

    support::TempFolder folder_;
};

TEST_F(MediaName, NamesAreSeenFromTheListsFolder) {
    folder_.Write("sub/a.mp3", "");
    EXPECT_EQ(Found("sub/a.mp3"), "/sub/a.mp3");
    EXPECT_EQ(Found("./sub/../sub//a.mp3"), "/sub/a.mp3");
    EXPECT_EQ(Found(folder_.Path("sub/a.mp3")), "/sub/a.mp3");
    EXPECT_EQ(Found("sub"), "/sub");
    EXPECT_EQ(Found("sub/b.mp3"), "-");
    EXPECT_EQ(Found(""), "-");
}

TEST_F(MediaName, PipesAndDevicesAreNotThere) {
    ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(Found("pipe"), "-");
    EXPECT_FALSE(PathOfMediaName("/dev/zero", MediaNames::kPaths, "/"));
}

TEST_F(MediaName, BackslashesPartNamesWhereNoFileHasThem) {
    folder_.Write("Artist/Song.mp3", "");
    EXPECT_EQ(Found("Artist\\Song.mp3"), "/Artist/Song.mp3");
    EXPECT_EQ(Found(".\\Artist\\Song.mp3"), "/Artist/Song.mp3");
    EXPECT_EQ(Found("C:\\Artist\\Song.mp3"), "-");
    folder_.Write("Artist\\Song.mp3", "");
    EXPECT_EQ(Found("Artist\\Song.mp3"), "/Artist\\Song.mp3");
}

TEST_F(MediaName, EscapesComeLastInPathsAndFirstInAddresses) {
    folder_.Write("a b.mp3", "");
    EXPECT_EQ(Found("a%20b.mp3"), "/a b.mp3");
    EXPECT_EQ(Found("a%20b.mp3", MediaNames::kAddresses), "/a b.mp3");
    folder_.Write("a%20b.mp3", "");
    EXPECT_EQ(Found("a%20b.mp3"), "/a%20b.mp3");
    EXPECT_EQ(Found("a%20b.mp3", MediaNames::kAddresses), "/a b.mp3");
    EXPECT_EQ(Found("a%2520b.mp3", MediaNames::kAddresses), "/a%20b.mp3");
}

TEST_F(MediaName, BlanksAtTheEndsCountWhereAFileHasThem) {
    folder_.Write("a.mp3", "");
    EXPECT_EQ(Found(" \ta.mp3 "), "/a.mp3");
    folder_.Write("a.mp3 ", "");
    EXPECT_EQ(Found("a.mp3 "), "/a.mp3 ");
}

TEST_F(MediaName, BytesThatAreNoUtf8AreTheNameOrLatin1) {
    folder_.Write("caf\xC3\xA9.mp3", "");
    EXPECT_EQ(Found("caf\xE9.mp3"), "/caf\xC3\xA9.mp3");
    EXPECT_EQ(Found("caf%E9.mp3"), "/caf\xC3\xA9.mp3");
    folder_.Write("caf\xE9.mp3", "");
    EXPECT_EQ(Found("caf\xE9.mp3"), "/caf\xE9.mp3");
}

TEST_F(MediaName, AddressesOfFilesAreThoseOfThisMachine) {
    folder_.Write("a b%.mp3", "");
    const std::string path = folder_.Path() + "/a%20b%25.mp3";
    EXPECT_EQ(Found("file://" + path), "/a b%.mp3");
    EXPECT_EQ(Found("FILE:" + path + " "), "/a b%.mp3");
    EXPECT_EQ(Found("file://localhost" + path), "/a b%.mp3");
    EXPECT_EQ(Found("file://" + HostName() + path), "/a b%.mp3");
    EXPECT_EQ(Found("file://elsewhere.example" + path), "-");
    EXPECT_EQ(Found("file:///none"), "-");
}

TEST(MediaStream, WhatComesOverANetworkHasAScheme) {
    for (const char* name : {"http://a/b", " https://x", "mms://a", "icy+x.1://a"}) {
        EXPECT_TRUE(IsStream(name)) << name;
    }
    for (const char* name :
         {"a.mp3", "file:///a", "FILE://a/b", "c://a", "/a/http://b", "://a", ""}) {
        EXPECT_FALSE(IsStream(name)) << name;
    }
}

}  // namespace
}  // namespace platform

// What paths of the command line stand for.
#include "host/given_paths.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

using Lines = std::vector<std::string>;

class Given : public testing::Test {
  protected:
    std::string Write(const std::string& name, const std::string& bytes = "") {
        const std::filesystem::path path = scratch_.Path(name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << bytes;
        return path;
    }
    GivenPaths Unfolded(const std::vector<std::string>& names, bool add = false,
                        platform::Below below = platform::Below::kIncluded) {
        std::vector<std::string> paths;
        for (const std::string& name : names) {
            paths.push_back(scratch_.Path(name));
        }
        return UnfoldGiven(paths, {add, below, SupportedTypes::Known(), {}});
    }
    std::string Play(const std::string& name) { return "\"" + scratch_.Path(name) + "\""; }
    std::string Add(const std::string& name) { return "/ADD " + Play(name); }

    ScratchFolder scratch_;
};

TEST_F(Given, FoldersBecomeALineForEachWithMusicInIt) {
    for (const char* name : {"m/z.mp3", "m/B/1.ogg", "m/a/cover.jpg", "m/a/cd/1.FLAC"}) {
        Write(name);
    }
    const GivenPaths given = Unfolded({"m"});
    EXPECT_EQ(given.lines, (Lines{Play("m/a/cd"), Add("m/B"), Add("m")}));
    EXPECT_EQ(given.places,
              (Lines{scratch_.Path("m/a/cd"), scratch_.Path("m/B"), scratch_.Path("m")}));
    EXPECT_TRUE(given.complaints.empty());
    EXPECT_EQ(Unfolded({"m"}, true).lines, (Lines{Add("m/a/cd"), Add("m/B"), Add("m")}));
    EXPECT_EQ(Unfolded({"m"}, false, platform::Below::kLeftOut).lines, (Lines{Play("m")}));
}

TEST_F(Given, WhatHoldsNothingDoesNotEmptyTheList) {
    Write("pics/a.jpg");
    Write("b.mp3");
    const GivenPaths given = Unfolded({"none", "pics", "b.mp3"});
    EXPECT_EQ(given.lines, (Lines{Play("b.mp3")}));
    ASSERT_EQ(given.complaints.size(), 2U);
    EXPECT_EQ(given.complaints[0], "'" + scratch_.Path("none") + "': No such file or directory");
    EXPECT_TRUE(given.complaints[1].starts_with("no music (*.aac;")) << given.complaints[1];
    EXPECT_TRUE(given.complaints[1].ends_with(") in '" + scratch_.Path("pics") +
                                              "' or in a folder below it"))
        << given.complaints[1];
    EXPECT_TRUE(Unfolded({"pics"}).lines.empty());
}

TEST_F(Given, AFileThatIsNamedItselfIsHandedOver) {
    Write("notes.txt");
    EXPECT_EQ(Unfolded({"notes.txt"}).lines, (Lines{Play("notes.txt")}));
}

TEST_F(Given, PipesAreLeftOut) {
    ASSERT_EQ(mkfifo(scratch_.Path("pipe.mp3").c_str(), 0600), 0);
    const GivenPaths given = Unfolded({"pipe.mp3"});
    EXPECT_TRUE(given.lines.empty());
    EXPECT_EQ(given.complaints,
              (Lines{"'" + scratch_.Path("pipe.mp3") + "': neither a file nor a folder"}));
}

TEST_F(Given, AListBecomesALineForEachFile) {
    Write("a.mp3");
    Write("sub/b.mp3");
    Write("l.m3u8", "sub/b.mp3\nnotes.txt\na.mp3\n");
    Write("notes.txt");
    const GivenPaths given = Unfolded({"l.m3u8"});
    EXPECT_EQ(given.lines, (Lines{Play("sub/b.mp3"), Add("a.mp3")}));
    EXPECT_EQ(given.complaints.size(), 1U);
}

}  // namespace
}  // namespace veldrin

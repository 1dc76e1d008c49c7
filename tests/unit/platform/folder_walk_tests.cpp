#include "platform/files/folder_walk.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

using PathNames = std::vector<std::string>;

class FolderWalk : public ::testing::Test {
  protected:
    /// Each folder that is visited, from the temporary folder on, and the files in it.
    PathNames Walked(Below below = Below::kIncluded) {
        PathNames visits;
        end_ = WalkFolders(folder_.Path(), below,
                           [&](const std::string& folder, const PathNames& files) {
                               std::string visit = folder.substr(folder_.Path().size());
                               for (const std::string& file : files) {
                                   visit += " " + file;
                               }
                               visits.push_back(visit);
                               return true;
                           });
        return visits;
    }

    support::TempFolder folder_;
    WalkEnd end_;
};

TEST_F(FolderWalk, WhatIsBelowComesBeforeTheFilesOfAFolder) {
    for (const char* name :
         {"z.mp3", "B/2.mp3", "B/1.mp3", "a/x/deep.mp3", "a/y.mp3", "C/only/q"}) {
        folder_.Write(name, "");
    }
    EXPECT_EQ(Walked(), (PathNames{"/a/x deep.mp3", "/a y.mp3", "/B 1.mp3 2.mp3", "/C/only q", "/C",
                                   " z.mp3"}));
    EXPECT_TRUE(end_.complete);
    EXPECT_EQ(end_.unreadable, 0U);
}

TEST_F(FolderWalk, AFolderAloneIsOneVisit) {
    folder_.Write("b/1.mp3", "");
    folder_.Write("a.mp3", "");
    EXPECT_EQ(Walked(Below::kLeftOut), (PathNames{" a.mp3"}));
}

TEST_F(FolderWalk, HiddenFoldersAndFilesAreLeftOut) {
    folder_.Write(".trash/1.mp3", "");
    folder_.Write("a/.hidden.mp3", "");
    folder_.Write("a/b.mp3", "");
    EXPECT_EQ(Walked(), (PathNames{"/a b.mp3", ""}));
}

TEST_F(FolderWalk, AFolderIsVisitedOnceWhateverLinksLeadToIt) {
    folder_.Write("m/song.mp3", "");
    folder_.Link("m", "again");
    folder_.Link("..", "m/up");
    folder_.Link("loop", "loop");
    EXPECT_EQ(Walked(), (PathNames{"/again song.mp3", ""}));
    EXPECT_EQ(end_.unreadable, 0U);
}

TEST_F(FolderWalk, NamesMayHoldAnyByte) {
    folder_.Write("b\xe9\n\"/\xff'.mp3", "");
    EXPECT_EQ(Walked(), (PathNames{"/b\xe9\n\" \xff'.mp3", ""}));
}

TEST_F(FolderWalk, PipesAreNoFiles) {
    ASSERT_EQ(mkfifo(folder_.Path("pipe.mp3").c_str(), 0600), 0);
    EXPECT_EQ(Walked(), (PathNames{""}));
}

TEST_F(FolderWalk, WhatCannotBeReadIsCounted) {
    folder_.Write("closed/1.mp3", "");
    folder_.Write("open/2.mp3", "");
    const support::AsOrdinaryUser user(folder_);
    chmod(folder_.Path("closed").c_str(), 0);
    EXPECT_EQ(Walked(), (PathNames{"/open 2.mp3", ""}));
    EXPECT_EQ(end_.unreadable, 1U);
    chmod(folder_.Path("closed").c_str(), 0700);
}

TEST_F(FolderWalk, WhatIsNoFolderIsUnreadable) {
    const auto none = [](const std::string& /*folder*/, const PathNames& /*files*/) {
        return true;
    };
    EXPECT_EQ(WalkFolders(folder_.Path("none"), Below::kIncluded, none).unreadable, 1U);
}

TEST_F(FolderWalk, WhatVanishesMeanwhileIsNotVisited) {
    folder_.Write("a/1", "");
    folder_.Write("b/2", "");
    PathNames visits;
    const WalkEnd end = WalkFolders(folder_.Path(), Below::kIncluded,
                                    [&](const std::string& folder, const PathNames& /*files*/) {
                                        visits.push_back(folder.substr(folder_.Path().size()));
                                        folder_.Remove("b");
                                        return true;
                                    });
    EXPECT_EQ(visits, (PathNames{"/a", ""}));
    EXPECT_EQ(end.unreadable, 1U);
    EXPECT_TRUE(end.complete);
}

TEST_F(FolderWalk, AVisitorCanStopIt) {
    folder_.Write("a/1", "");
    folder_.Write("b/2", "");
    int visits = 0;
    const WalkEnd end = WalkFolders(folder_.Path(), Below::kIncluded,
                                    [&](const std::string& /*folder*/, const PathNames& /*files*/) {
                                        ++visits;
                                        return false;
                                    });
    EXPECT_EQ(visits, 1);
    EXPECT_FALSE(end.complete);
}

// The system takes paths of 4095 bytes; what lies deeper cannot be played either.
TEST_F(FolderWalk, WhatLiesTooDeepIsLeftOut) {
    const auto start = std::filesystem::current_path();
    std::filesystem::current_path(folder_.Path());
    const std::string name(200, 'd');
    for (int level = 0; level < 30; ++level) {
        std::filesystem::create_directory(name);
        std::filesystem::current_path(name);
    }
    std::filesystem::current_path(start);
    const PathNames visits = Walked();
    EXPECT_EQ(visits.size(), (4095 - folder_.Path().size()) / 201 + 1);
    EXPECT_EQ(visits.back(), "");
    EXPECT_EQ(end_.unreadable, 1U);
}

}  // namespace
}  // namespace platform

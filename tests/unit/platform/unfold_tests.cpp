#include "platform/files/unfold.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

using PathNames = std::vector<std::string>;

class Unfold : public ::testing::Test {
  protected:
    /// What comes of a name in the temporary folder: files, and folders with a separator behind.
    PathNames Unfolded(const std::string& name, Unfolder::Rules rules = {}) {
        PathNames taken;
        const auto take = [&](const std::string& path) {
            taken.push_back(path.substr(folder_.Path().size() + 1));
            return taken.size() < most_;
        };
        Unfolder unfolder(std::move(rules),
                          {take, [&](const std::string& folder, const PathNames& /*files*/) {
                               return take(folder + "/");
                           }});
        unfolder.Unfold(folder_.Path(name), name);
        remarks_ = unfolder.Remarks();
        return taken;
    }
    static Unfolder::Rules Music() {
        Unfolder::Rules rules;
        rules.wanted = [](const std::string& name) { return name.ends_with(".mp3"); };
        rules.wantedText = "music (*.mp3)";
        return rules;
    }

    support::TempFolder folder_;
    PathNames remarks_;
    std::size_t most_ = 1000;
};

TEST_F(Unfold, WhatIsNeitherFolderNorListIsTakenAsItIs) {
    folder_.Write("a.txt", "");
    EXPECT_EQ(Unfolded("a.txt", Music()), (PathNames{"a.txt"}));
    EXPECT_EQ(Unfolded("none.mp3", Music()), (PathNames{"none.mp3"}));
    EXPECT_TRUE(remarks_.empty());
}

TEST_F(Unfold, OnlyFoldersWithSomethingWantedAreTaken) {
    folder_.Write("m/a.jpg", "");
    folder_.Write("m/b/1.mp3", "");
    folder_.Write("m/c/d/cover.jpg", "");
    EXPECT_EQ(Unfolded("m", Music()), (PathNames{"m/b/"}));
    EXPECT_TRUE(remarks_.empty());
}

TEST_F(Unfold, AFolderWithNothingIsRemarkedOn) {
    folder_.Write("m/a.jpg", "");
    folder_.Write("m/b/1.mp3", "");
    EXPECT_EQ(Unfolded("m/b", Music()), (PathNames{"m/b/"}));
    folder_.Remove("m/b");
    EXPECT_EQ(Unfolded("m", Music()), PathNames());
    EXPECT_EQ(remarks_, (PathNames{"no music (*.mp3) in 'm' or in a folder below it"}));
    Unfolder::Rules flat = Music();
    flat.below = Below::kLeftOut;
    EXPECT_EQ(Unfolded("m", flat), PathNames());
    EXPECT_EQ(remarks_, (PathNames{"no music (*.mp3) in 'm'"}));
}

TEST_F(Unfold, AListBecomesItsFilesInItsOrder) {
    for (const char* name : {"l/b.mp3", "l/sub/a.mp3", "l/dir/deep/x.mp3", "c.mp3"}) {
        folder_.Write(name, "");
    }
    folder_.Write("l/list.m3u", "sub/a.mp3\n../c.mp3\ndir\nb.mp3\nb.mp3\n");
    EXPECT_EQ(Unfolded("l/list.m3u"),
              (PathNames{"l/sub/a.mp3", "c.mp3", "l/dir/deep/", "l/b.mp3", "l/b.mp3"}));
    EXPECT_TRUE(remarks_.empty());
}

TEST_F(Unfold, ListsInFoldersAreFilesLikeOthers) {
    folder_.Write("l/list.m3u", "a.mp3\n");
    folder_.Write("l/a.mp3", "");
    EXPECT_EQ(Unfolded("l", Music()), (PathNames{"l/"}));
}

TEST_F(Unfold, WhatAListNamesInVainIsCountedInOneLine) {
    folder_.Write("a.mp3", "");
    folder_.Write("notes.txt", "");
    folder_.Write("l.m3u", "x.mp3\na.mp3\ny.mp3\nnotes.txt\nl.m3u\nhttp://a/b\n");
    EXPECT_EQ(Unfolded("l.m3u", Music()), (PathNames{"a.mp3"}));
    EXPECT_EQ(remarks_, (PathNames{"'l.m3u': 2 of 6 names in this list lead nowhere",
                                   "'l.m3u': 1 of 6 names in this list leads to no music (*.mp3)",
                                   "'l.m3u': 1 further list in this one is left out",
                                   "'l.m3u': streams are not played: 'http://a/b'"}));
}

TEST_F(Unfold, OfManyStreamsTenAreNamed) {
    std::string list;
    std::string named;
    for (int i = 0; i < 12; ++i) {
        list += "http://s/" + std::to_string(i) + "\n";
        if (i < 10) {
            named += (i == 0 ? "'" : ", '") + ("http://s/" + std::to_string(i)) + "'";
        }
    }
    folder_.Write("l.m3u", list);
    EXPECT_EQ(Unfolded("l.m3u"), PathNames());
    EXPECT_EQ(remarks_, (PathNames{"'l.m3u': streams are not played: " + named + " and 2 more"}));
}

TEST_F(Unfold, ListsThatCannotBeReadAreRemarkedOn) {
    folder_.Write("empty.pls", "");
    EXPECT_EQ(Unfolded("empty.pls"), PathNames());
    EXPECT_EQ(remarks_, (PathNames{"'empty.pls': this list names nothing"}));
    EXPECT_EQ(Unfolded("none.m3u"), PathNames());
    EXPECT_EQ(remarks_, (PathNames{"'none.m3u': cannot be read"}));
    folder_.Write("image.cue", "FILE \"a.wav\" WAVE\n");
    EXPECT_EQ(Unfolded("image.cue"), PathNames());
    EXPECT_EQ(remarks_,
              (PathNames{"'image.cue': a cue sheet without tracks of its own names nothing "
                         "to play"}));
}

TEST_F(Unfold, XspfIsReadByWhoCan) {
    folder_.Write("a b.mp3", "");
    folder_.Write("l.xspf", "bytes");
    Unfolder::Rules rules;
    rules.xspf = [](std::string_view bytes) -> std::optional<PathNames> {
        return bytes == "bytes" ? std::optional(PathNames{"a%20b.mp3"}) : std::nullopt;
    };
    EXPECT_EQ(Unfolded("l.xspf", rules), (PathNames{"a b.mp3"}));
    EXPECT_EQ(Unfolded("l.xspf"), PathNames());
    EXPECT_EQ(remarks_, (PathNames{"'l.xspf': this is no xspf list"}));
}

TEST_F(Unfold, WhoHasEnoughGetsNoMore) {
    folder_.Write("a/1.mp3", "");
    folder_.Write("b/2.mp3", "");
    folder_.Write("l.m3u", "a/1.mp3\nb/2.mp3\n");
    most_ = 1;
    EXPECT_EQ(Unfolded("", Music()), (PathNames{"a/"}));
    EXPECT_TRUE(remarks_.empty());
    EXPECT_EQ(Unfolded("l.m3u", Music()), (PathNames{"a/1.mp3"}));
}

TEST_F(Unfold, FoldersAndListsHaveToBeUnfolded) {
    folder_.Write("m/a.mp3", "");
    EXPECT_TRUE(IsFolded(folder_.Path("m")));
    EXPECT_TRUE(IsFolded("/none.m3u"));
    EXPECT_FALSE(IsFolded(folder_.Path("m/a.mp3")));
    EXPECT_FALSE(IsFolded("/none.mp3"));
}

}  // namespace
}  // namespace platform

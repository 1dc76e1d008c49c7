// SearchFiles on real trees: links in circles, what cannot be read, what vanishes, and depth.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/base/impulses.h"
#include "platform/base/text.h"
#include "playlist/media.h"
#include "tests/unit/support/screen_driver.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::World;
using support::WorldBuilder;
using Texts = std::vector<std::u16string>;

class MediaSearch : public ::testing::Test {
  protected:
    const support::TempFolder& Folder() { return world_->folder; }
    /// Paths that a search of the folder m adds, without what they begin with.
    Texts Found() {
        SearchFiles(Folder().Text("m/"), u"*.*", true);
        Texts paths = world_->Paths();
        for (std::u16string& path : paths) {
            path.erase(0, Folder().Text("m/").size());
        }
        return paths;
    }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(MediaSearch, LinksInACircleAreFollowedOnceOnEachWay) {
    Folder().Write("m/x/1.mp3", "");
    Folder().Write("m/y/2.mp3", "");
    Folder().Link("../y", "m/x/a");
    Folder().Link("../x", "m/y/b");
    EXPECT_EQ(Found(), (Texts{u"x/a/2.mp3", u"x/1.mp3", u"y/b/1.mp3", u"y/2.mp3"}));
}

TEST_F(MediaSearch, LinksToTheFolderItselfAndAboveAreNotFollowed) {
    Folder().Write("m/x/1.mp3", "");
    Folder().Link(".", "m/x/here");
    Folder().Link("..", "m/x/above");
    Folder().Link("../..", "m/x/further");
    Folder().Link("/", "m/x/root");
    EXPECT_EQ(Found(), (Texts{u"x/1.mp3"}));
}

TEST_F(MediaSearch, TwoLinksToOneFolderAreBothFollowed) {
    Folder().Write("aside/z.mp3", "");
    Folder().MakeFolder("m");
    Folder().Link("../aside", "m/one");
    Folder().Link("../aside", "m/two");
    EXPECT_EQ(Found(), (Texts{u"one/z.mp3", u"two/z.mp3"}));
}

TEST_F(MediaSearch, AFolderIsNotSearchedWithinItselfAlsoWithoutALink) {
    Folder().Write("r/g.mp3", "");
    Folder().Write("r/o/f.mp3", "");
    Folder().MakeFolder("m");
    Folder().Link("../r/o", "m/l");
    Folder().Link("..", "r/o/c");
    // From o a link leads up to r, and there o is an ordinary folder.
    EXPECT_EQ(Found(), (Texts{u"l/c/g.mp3", u"l/f.mp3"}));
}

TEST_F(MediaSearch, PipesAndDeadLinksAreNeitherAddedNorAskedFor) {
    Folder().Write("m/a.mp3", "");
    ASSERT_EQ(mkfifo(Folder().Path("m/pipe.mp3").c_str(), 0600), 0);
    Folder().Link("nowhere", "m/dead.mp3");
    EXPECT_EQ(Found(), (Texts{u"a.mp3"}));
    EXPECT_EQ(world_->host.Count(ImpulseIsSupported), 1);
}

TEST_F(MediaSearch, WhatMayNotBeReadIsPassedOver) {
    Folder().Write("m/closed/1.mp3", "");
    Folder().Write("m/unentered/2.mp3", "");
    Folder().Write("m/unentered/sub/3.mp3", "");
    Folder().Write("m/z.mp3", "");
    const support::AsOrdinaryUser user(Folder());
    std::filesystem::permissions(Folder().Path("m/closed"), std::filesystem::perms(0300));
    std::filesystem::permissions(Folder().Path("m/unentered"), std::filesystem::perms(0400));
    EXPECT_EQ(Found(), (Texts{u"unentered/2.mp3", u"z.mp3"}));
}

TEST_F(MediaSearch, AFolderThatVanishesMeanwhileBringsNothing) {
    Folder().Write("m/a/1.mp3", "");
    Folder().Write("m/b/2.mp3", "");
    Folder().Write("m/c.mp3", "");
    world_->host.inside[ImpulseGetTitle] = [this] { Folder().Remove("m"); };
    // What had been listed is added all the same.
    EXPECT_EQ(Found(), (Texts{u"a/1.mp3", u"c.mp3"}));
}

TEST_F(MediaSearch, FiveHundredLevelsAreSearched) {
    std::string path = "m/";
    for (int level = 0; level < 500; ++level) {
        path += "d/";
    }
    Folder().Write(path + "end.mp3", "");
    EXPECT_EQ(Found(), (Texts{platform::Widen(path.substr(2)) + u"end.mp3"}));
}

// The system takes no path of 4096 bytes: what lies deeper can be made step by step, and found not.
TEST_F(MediaSearch, APathThatIsTooLongEndsTheSearchQuietly) {
    const std::string name(200, 'd');
    Folder().Write("m/a.mp3", "");
    int at = open(Folder().Path("m").c_str(), O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < 30; ++level) {
        ASSERT_EQ(mkdirat(at, name.c_str(), 0700), 0);
        const int below = openat(at, name.c_str(), O_DIRECTORY | O_CLOEXEC);
        ASSERT_GE(below, 0);
        close(openat(below, "x.mp3", O_CREAT | O_WRONLY | O_CLOEXEC, 0600));
        close(at);
        at = below;
    }
    close(at);
    const Texts found = Found();
    // The scratch folder's "m" and 201 bytes a level: the folder of the level must fit with what
    // ends its path. The deepest files come first, and their paths may be too long themselves.
    const std::size_t root = Folder().Path("m").size();
    const std::size_t levels = (4095 - 1 - root) / 201;
    EXPECT_EQ(found.size(), levels + 1);
    EXPECT_EQ(found.back(), u"a.mp3");
}

// No event runs until the search is over, so the label goes to the screen by itself.
TEST(FolderInWork, IsOnTheScreenBeforeAnythingIsAskedOfTheHost) {
    const support::TempFolder folder;
    folder.Write("m/deep/1.mp3", "");
    support::ScreenDriver driver;
    platform::WindowSystem windows(driver);
    support::FakeHost host;
    Ambrisor component(windows, {folder.Path()});
    component.Connect(&host);
    ImpulseValue first;
    ImpulseValue second;
    component.ProcessImpulse(kImpulseAttach, {}, first, second);
    component.ProcessImpulse(kImpulseControl, kControlLoad, first, second);
    first = true;
    second = std::u16string();
    component.ProcessImpulse(kImpulseControl, kControlShow, first, second);
    frmMAIN& main = component.State().Main();
    main.picFrame(kBrowserPanel).Visible(true);
    main.lblFrameAddPathName->Visible(true);
    windows.DoEvents();
    const platform::Rect label = windows.GetWindowRect(main.lblFrameAddPathName->HWnd());
    const platform::Point origin = {main.Left(), main.Top()};
    // Points in another colour than the label's corner, which no letter reaches.
    const auto inked = [&] {
        const platform::Surface& screen = driver.screens[main.HWnd()];
        const auto at = [&](Long x, Long y) {
            return screen.GetPixel({x - origin.x, y - origin.y});
        };
        int points = 0;
        for (Long y = label.top; y < label.bottom; ++y) {
            for (Long x = label.left; x < label.right; ++x) {
                points += at(x, y) != at(label.right - 1, label.top) ? 1 : 0;
            }
        }
        return points;
    };
    EXPECT_EQ(inked(), 0);
    int whenAsked = 0;
    host.inside[ImpulseIsSupported] = [&] { whenAsked = inked(); };
    SearchFiles(folder.Text("m/"), u"*.*", true);
    EXPECT_GT(whenAsked, 0);
}

}  // namespace
}  // namespace sarnel

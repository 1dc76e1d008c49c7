// The file browser on real folders: what cannot be read, what vanishes, and many entries.
#include "browser/filebrowser.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/base/impulses.h"
#include "platform/base/text.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::World;
using support::WorldBuilder;
using Texts = std::vector<std::u16string>;

class FileBrowser : public ::testing::Test {
  protected:
    const support::TempFolder& Folder() { return world_->folder; }
    JList& Rows() { return *world_->Main().lstFilesAndFolders; }
    Texts Filled(std::string_view name) {
        FillBrowser(Rows(), Folder().Text(name));
        Texts texts;
        for (Long row = 0; row < Rows().ListCount(); ++row) {
            texts.push_back(Rows().List(row));
        }
        return texts;
    }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(FileBrowser, AFolderThatCannotBeReadShowsThisLevelAlone) {
    Folder().Write("closed/1.mp3", "");
    const support::AsOrdinaryUser user(Folder());
    std::filesystem::permissions(Folder().Path("closed"), std::filesystem::perms(0300));
    EXPECT_EQ(Filled("closed/"), (Texts{u"[.]"}));
    EXPECT_TRUE(Rows().RedrawFlag());
    EXPECT_EQ(Rows().SelCount(), 0);
    EXPECT_EQ(world_->Main().lblFrameAddPathName->Caption(), Folder().Text("closed/"));
    EXPECT_EQ(world_->Setting("LastDir"), Folder().Path("closed/"));
}

TEST_F(FileBrowser, AFolderThatCannotBeEnteredStillShowsItsNames) {
    Folder().Write("unentered/1.mp3", "");
    Folder().MakeFolder("unentered/sub");
    const support::AsOrdinaryUser user(Folder());
    std::filesystem::permissions(Folder().Path("unentered"), std::filesystem::perms(0400));
    // Not as a folder, though: a path with a separator behind it leads into it.
    EXPECT_EQ(Filled("unentered"), (Texts{u"[.]", u"[..]", u"[sub]", u"1.mp3"}));
}

TEST_F(FileBrowser, RowsLeadWhereTheirNamesCannotBeTyped) {
    Folder().Write("m/caf\xE9/line\nend.mp3", "");
    Folder().Write("m/caf\xE9/back\\slash.mp3", "");
    EXPECT_EQ(Filled("m/"), (Texts{u"[.]", u"[..]", u"[caf\xDCE9]"}));
    FillBrowser(Rows(), Rows().ListData(2));
    ASSERT_EQ(Rows().ListCount(), 4);
    EXPECT_EQ(Rows().List(2), u"back\\slash.mp3");
    EXPECT_EQ(Rows().List(3), u"line\nend.mp3");
    EXPECT_EQ(platform::Narrow(Rows().ListData(3)), Folder().Path("m/caf\xE9/line\nend.mp3"));
    FillBrowser(Rows(), Rows().ListData(1));
    EXPECT_EQ(Rows().List(2), u"[caf\xDCE9]");
}

TEST_F(FileBrowser, PipesAreNotShown) {
    Folder().MakeFolder("m");
    ASSERT_EQ(mkfifo(Folder().Path("m/pipe.mp3").c_str(), 0600), 0);
    EXPECT_EQ(Filled("m/"), (Texts{u"[.]", u"[..]"}));
}

TEST_F(FileBrowser, AFolderThatVanishesMeanwhileIsShownAsItWas) {
    Folder().Write("m/1.mp3", "");
    Folder().Write("m/2.mp3", "");
    world_->host.inside[ImpulseIsSupported] = [this] { Folder().Remove("m"); };
    EXPECT_EQ(Filled("m/"), (Texts{u"[.]", u"[..]", u"1.mp3", u"2.mp3"}));
    // Now it is no folder.
    EXPECT_EQ(Filled("m/"), (Texts{u"[.]", u"[..]", u"1.mp3", u"2.mp3"}));
}

TEST_F(FileBrowser, ALinkIsShownAsWhatItLeadsTo) {
    Folder().Write("m/song.mp3", "");
    Folder().Link("song.mp3", "m/link.mp3");
    Folder().Link("..", "m/up");
    Folder().Link("nowhere", "m/dead.mp3");
    EXPECT_EQ(Filled("m/"), (Texts{u"[.]", u"[..]", u"[up]", u"link.mp3", u"song.mp3"}));
    EXPECT_EQ(Rows().ListData(2), Folder().Text("m/up/"));
    // The parent of a link is the folder that it lies in.
    FillBrowser(Rows(), Rows().ListData(2));
    EXPECT_EQ(Rows().ListData(1), Folder().Text("m/"));
}

TEST_F(FileBrowser, ThousandsOfEntriesAreAskedForOnceEach) {
    constexpr Long kEntries = 2'000;
    for (Long i = 0; i < kEntries; ++i) {
        Folder().Write("m/" + std::to_string(10'000 + i) + ".mp3", "");
    }
    world_->host.Forget();
    FillBrowser(Rows(), Folder().Text("m/"));
    EXPECT_EQ(Rows().ListCount(), kEntries + 2);
    EXPECT_EQ(Rows().List(kEntries + 1), u"11999.mp3");
    EXPECT_EQ(world_->host.Count(ImpulseIsSupported), kEntries);
    EXPECT_TRUE(Rows().RedrawFlag());
}

}  // namespace
}  // namespace sarnel

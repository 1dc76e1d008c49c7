// How media reach the playlist: command lines, folders and drops.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/base/text.h"
#include "playlist/media.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::World;
using support::WorldBuilder;
using Texts = std::vector<std::u16string>;
using Calls = std::vector<FakeHost::Call>;

class Media : public ::testing::Test {
  protected:
    Media() { MakeFiles(); }

    /// Another world, loaded and not shown yet, in the place of the former.
    void Begin(WorldBuilder& builder) {
        world_.reset();  // one component may be alive at a time
        world_ = builder.Loaded();
        MakeFiles();
    }
    void MakeFiles() {
        for (const char* name :
             {"m/b.mp3", "m/A.mp3", "m/.hidden.mp3", "m/deep/x.mp3", "one.mp3"}) {
            world_->folder.Write(name, "");
        }
    }
    std::u16string Path(std::string_view name) { return world_->folder.Text(name); }
    FakeHost& Host() { return world_->host; }
    Texts Paths() { return world_->Paths(); }
    Texts Titles() { return world_->Titles(); }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(Media, AFileIsAskedForAndGetsTheHostsTitle) {
    Host().titles[u"/x.mp3"] = u"Artist - Title";
    AddFileToList(u"x.mp3", u"/x.mp3");
    EXPECT_EQ(Host().calls,
              (Calls{{10, "\"/x.mp3\"", "False", "0"}, {13, "\"/x.mp3\"", "\"x.mp3\"", "0"}}));
    EXPECT_EQ(Titles(), (Texts{u"Artist - Title"}));
    EXPECT_EQ(Paths(), (Texts{u"/x.mp3"}));
}

TEST_F(Media, ARefusedFileIsPassedOverWithoutAQuestionForItsTitle) {
    Host().unsupported.insert(u"/x.txt");
    AddFileToList(u"x.txt", u"/x.txt");
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{10}));
    EXPECT_TRUE(Paths().empty());
}

TEST_F(Media, AHostThatDoesNotAnswerSupportsNothingAndAFailedTitleKeepsTheName) {
    Host().silent = true;
    AddFileToList(u"x.mp3", u"/x.mp3");
    EXPECT_TRUE(Paths().empty());
    Host().silent = false;
    Host().failing = {13};
    AddFileToList(u"x.mp3", u"/x.mp3");
    EXPECT_EQ(Titles(), (Texts{u"x.mp3"}));
}

TEST_F(Media, TheSameFileMayStandTwice) {
    AddFileToList(u"x", u"/x");
    AddFileToList(u"x", u"/x");
    EXPECT_EQ(Paths(), (Texts{u"/x", u"/x"}));
}

TEST_F(Media, APathAtTheStartIsTheWholeListAndPlays) {
    Begin(WorldBuilder().Saved({"old"}));
    world_->Show(Path("one.mp3"));
    EXPECT_EQ(Paths(), (Texts{Path("one.mp3")}));
    EXPECT_EQ(Titles(), (Texts{Path("one.mp3")}));  // the path, until the host says otherwise
    EXPECT_EQ(Host().opened, (Texts{Path("one.mp3")}));
    EXPECT_EQ(world_->List().ListCurrent(), 0);
    EXPECT_EQ(world_->List().ListIndex(), 0);
}

TEST_F(Media, AFolderIsReadInItsOrderWithoutSubfoldersAndItsFirstRowPlays) {
    ProcessCommandLine(Path("m"), true);
    EXPECT_EQ(Titles(), (Texts{u"A.mp3", u"b.mp3"}));
    EXPECT_EQ(Paths(), (Texts{Path("m/A.mp3"), Path("m/b.mp3")}));
    EXPECT_EQ(Host().opened, (Texts{Path("m/A.mp3")}));
}

TEST_F(Media, AtRandomAFolderBeginsWithAPickAndAFileWithItself) {
    world_->State().Random = true;
    ProcessCommandLine(Path("m"), false);
    EXPECT_EQ(world_->State().History.Count(), 1);
    EXPECT_EQ(Host().opened, (Texts{world_->State().History.Item(0)}));
    world_->State().History.Clear();
    Host().Forget();
    ProcessCommandLine(Path("one.mp3"), false);
    EXPECT_EQ(world_->State().History.Count(), 0);
    EXPECT_EQ(Host().opened, (Texts{Path("one.mp3")}));
}

TEST_F(Media, APathWhileRunningTakesTheListsPlaceAndLeavesTheHistory) {
    world_->Rows({u"old"});
    world_->State().History.Add(u"old");
    ProcessCommandLine(Path("one.mp3"), false);
    EXPECT_EQ(Paths(), (Texts{Path("one.mp3")}));
    EXPECT_EQ(world_->State().History.Count(), 1);
}

TEST_F(Media, APathThatIsNoneWhileRunningStillEmptiesTheList) {
    world_->Rows({u"old"});
    world_->List().ListCurrent(0);
    ProcessCommandLine(Path("none.mp3"), false);
    EXPECT_TRUE(Paths().empty());
    EXPECT_EQ(world_->List().ListCurrent(), 0);
    EXPECT_TRUE(Host().calls.empty());
}

TEST_F(Media, AnUnsupportedFileLeavesAnEmptyListAndNothingPlays) {
    Host().unsupported.insert(Path("one.mp3"));
    ProcessCommandLine(Path("one.mp3"), false);
    EXPECT_TRUE(Paths().empty());
    EXPECT_EQ(world_->List().ListCurrent(), -1);
    EXPECT_TRUE(Host().opened.empty());
    Host().unsupported = {Path("m/A.mp3"), Path("m/b.mp3")};
    ProcessCommandLine(Path("m"), false);
    EXPECT_TRUE(Host().opened.empty());
    EXPECT_EQ(world_->List().ListCurrent(), -1);
}

TEST_F(Media, AddInAnyCaseEnqueuesAndStartsNothing) {
    world_->Rows({u"old"});
    world_->List().ListCurrent(0);
    for (const char16_t* word :
         {u"/ADD ", u"/add ", u"/aDd\t", u"/ADD/"}) {  // one further character
        ProcessCommandLine(word + Path("one.mp3"), false);
    }
    ProcessCommandLine(u"/add " + Path("m"), false);
    EXPECT_EQ(Titles(), (Texts{u"old", Path("one.mp3"), Path("one.mp3"), Path("one.mp3"),
                               Path("one.mp3"), u"A.mp3", u"b.mp3"}));
    EXPECT_TRUE(Host().opened.empty());
    EXPECT_EQ(world_->List().ListCurrent(), 0);
}

TEST_F(Media, AddAtTheStartJoinsTheSavedListAndStartsNothingEvenWithPlayAtStartup) {
    Begin(WorldBuilder().Saved({"a", "b"}, 1).Setting("PlayAtStartup", "True"));
    world_->Show(u"/add " + Path("one.mp3"));
    EXPECT_EQ(Paths(), (Texts{u"a", u"b", Path("one.mp3")}));
    EXPECT_EQ(world_->List().ListCurrent(), 1);
    EXPECT_TRUE(Host().opened.empty());
}

TEST_F(Media, AddAloneAddsNothing) {
    for (const char16_t* line : {u"/ADD", u"/add ", u"  /Add  "}) {
        world_->Rows({u"old"});
        ProcessCommandLine(line, false);
    }
    EXPECT_EQ(Paths(), (Texts{u"old", u"old", u"old"}));
    EXPECT_TRUE(Host().calls.empty());
}

TEST_F(Media, AddAloneAtTheStartRestoresTheSavedList) {
    Begin(WorldBuilder().Saved({"a"}, 0).Setting("PlayAtStartup", "True"));
    world_->Show(u"/ADD");
    EXPECT_EQ(Paths(), (Texts{u"a"}));
    EXPECT_TRUE(Host().opened.empty());
}

TEST_F(Media, AQuoteAtEitherEndIsTakenAwayByItself) {
    const std::u16string path = Path("one.mp3");
    for (const std::u16string& line :
         {u"\"" + path + u"\"", u"\"" + path, path + u"\"", u"  \"" + path + u"\"  "}) {
        ProcessCommandLine(line, false);
        EXPECT_EQ(Paths(), (Texts{path}));
    }
    ProcessCommandLine(u"/add \"" + path + u"\"", false);
    EXPECT_EQ(Paths(), (Texts{path, path}));
}

TEST_F(Media, ABlankInsideTheQuotesIsKeptAndLookedUpWith) {
    world_->folder.Write("end ", "");
    ProcessCommandLine(u" \"" + Path("end ") + u"\" ", false);
    EXPECT_EQ(Paths(), (Texts{Path("end ")}));
    ProcessCommandLine(u"\"" + Path("one.mp3") + u" \"", false);
    EXPECT_TRUE(Paths().empty());
}

TEST_F(Media, TheEmptyLineWhileRunningDoesNothing) {
    world_->Rows({u"old"});
    world_->State().PlayAtStartup = true;
    ProcessCommandLine(u"", false);
    ProcessCommandLine(u"   ", false);
    EXPECT_EQ(Paths(), (Texts{u"old"}));
    EXPECT_TRUE(Host().calls.empty());
}

TEST_F(Media, TheEmptyLineAtTheStartRestoresAndPlaysIfAsked) {
    Begin(WorldBuilder().Saved({"a", "b", "c"}, 1));
    world_->Show(u"  ");
    EXPECT_EQ(Paths(), (Texts{u"a", u"b", u"c"}));
    EXPECT_TRUE(Host().calls.empty());  // titles are stored, existence is not tested
    Begin(WorldBuilder().Saved({"a", "b", "c"}, 1).Setting("PlayAtStartup", "True"));
    world_->Show(u"");
    EXPECT_EQ(Host().opened, (Texts{u"b"}));
    Begin(WorldBuilder()
              .Saved({"a", "b", "c"}, 1)
              .Setting("PlayAtStartup", "True")
              .Setting("Random", "True"));
    world_->Show(u"");
    EXPECT_EQ(world_->State().History.Count(), 1);
    EXPECT_EQ(Host().opened.size(), 1U);
}

TEST_F(Media, PlayAtStartupOfADeadOrMissingRowPlaysNothing) {
    Begin(WorldBuilder().Saved({"a", "b"}, 0).Setting("PlayAtStartup", "True").Dead({u"a"}));
    world_->Show(u"");
    EXPECT_EQ(Host().opened, (Texts{u"a"}));
    EXPECT_FALSE(world_->State().Playing);
    Begin(WorldBuilder().Setting("PlayAtStartup", "True"));
    world_->Show(u"");
    EXPECT_TRUE(Host().calls.empty());
    EXPECT_TRUE(world_->Main().Visible());
}

TEST_F(Media, TheRedrawFlagIsTrueAfterEveryLine) {
    for (const std::u16string& line : {std::u16string(), Path("one.mp3"), Path("none"),
                                       u"/add " + Path("m"), std::u16string(u"/add")}) {
        ProcessCommandLine(line, false);
        EXPECT_TRUE(world_->List().RedrawFlag());
    }
    Host().failing = {10};
    ProcessCommandLine(Path("one.mp3"), false);
    EXPECT_TRUE(world_->List().RedrawFlag());
}

TEST_F(Media, FoldersAreSearchedBelowFirstWhenAskedTo) {
    world_->folder.Write("m/Deep2/y.mp3", "");
    SearchFiles(Path("m/"), u"*.*", true);
    EXPECT_EQ(Titles(), (Texts{u"x.mp3", u"y.mp3", u"A.mp3", u"b.mp3"}));
    EXPECT_EQ(Paths()[0], Path("m/deep/x.mp3"));
}

TEST_F(Media, ALinkIntoAFolderThatTheSearchIsInIsNotFollowed) {
    world_->folder.Link("..", "m/deep/up");
    world_->folder.MakeFolder("aside");
    world_->folder.Write("aside/z.mp3", "");
    world_->folder.Link("../aside", "m/link");
    SearchFiles(Path("m/"), u"*.*", true);
    EXPECT_EQ(Titles(), (Texts{u"x.mp3", u"z.mp3", u"A.mp3", u"b.mp3"}));
}

TEST_F(Media, SearchingWhatIsNoFolderFindsNothing) {
    SearchFiles(Path("none/"), u"*.*", true);
    SearchFiles(Path("one.mp3/"), u"*.*", false);
    EXPECT_TRUE(Host().calls.empty());
}

TEST_F(Media, ADropOnTheListTakesFilesAndFoldersInTheOrderGivenAndStartsNothing) {
    world_->List().RedrawFlag(false);
    world_->windows.DropFiles(world_->List().HWnd(),
                              {world_->folder.Path("one.mp3"), world_->folder.Path("none.mp3"),
                               world_->folder.Path("m"), world_->folder.Path("m/b.mp3")});
    EXPECT_EQ(Paths(), (Texts{Path("one.mp3"), Path("m/A.mp3"), Path("m/b.mp3"), Path("m/b.mp3")}));
    EXPECT_EQ(Titles()[0], Path("one.mp3"));
    EXPECT_TRUE(Host().opened.empty());
    EXPECT_FALSE(world_->List().RedrawFlag());  // not touched
}

TEST_F(Media, ADropOnTheWindowAsksTheHostForEachNameUnseen) {
    Host().unsupported = {Path("m")};
    world_->windows.DropFiles(world_->Window(), {world_->folder.Path("m"), "/not/there.mp3"});
    EXPECT_EQ(Paths(), (Texts{u"/not/there.mp3"}));
    EXPECT_EQ(Host().Count(10), 2);
}

TEST_F(Media, ANameDroppedOnTheWindowIsCutTo254BytesAndOnTheListNot) {
    const std::string name = "/" + std::string(299, 'n');
    world_->windows.DropFiles(world_->Window(), {name});
    EXPECT_EQ(Paths(), (Texts{platform::Widen(name.substr(0, 254))}));
    world_->List().Clear();
    const std::string deep = "m/" + std::string(140, 'x') + "/" + std::string(140, 'y');
    world_->folder.Write(deep, "");
    world_->windows.DropFiles(world_->List().HWnd(), {world_->folder.Path(deep)});
    EXPECT_EQ(Paths(), (Texts{Path(deep)}));
}

TEST_F(Media, NamesThatAreNoUtf8GoTheWholeWayAndComeBack) {
    world_->folder.Write("caf\xE9.mp3", "");
    world_->HandOver(world_->folder.Path("caf\xE9.mp3"));
    EXPECT_EQ(Host().opened, (Texts{Path("caf\xE9.mp3")}));
    world_->Quit();
    world_->Start();
    EXPECT_EQ(Paths(), (Texts{Path("caf\xE9.mp3")}));
    EXPECT_EQ(platform::Narrow(Paths()[0]), world_->folder.Path("caf\xE9.mp3"));
}

TEST_F(Media, AStartWithAPathLosesTheSavedListAtTheClose) {
    Begin(WorldBuilder().Saved({"old"}));
    world_->Show(Path("none.mp3"));
    world_->End();
    EXPECT_EQ(world_->Saved(), "OMK v1.1\r\n 0 \r\n-1 \r\n");
}

TEST_F(Media, WhatIsNotKeptAcrossRuns) {
    world_->Rows({u"a", u"b"});
    world_->List().Selected(1, true);
    world_->State().History.Add(u"a");
    world_->Quit();
    world_->Start();
    EXPECT_EQ(Paths(), (Texts{u"a", u"b"}));
    EXPECT_EQ(world_->List().SelCount(), 0);
    EXPECT_EQ(world_->State().History.Count(), 0);
}

}  // namespace
}  // namespace sarnel

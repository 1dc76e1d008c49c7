// What a host must not do, and what it cannot know without asking: two components at once, a side
// door that outlives its component, a directory that is not there. A debug build ends at the first
// two; else nothing happens.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "core/ambrisor.h"
#include "core/remote.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::AsOrdinaryUser;
using support::FakeHost;
using support::TempFolder;
using support::World;
using support::WorldBuilder;

#ifdef NDEBUG

TEST(Misuse, ASecondComponentDoesNothingAndTheFirstGoesOn) {
    const auto world = WorldBuilder().Rows({u"a"}).Started();
    FakeHost other;
    {
        Ambrisor second(world->windows, {world->folder.Path()});
        EXPECT_TRUE(second.Connect(&other));
        ImpulseValue first(Long{7});
        ImpulseValue last(Long{8});
        for (const Long number : {3, 5, 6, 7, 15}) {
            EXPECT_EQ(second.ProcessImpulse(number, Long{5}, first, last), 0) << number;
        }
        EXPECT_EQ(second.ProcessImpulse(kImpulseControl, kControlLoad, first, last), 0);
        EXPECT_EQ(first.AsLong(), 7);
        EXPECT_EQ(last.AsLong(), 8);
        EXPECT_EQ(second.sendVeldrinImpulse(ImpulseStop, Long{0}, first, last), 0);
        Remote remote(second);
        remote.Random(true);
        EXPECT_FALSE(remote.IsLoaded() || remote.Random());
    }
    EXPECT_TRUE(other.calls.empty());
    EXPECT_TRUE(world->host.calls.empty());
    EXPECT_FALSE(world->State().Random);
    EXPECT_EQ(world->Impulse(15, Long{5}).lParam1.AsObject(), world->component.get());
    EXPECT_EQ(Remote(*world->component).ListCount(), 1);
}

TEST(Misuse, ASecondComponentDoesNothingAfterTheFirstEither) {
    const auto world = WorldBuilder().Started();
    Ambrisor second(world->windows, {world->folder.Path()});
    world->Quit();
    ImpulseValue first;
    ImpulseValue last;
    EXPECT_EQ(second.ProcessImpulse(kImpulseAttach, Long{0}, first, last), 0);
}

TEST(Misuse, ASideDoorThatOutlivesItsComponentLeadsNowhere) {
    const auto world = WorldBuilder().Rows({u"a"}).Started();
    Remote remote(*world->component);
    remote.RepeatList(true);
    ASSERT_TRUE(remote.RepeatList());
    world->Quit();
    remote.Play();
    remote.RepeatList(true);
    EXPECT_FALSE(remote.IsLoaded() || remote.RepeatList() || remote.Random());
    EXPECT_EQ(remote.ListCount(), 0);
    EXPECT_EQ(remote.ListCurrent(), -1);
    EXPECT_EQ(remote.State(), PlaybackState::kStopped);
}

#else

TEST(MisuseDeathTest, ASecondComponentIsAMistake) {
    const auto world = WorldBuilder().Started();
    EXPECT_DEATH(Ambrisor(world->windows, {world->folder.Path()}), "another Ambrisor is alive");
}

TEST(MisuseDeathTest, ASideDoorMustNotOutliveItsComponent) {
    const auto world = WorldBuilder().Started();
    const Remote remote(*world->component);
    world->Quit();
    EXPECT_DEATH(remote.ListCount(), "the component has died");
}

#endif

TEST(Misuse, AComponentMayFollowAnotherWithinTheAnswerInWhichThatOneDies) {
    const auto world = WorldBuilder().Started();
    world->host.inside[ImpulseClosed] = [&] {
        world->host.inside.clear();
        world->component.reset();
        world->Create();
        EXPECT_EQ(world->Impulse(kImpulseAttach).result, 1);
    };
    world->End();
    EXPECT_EQ(world->Impulse(kImpulseAttach).result, 1);
    world->Impulse(kImpulseControl, kControlLoad);
    EXPECT_TRUE(world->Main().IsLoaded());
}

class DirectoryTest : public ::testing::Test {
  protected:
    bool IsWritable(const std::string& directory) {
        return Ambrisor(world_.windows, {directory}).DirectoryIsWritable();
    }

    World world_;
    const TempFolder& folder_ = world_.folder;
};

TEST_F(DirectoryTest, AFolderAndALinkToOneCanBeWrittenIn) {
    folder_.MakeFolder("there");
    folder_.Link("there", "link");
    EXPECT_TRUE(IsWritable(folder_.Path("there")));
    EXPECT_TRUE(IsWritable(folder_.Path("link")));
}

TEST_F(DirectoryTest, WhatIsMissingAndWhatIsNoFolderCannot) {
    folder_.Write("file", "");
    EXPECT_FALSE(IsWritable(folder_.Path("missing")));
    EXPECT_FALSE(IsWritable(folder_.Path("file")));
    EXPECT_FALSE(IsWritable(""));
}

TEST_F(DirectoryTest, AFolderThatLetsNobodyWriteCannot) {
    folder_.MakeFolder("shut");
    const AsOrdinaryUser user(folder_);
    std::filesystem::permissions(folder_.Path("shut"), std::filesystem::perms::owner_read |
                                                           std::filesystem::perms::owner_exec);
    EXPECT_FALSE(IsWritable(folder_.Path("shut")));
}

TEST_F(DirectoryTest, AFullDiskCannot) {
    EXPECT_TRUE(IsWritable(folder_.Path()));
    world_.driver.SetDisk(platform::Disk::kFull);
    EXPECT_FALSE(IsWritable(folder_.Path()));
}

TEST_F(DirectoryTest, ARunInAMissingOneGoesOnAndKeepsNothing) {
    world_.component =
        std::make_unique<Ambrisor>(world_.windows, AmbrisorOptions{folder_.Path("missing")});
    world_.component->Connect(&world_.host);
    world_.Load();
    world_.Show(u"");
    world_.Rows({u"a"});
    EXPECT_EQ(world_.List().ListCount(), 1);
    world_.End();
    EXPECT_EQ(world_.host.Count(ImpulseClosed), 1);
    EXPECT_FALSE(folder_.Exists("missing"));
}

}  // namespace
}  // namespace sarnel

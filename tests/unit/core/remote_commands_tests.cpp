// What a host may have done by the side door: the same as menu, keys and buttons do.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "core/base/impulses.h"
#include "core/remote.h"
#include "core/state/mainmenu.h"
#include "core/state/menukeys.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::World;
using support::WorldBuilder;
using Call = FakeHost::Call;

class RemoteCommandsTest : public ::testing::Test {
  protected:
    JSlider& Slider(Long index) { return world_->Main().sldSkin(index); }
    std::vector<Call> Heard(Long number) const { return world_->host.Of({number}); }

    std::unique_ptr<World> world_ = WorldBuilder().Rows({u"/a", u"/b", u"/c"}).Current(1).Started();
    Remote remote_{*world_->component};
};

TEST_F(RemoteCommandsTest, PlayBeginsTheCurrentRowAndThenDoesNothing) {
    EXPECT_EQ(remote_.State(), PlaybackState::kStopped);
    remote_.Play();
    EXPECT_EQ(remote_.State(), PlaybackState::kPlaying);
    remote_.Play();
    EXPECT_EQ(world_->host.opened, std::vector<std::u16string>{u"/b"});
    EXPECT_EQ(Heard(ImpulsePause).size(), 0U);
    EXPECT_EQ(world_->Main().Caption(), u"/b");
}

TEST_F(RemoteCommandsTest, PauseAndPlayToggleOnceEach) {
    remote_.Pause();
    EXPECT_EQ(Heard(ImpulsePause).size(), 0U);
    remote_.Play();
    remote_.Pause();
    remote_.Pause();
    EXPECT_EQ(remote_.State(), PlaybackState::kPaused);
    EXPECT_EQ(Heard(ImpulsePause).size(), 1U);
    remote_.Play();
    remote_.Play();
    EXPECT_EQ(remote_.State(), PlaybackState::kPlaying);
    EXPECT_EQ(Heard(ImpulsePause).size(), 2U);
    EXPECT_EQ(world_->host.opened.size(), 1U);
}

TEST_F(RemoteCommandsTest, PlayPauseGoesRound) {
    remote_.PlayPause();
    EXPECT_EQ(remote_.State(), PlaybackState::kPlaying);
    remote_.PlayPause();
    EXPECT_EQ(remote_.State(), PlaybackState::kPaused);
    remote_.PlayPause();
    EXPECT_EQ(remote_.State(), PlaybackState::kPlaying);
    EXPECT_EQ(world_->host.opened.size(), 1U);
}

TEST_F(RemoteCommandsTest, StopPutsTheWindowToRest) {
    remote_.Play();
    remote_.Stop();
    EXPECT_EQ(remote_.State(), PlaybackState::kStopped);
    EXPECT_EQ(Heard(ImpulseStop).size(), 1U);
    EXPECT_EQ(world_->Main().Caption(), u"Veldrin v1.1");
}

TEST_F(RemoteCommandsTest, WithoutARowThereIsNothingToPlay) {
    world_->List().ListCurrent(3);
    remote_.Play();
    remote_.PlayPause();
    EXPECT_EQ(remote_.State(), PlaybackState::kStopped);
    EXPECT_TRUE(world_->host.opened.empty());
}

TEST_F(RemoteCommandsTest, AnItemWithoutALengthPlaysUntilTheHostSaysOtherwise) {
    world_->host.length = 0;
    remote_.Play();
    EXPECT_FALSE(remote_.CanSeek());
    EXPECT_EQ(remote_.State(), PlaybackState::kPlaying);
    remote_.Pause();
    ASSERT_EQ(Heard(ImpulsePause).size(), 1U);
    EXPECT_EQ(Heard(ImpulsePause)[0].wParam, "True");  // not a toggle
    world_->host.playing = false;
    EXPECT_EQ(remote_.State(), PlaybackState::kStopped);
}

TEST_F(RemoteCommandsTest, NextAndPreviousGoByTheModes) {
    remote_.Next();
    EXPECT_EQ(world_->List().ListCurrent(), 2);
    remote_.Next();
    EXPECT_EQ(world_->List().ListCurrent(), 2);
    remote_.RepeatList(true);
    remote_.Next();
    EXPECT_EQ(world_->List().ListCurrent(), 0);
    remote_.Previous();
    EXPECT_EQ(world_->List().ListCurrent(), 2);
    remote_.RepeatItem(true);
    remote_.Previous();
    EXPECT_EQ(world_->List().ListCurrent(), 2);
}

TEST_F(RemoteCommandsTest, RandomKeepsItsHistory) {
    remote_.Random(true);
    remote_.Next();
    EXPECT_EQ(world_->State().History.Count(), 1);
    EXPECT_EQ(world_->State().History.Item(0),
              world_->List().ListData(world_->List().ListCurrent()));
}

TEST_F(RemoteCommandsTest, VolumeIsCutSentAndRemembered) {
    for (const auto& [asked, expected] : {std::pair<Long, Long>{30, 30}, {101, 100}, {-5, 0}}) {
        world_->host.Forget();
        remote_.Volume(asked);
        EXPECT_EQ(remote_.Volume(), expected);
        ASSERT_EQ(Heard(ImpulseSetVolume).size(), 1U);
        EXPECT_EQ(Heard(ImpulseSetVolume)[0].wParam, std::to_string(expected));
        EXPECT_EQ(world_->Setting("MusicVolume"), std::to_string(expected));
    }
}

TEST_F(RemoteCommandsTest, PositionIsCutAndLeavesPausedWhatIsPaused) {
    remote_.Position(10);
    EXPECT_EQ(Heard(ImpulseSeek).size(), 0U);
    remote_.Play();
    remote_.Pause();
    world_->host.Forget();
    for (const auto& [asked, expected] : {std::pair<Long, Long>{30, 30}, {201, 200}, {-5, 0}}) {
        world_->host.Forget();
        remote_.Position(asked);
        ASSERT_EQ(Heard(ImpulseSeek).size(), 1U);
        EXPECT_EQ(Heard(ImpulseSeek)[0].wParam, std::to_string(expected));
        EXPECT_EQ(remote_.Position(), expected);
    }
    EXPECT_EQ(remote_.State(), PlaybackState::kPaused);
    EXPECT_EQ(Heard(ImpulsePause).size(), 0U);
}

TEST_F(RemoteCommandsTest, TempoIsThatOfTheEffect) {
    EXPECT_EQ(remote_.Tempo(), 0);
    for (const auto& [asked, expected] :
         {std::pair<Long, Long>{25, 25}, {-60, -50}, {99, 50}, {1, 0}}) {
        world_->host.Forget();
        remote_.Tempo(asked);
        EXPECT_EQ(remote_.Tempo(), expected);
        ASSERT_EQ(Heard(ImpulseSetTempo).size(), 1U);
        EXPECT_EQ(Heard(ImpulseSetTempo)[0].wParam, std::to_string(expected));
        EXPECT_EQ(world_->Setting("Effect_Tempo"), std::to_string(expected + 50));
    }
}

TEST_F(RemoteCommandsTest, TheSliderStaysUnderTheUsersHand) {
    remote_.Play();
    const platform::Rect place = world_->windows.GetWindowRect(Slider(kPositionSlider).HWnd());
    world_->driver.Push(platform::ButtonChanged{{place.left + 5, place.top + 5}});
    world_->windows.DoEvents();
    ASSERT_TRUE(Slider(kPositionSlider).IsSliderMouseControled());
    world_->host.Forget();
    remote_.Position(100);
    EXPECT_EQ(Heard(ImpulseSeek).size(), 0U);
}

TEST_F(RemoteCommandsTest, ModesAreStateMarkAndSetting) {
    struct Row {
        bool (Remote::*is)() const;
        void (Remote::*set)(bool);
        const char16_t* key;
        const char* setting;
    };
    const Row rows[] = {
        {&Remote::Random, &Remote::Random, menukeys::kRandom, "Random"},
        {&Remote::RepeatItem, &Remote::RepeatItem, menukeys::kRepeatItem, "RepeatItem"},
        {&Remote::RepeatList, &Remote::RepeatList, menukeys::kRepeatList, "RepeatList"},
    };
    for (const Row& row : rows) {
        for (const bool on : {true, true, false}) {
            (remote_.*row.set)(on);
            EXPECT_EQ((remote_.*row.is)(), on) << row.setting;
            EXPECT_EQ(IsMarked(row.key), on) << row.setting;
            EXPECT_EQ(world_->Setting(row.setting), on ? "True" : "False");
        }
    }
}

TEST_F(RemoteCommandsTest, ACommandIsTheMenusItem) {
    remote_.RunCommand(u"kPRdm");
    EXPECT_TRUE(remote_.Random());
    remote_.RunCommand(u"kPRdm");
    EXPECT_FALSE(remote_.Random());
    remote_.RunCommand(u"kRAll");
    EXPECT_EQ(remote_.ListCount(), 0);
}

TEST_F(RemoteCommandsTest, OnlyKeysOfTheMenuAreCommands) {
    EXPECT_TRUE(remote_.HasCommand(u"kPRdm"));
    EXPECT_TRUE(remote_.HasCommand(u"kSk1"));
    for (const std::u16string_view key : {u"", u"kNone", u"kprdm", u"1", u" 2"}) {
        EXPECT_FALSE(remote_.HasCommand(key));
        remote_.RunCommand(key);
    }
    EXPECT_EQ(remote_.ListCount(), 3);
}

TEST_F(RemoteCommandsTest, WhetherTheListPlaysAtStartupIsTheMenus) {
    EXPECT_FALSE(remote_.PlayAtStartup());
    remote_.RunCommand(menukeys::kPlayAtStartup);
    EXPECT_TRUE(remote_.PlayAtStartup());
    remote_.RunCommand(menukeys::kPlayAtStartup);
    EXPECT_FALSE(remote_.PlayAtStartup());
}

TEST_F(RemoteCommandsTest, FileTypesThatTheHostHasLearntAreShown) {
    const platform::Label& types = *world_->Main().lblFileTypesSupported;
    const platform::Label& close = *world_->Main().lblFrameFileAssocOK;
    const auto width = close.Width();
    world_->host.fileTypes = u"*.a;*.b;*.c";
    remote_.FileTypesChanged();
    EXPECT_EQ(types.Caption(),
              u"\r\nFile types supported:\r\n*.a *.b *.c \r\n\r\n"
              u"Click here to accociate types in shell!\r\n");
    EXPECT_EQ(close.Top(), 5 + types.Height() + 5);
    const auto top = close.Top();
    world_->host.fileTypes = u"*.a";
    remote_.FileTypesChanged();
    EXPECT_EQ(types.Caption(), u"*.a ");
    EXPECT_LT(close.Top(), top);
    EXPECT_EQ(close.Width(), width);
}

TEST_F(RemoteCommandsTest, BehindTheRunNothingIsDone) {
    remote_.Play();
    world_->End();
    world_->host.Forget();
    remote_.Play();
    remote_.Stop();
    remote_.Next();
    remote_.Volume(3);
    remote_.Position(3);
    remote_.RunCommand(u"kRAll");
    remote_.FileTypesChanged();
    EXPECT_EQ(remote_.State(), PlaybackState::kStopped);
    EXPECT_EQ(remote_.Volume(), 0);
    EXPECT_FALSE(remote_.HasCommand(u"kPRdm"));
    EXPECT_TRUE(world_->host.calls.empty());
}

}  // namespace
}  // namespace sarnel

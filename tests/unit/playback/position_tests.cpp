// Position and volume, and the keys of the list that move them.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "playback/mPlayback.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::World;
using support::WorldBuilder;
using Calls = std::vector<FakeHost::Call>;

class PositionAndVolume : public ::testing::Test {
  protected:
    PositionAndVolume() {
        PlayCurrentItem();
        Forget();
    }
    void Forget() { world_->host.Forget(); }
    JSlider& Position() { return world_->Main().sldSkin(0); }
    JSlider& Volume() { return world_->Main().sldSkin(1); }
    void KeyDown(Long code, Long shift = 0) {
        world_->windows.SendMessage(world_->List().HWnd(), platform::WM_KEYDOWN, code, shift);
    }
    void KeyUp(Long code) {
        world_->windows.SendMessage(world_->List().HWnd(), platform::WM_KEYUP, code, 0);
    }

    std::unique_ptr<World> world_ = WorldBuilder().Rows({u"a", u"b"}).Current(0).Started();
};

TEST_F(PositionAndVolume, VolumeIsClampedThenSentAndStored) {
    const std::vector<std::pair<Long, std::string>> cases{
        {35, "35"}, {120, "100"}, {-5, "0"}, {2147483647, "100"}, {100, "100"}, {0, "0"}};
    for (const auto& [volume, expected] : cases) {
        Forget();
        SetVolume(volume);
        EXPECT_EQ(world_->host.calls, (Calls{{29, expected, "0", "0"}}));
        EXPECT_EQ(world_->Setting("MusicVolume"), expected);
        EXPECT_EQ(std::to_string(Volume().Value()), expected);
    }
}

TEST_F(PositionAndVolume, AtTheLimitTheHostAndTheSettingAreWrittenAgain) {
    SetVolume(100);
    Forget();
    world_->folder.Remove(World::kSettings);
    world_->HotKey(u"VolUp");
    EXPECT_EQ(world_->host.calls, (Calls{{29, "100", "0", "0"}}));
    EXPECT_EQ(world_->Setting("MusicVolume"), "100");
}

TEST_F(PositionAndVolume, PositionIsClampedAndSentAndNotStored) {
    const auto settings = world_->folder.Read(World::kSettings);
    SetPosition(120);
    SetPosition(201);
    SetPosition(-1);
    EXPECT_EQ(world_->host.calls,
              (Calls{{30, "120", "0", "0"}, {30, "200", "0", "0"}, {30, "0", "0", "0"}}));
    EXPECT_EQ(world_->folder.Read(World::kSettings), settings);
}

TEST_F(PositionAndVolume, UpdatePositionTakesTheHostsPositionAndSeeksNothing) {
    world_->host.position = 77;
    UpdatePosition();
    EXPECT_EQ(Position().Value(), 77);
    world_->host.position = 5000;
    UpdatePosition();
    EXPECT_EQ(Position().Value(), 200);
    world_->host.failing = {31};
    UpdatePosition();
    EXPECT_EQ(Position().Value(), 0);
    EXPECT_EQ(world_->host.Count(30), 0);
}

TEST_F(PositionAndVolume, AStepSuspendsSeeksAndSetsGoingAgain) {
    Position().Value(50);
    SeekBy(3);
    EXPECT_EQ(world_->host.calls,
              (Calls{{27, "True", "0", "0"}, {30, "53", "0", "0"}, {27, "False", "0", "0"}}));
    EXPECT_TRUE(world_->State().Playing);
}

TEST_F(PositionAndVolume, AStepInAPausedItemSetsItGoing) {
    TogglePlayback();
    EXPECT_FALSE(world_->State().Playing);
    SeekBy(-3);
    EXPECT_TRUE(world_->State().Playing);
}

TEST_F(PositionAndVolume, WithoutAKnownLengthNothingSeeks) {
    StopPlayback();
    Forget();
    Position().Value(50);
    SeekBy(3);
    KeyDown(39);
    KeyUp(39);
    world_->HotKey(u"StepForw");
    EXPECT_TRUE(world_->host.calls.empty());
    EXPECT_EQ(Position().Value(), 50);
}

TEST_F(PositionAndVolume, AStepAtTheEndOfAllNumbersDoesNoHarm) {
    world_->host.length = 2147483647;
    world_->host.position = 2147483647;
    PlayCurrentItem();
    UpdatePosition();
    EXPECT_EQ(Position().Value(), 2147483647);
    Forget();
    SeekBy(3);
    KeyDown(39, 1);
    EXPECT_EQ(Position().Value(), 2147483647);
    EXPECT_EQ(world_->host.Count(27), 3);
}

TEST_F(PositionAndVolume, LeftAndRightWindAndTheReleaseGoesOn) {
    Position().Value(100);
    KeyDown(39);
    KeyDown(39);  // a held key repeats
    EXPECT_FALSE(world_->State().Playing);
    KeyUp(39);
    EXPECT_TRUE(world_->State().Playing);
    EXPECT_EQ(world_->host.calls, (Calls{{27, "True", "0", "0"},
                                         {30, "103", "0", "0"},
                                         {27, "True", "0", "0"},
                                         {30, "106", "0", "0"},
                                         {27, "False", "0", "0"}}));
}

TEST_F(PositionAndVolume, TheStepDependsOnTheModifier) {
    // Shift alone 12, Ctrl alone 6, any other state 3.
    const std::vector<std::pair<Long, Long>> steps{{0, 3}, {1, 12}, {2, 6}, {3, 3}, {4, 3}, {7, 3}};
    for (const auto& [shift, step] : steps) {
        Position().Value(100);
        KeyDown(37, shift);
        EXPECT_EQ(Position().Value(), 100 - step) << shift;
        Position().Value(100);
        KeyDown(39, shift);
        EXPECT_EQ(Position().Value(), 100 + step) << shift;
    }
}

TEST_F(PositionAndVolume, NumericPlusAndMinusChangeTheVolumeWithAnyModifier) {
    KeyDown(107);
    KeyDown(107, 3);
    KeyDown(109, 4);
    EXPECT_EQ(world_->host.Of({29}),
              (Calls{{29, "85", "0", "0"}, {29, "90", "0", "0"}, {29, "85", "0", "0"}}));
}

TEST_F(PositionAndVolume, LettersDriveTheTransportWithoutAModifierOnly) {
    KeyDown('B');
    KeyDown('Z');
    KeyDown('X');
    EXPECT_EQ(world_->host.opened, (std::vector<std::u16string>{u"b", u"a", u"a"}));
    Forget();
    KeyDown('C');
    EXPECT_EQ(world_->host.Numbers(), (std::vector<Long>{27}));
    KeyDown('V');
    EXPECT_EQ(world_->host.Numbers().back(), 28);
    Forget();
    for (const Long letter : {'Z', 'X', 'C', 'V', 'B'}) {
        for (const Long shift : {1, 2, 4}) {
            KeyDown(letter, shift);
        }
    }
    EXPECT_TRUE(world_->host.calls.empty());
}

TEST_F(PositionAndVolume, EnterPlaysTheSelectedRow) {
    world_->List().ListIndex(1);
    KeyDown(13);
    EXPECT_EQ(world_->host.opened, (std::vector<std::u16string>{u"b"}));
    EXPECT_EQ(world_->List().ListCurrent(), 1);
    world_->List().ListIndex(-1);
    Forget();
    KeyDown(13);
    EXPECT_TRUE(world_->host.calls.empty());
    EXPECT_EQ(world_->List().ListCurrent(), 1);
}

}  // namespace
}  // namespace sarnel

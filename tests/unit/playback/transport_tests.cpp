// Play, stop, pause, and the tick.
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
using Paths = std::vector<std::u16string>;

class Transport : public ::testing::Test {
  protected:
    Transport() {
        world_->List().AddItem(u"Title one", u"/one.mp3");
        world_->List().AddItem(u"Title two", u"/two.mp3");
        world_->List().AddItem(u"Title three", u"/three.mp3");
        world_->List().ListCurrent(0);
        world_->host.Forget();
    }
    FakeHost& Host() { return world_->host; }
    Program& State() { return world_->State(); }
    JSlider& Position() { return world_->Main().sldSkin(0); }
    bool Ticks() { return world_->Timers() == std::vector<Long>{12, 14}; }

    std::unique_ptr<World> world_ = WorldBuilder().Started();
};

TEST_F(Transport, PlayingOpensTheRowShowsItAndFollowsIt) {
    State().DisplayMode = 0;
    EXPECT_TRUE(PlayCurrentItem());
    const std::string window = std::to_string(world_->Window());
    EXPECT_EQ(Host().calls, (Calls{{26, window, "\"/one.mp3\"", "False"},
                                   {34, "False", "\"\"", "0"},
                                   {35, "0", "\"\"", "0"},
                                   {32, "0", "0", "0"}}));
    EXPECT_EQ(world_->Main().Caption(), u"Title one");
    EXPECT_EQ(State().ScrollText, u"Title one  ---  Title one  ---  Title one  ---  Title one");
    EXPECT_EQ(State().InfoText, u"0:10 | 3:20");
    EXPECT_EQ(Position().Value(), 0);
    EXPECT_EQ(Position().Max(), 200);
    EXPECT_TRUE(Position().Enabled());
    EXPECT_TRUE(State().Playing);
    EXPECT_TRUE(Ticks());
}

TEST_F(Transport, WithoutACurrentRowNothingHappensAndNothingIsStopped) {
    PlayCurrentItem();
    Host().Forget();
    for (const Long row : {-1, 3, 2147483647, -2147483647 - 1}) {
        world_->List().ListCurrent(row);
        EXPECT_FALSE(PlayCurrentItem());
    }
    EXPECT_TRUE(Host().calls.empty());
    EXPECT_TRUE(State().Playing);
    EXPECT_EQ(world_->Main().Caption(), u"Title one");
}

TEST_F(Transport, AnItemThatDoesNotOpenLeavesWindowAndTimersAsTheyWere) {
    Host().dead.insert(u"/one.mp3");
    EXPECT_FALSE(PlayCurrentItem());
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{26}));
    EXPECT_EQ(world_->Main().Caption(), u"Veldrin v1.1");
    EXPECT_FALSE(State().Playing || Position().Enabled() || Ticks());
}

TEST_F(Transport, TheNewItemIsOpenedWithoutAStopOfTheOld) {
    PlayCurrentItem();
    world_->List().ListCurrent(1);
    PlayCurrentItem();
    EXPECT_EQ(Host().opened, (Paths{u"/one.mp3", u"/two.mp3"}));
    EXPECT_EQ(Host().Count(28), 0);
}

TEST_F(Transport, AnItemOfUnknownLengthSoundsWithItsTitleAndIsNotFollowed) {
    for (const Long length : {0, -1, -2147483647 - 1}) {
        StopPlayback();
        Host().length = length;
        EXPECT_TRUE(PlayCurrentItem());
        EXPECT_EQ(world_->Main().Caption(), u"Title one");
        EXPECT_FALSE(State().Playing || Position().Enabled() || Ticks());
    }
    Host().playing = false;
    Host().Forget();
    world_->Advance(1000);
    EXPECT_TRUE(Host().calls.empty());  // it never advances by itself
}

TEST_F(Transport, AfterAnItemThatPlaysOneOfUnknownLengthKeepsTheTickGoing) {
    PlayCurrentItem();
    Position().Value(70);
    Host().length = 0;
    world_->List().ListCurrent(1);
    EXPECT_TRUE(PlayCurrentItem());
    EXPECT_TRUE(State().Playing && Ticks() && Position().Enabled());
    EXPECT_EQ(Position().Value(), 70);
    EXPECT_EQ(Position().Max(), 200);
}

TEST_F(Transport, AShorterItemBeginsAtItsStart) {
    PlayCurrentItem();
    Position().Value(150);
    Host().length = 100;
    PlayCurrentItem();
    EXPECT_EQ(Position().Value(), 0);
    EXPECT_EQ(Position().Max(), 100);
}

TEST_F(Transport, OpenMediaHandsThePathOverAndAnswersTheHostsBoolean) {
    EXPECT_TRUE(OpenMedia(u"/any"));
    Host().dead.insert(u"/any");
    EXPECT_FALSE(OpenMedia(u"/any"));
    Host().failing = {26};
    EXPECT_FALSE(OpenMedia(u"/other"));
}

TEST_F(Transport, StopReturnsTheRestingTitleAndStopsTheHostLast) {
    PlayCurrentItem();
    Host().Forget();
    bool restedBefore = false;
    Host().inside[28] = [&] {
        restedBefore = world_->Main().Caption() == u"Veldrin v1.1" && !State().Playing &&
                       State().InfoText.empty() && !Ticks() && !Position().Enabled();
    };
    StopPlayback();
    EXPECT_TRUE(restedBefore);
    EXPECT_EQ(Host().calls, (Calls{{28, "0", "0", "0"}}));
    EXPECT_EQ(State().ScrollText,
              u"Veldrin v1.1  ---  Veldrin v1.1  ---  Veldrin v1.1  ---  Veldrin v1.1");
    EXPECT_EQ(world_->List().ListCurrent(), 0);
}

TEST_F(Transport, AStopWhenStoppedStillReachesTheHost) {
    StopPlayback();
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{28}));
}

TEST_F(Transport, PauseTogglesItsOwnFlagAndTheTimerAndLetsTheHostToggleIts) {
    PlayCurrentItem();
    Host().Forget();
    TogglePlayback();
    EXPECT_FALSE(State().Playing || Ticks());
    EXPECT_TRUE(Position().Enabled());
    TogglePlayback();
    EXPECT_TRUE(State().Playing && Ticks());
    EXPECT_EQ(Host().calls, (Calls{{27, "False", "0", "0"}, {27, "False", "0", "0"}}));
}

TEST_F(Transport, PauseWhenStoppedStartsTheNextItemAtTheFirstTick) {
    TogglePlayback();
    EXPECT_TRUE(State().Playing);
    world_->Advance(50);
    EXPECT_EQ(Host().opened, (Paths{u"/two.mp3"}));
}

TEST_F(Transport, PauseWhenStoppedWithManualAdvanceStopsAtTheFirstTick) {
    State().ManualAdvance = true;
    TogglePlayback();
    world_->Advance(50);
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{27, 33, 28}));
    EXPECT_FALSE(State().Playing);
}

TEST_F(Transport, SuspendPausesAndLeavesTheTickIdle) {
    PlayCurrentItem();
    Host().Forget();
    SuspendPlayback();
    EXPECT_EQ(Host().calls, (Calls{{27, "True", "0", "0"}}));
    EXPECT_FALSE(State().Playing);
    EXPECT_TRUE(Ticks());
    Host().playing = false;
    world_->Advance(500);
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{27}));
}

TEST_F(Transport, EachTickAsksWhetherTheStreamLivesAndFollowsIt) {
    PlayCurrentItem();
    Host().Forget();
    Host().position = 33;
    Host().timeRemaining = u"-2:47";
    world_->Advance(49);
    EXPECT_TRUE(Host().calls.empty());
    world_->Advance(1);
    EXPECT_EQ(Host().calls, (Calls{{33, "0", "True", "0"},
                                   {31, "0", "0", "0"},
                                   {34, "True", "\"\"", "0"},
                                   {35, "0", "\"\"", "0"}}));
    EXPECT_EQ(Position().Value(), 33);
    EXPECT_EQ(State().InfoText, u"-2:47 | 3:20");
    world_->Advance(50);
    EXPECT_EQ(Host().Count(33), 2);
}

TEST_F(Transport, TheEndOfAStreamAdvancesTheList) {
    PlayCurrentItem();
    Host().playing = false;
    world_->Advance(50);
    EXPECT_EQ(Host().opened, (Paths{u"/one.mp3", u"/two.mp3"}));
    EXPECT_EQ(world_->List().ListCurrent(), 1);
    EXPECT_EQ(world_->Main().Caption(), u"Title two");
    EXPECT_EQ(Host().Count(28), 0);
}

TEST_F(Transport, WithManualAdvanceTheEndOfAStreamStops) {
    State().ManualAdvance = true;
    PlayCurrentItem();
    Host().playing = false;
    world_->Advance(50);
    EXPECT_EQ(Host().opened, (Paths{u"/one.mp3"}));
    EXPECT_EQ(Host().Count(28), 1);
    EXPECT_EQ(world_->Main().Caption(), u"Veldrin v1.1");
    NextItem();  // a command still advances
    EXPECT_EQ(Host().opened, (Paths{u"/one.mp3", u"/two.mp3"}));
}

TEST_F(Transport, ManualAdvanceBeatsRepeatItem) {
    State().ManualAdvance = true;
    State().RepeatItem = true;
    PlayCurrentItem();
    Host().playing = false;
    world_->Advance(50);
    EXPECT_EQ(Host().Count(26), 1);
    EXPECT_FALSE(State().Playing);
}

TEST_F(Transport, AHostThatDoesNotSayCountsAsPlaying) {
    PlayCurrentItem();
    Host().playing = false;
    Host().position = 70;
    Host().failing = {33};
    world_->Advance(200);
    EXPECT_EQ(Host().Count(26), 1);
    EXPECT_EQ(Position().Value(), 70);
    Host().failing.clear();
    Host().silent = true;
    world_->Advance(200);
    EXPECT_EQ(Host().Count(26), 1);
    EXPECT_EQ(Position().Value(), 0);  // and the position falls to its start value
}

TEST_F(Transport, AHostThatDoesNotTellTheLengthCountsAsUnknown) {
    Host().failing = {32};
    EXPECT_TRUE(PlayCurrentItem());
    EXPECT_FALSE(State().Playing);
}

TEST_F(Transport, ATickInsideACallOfTheHostDoesNoHarm) {
    PlayCurrentItem();
    int calls = 0;
    Host().inside[31] = [&] {
        if (++calls == 1) {
            world_->Advance(60);  // the host pumps while it answers
        }
    };
    world_->Advance(50);
    EXPECT_EQ(Host().Count(33), 2);
    EXPECT_TRUE(State().Playing);
}

}  // namespace
}  // namespace sarnel

// Which row comes next in list order and by RepeatItem. Random order is in random_tests.cpp.
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
using Paths = std::vector<std::u16string>;

constexpr Long kMost = 2'147'483'647;

class Sequence : public ::testing::Test {
  protected:
    Long Current() { return world_->List().ListCurrent(); }
    void Current(Long row) { world_->List().ListCurrent(row); }
    FakeHost& Host() { return world_->host; }
    Program& State() { return world_->State(); }
    const Paths& Opened() { return world_->host.opened; }
    void Die(std::initializer_list<std::u16string> paths) { world_->host.dead.insert(paths); }

    std::unique_ptr<World> world_ =
        WorldBuilder().Rows({u"a", u"b", u"c", u"d"}).Current(0).Started();
};

TEST_F(Sequence, NextGoesDownTheListAndPreviousUp) {
    NextItem();
    NextItem();
    PreviousItem();
    EXPECT_EQ(Opened(), (Paths{u"b", u"c", u"b"}));
    EXPECT_EQ(Current(), 1);
}

TEST_F(Sequence, AnEmptyListDoesNothing) {
    world_->List().Clear();
    Current(-1);
    for (const bool random : {false, true}) {
        for (const bool repeat : {false, true}) {
            State().Random = random;
            State().RepeatList = repeat;
            NextItem();
            PreviousItem();
        }
    }
    EXPECT_TRUE(Host().calls.empty());
    EXPECT_EQ(Current(), -1);
}

TEST_F(Sequence, WithoutACurrentRowNextNeedsRepeatListToStartRowZero) {
    Current(-1);
    NextItem();
    EXPECT_TRUE(Opened().empty());
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{33}));  // the end step asks
    EXPECT_EQ(Current(), -1);
    State().RepeatList = true;
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"a"}));
    EXPECT_EQ(Current(), 0);
}

TEST_F(Sequence, WithoutACurrentRowPreviousNeedsRepeatListToGoToTheLast) {
    Current(-1);
    PreviousItem();
    EXPECT_TRUE(Host().calls.empty());  // no end step here
    State().RepeatList = true;
    PreviousItem();
    EXPECT_EQ(Opened(), (Paths{u"d"}));
    EXPECT_EQ(Current(), 3);
}

TEST_F(Sequence, AtTheEndTheItemThatStillSoundsIsLeftToFinish) {
    Current(3);
    PlayCurrentItem();
    Host().Forget();
    NextItem();
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{33}));
    EXPECT_TRUE(State().Playing);
    EXPECT_EQ(Current(), 3);
    Host().playing = false;
    world_->Advance(50);  // the tick comes back here, and now it stops
    EXPECT_EQ(Host().Count(28), 1);
    EXPECT_FALSE(State().Playing);
    EXPECT_EQ(Current(), 3);
}

TEST_F(Sequence, TheEndStepStopsOnlyWhatHasAPosition) {
    Host().length = 0;
    Current(3);
    PlayCurrentItem();  // of unknown length: the position stays disabled
    Host().playing = false;
    NextItem();
    EXPECT_EQ(Host().Count(33), 1);
    EXPECT_EQ(Host().Count(28), 0);
}

TEST_F(Sequence, RepeatListGoesRoundAtBothEnds) {
    State().RepeatList = true;
    Current(3);
    NextItem();
    EXPECT_EQ(Current(), 0);
    PreviousItem();
    EXPECT_EQ(Current(), 3);
    EXPECT_EQ(Opened(), (Paths{u"a", u"d"}));
}

TEST_F(Sequence, AtTheStartPreviousJustReturns) {
    PlayCurrentItem();
    Host().Forget();
    PreviousItem();
    EXPECT_TRUE(Host().calls.empty());
    EXPECT_TRUE(State().Playing);
}

TEST_F(Sequence, DeadItemsAreSkippedAndStay) {
    Die({u"b", u"c"});
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"b", u"c", u"d"}));
    EXPECT_EQ(Current(), 3);
    PreviousItem();
    EXPECT_EQ(Opened(), (Paths{u"b", u"c", u"d", u"c", u"b", u"a"}));
    EXPECT_EQ(Current(), 0);
    EXPECT_EQ(world_->List().ListCount(), 4);
}

TEST_F(Sequence, DeadToTheEndLeavesTheLastRowCurrentAndWhatSoundsGoesOn) {
    PlayCurrentItem();
    Die({u"b", u"c", u"d"});
    Host().Forget();
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"b", u"c", u"d"}));
    EXPECT_EQ(Current(), 3);
    EXPECT_TRUE(State().Playing);
    EXPECT_EQ(Host().Count(28), 0);
}

TEST_F(Sequence, DeadToTheStartLeavesRowZeroCurrent) {
    Die({u"a", u"b", u"c"});
    Current(3);
    PreviousItem();
    EXPECT_EQ(Opened(), (Paths{u"c", u"b", u"a"}));
    EXPECT_EQ(Current(), 0);
}

TEST_F(Sequence, WithEveryItemDeadARepeatedListEndsAfterOneRound) {
    Die({u"a", u"b", u"c", u"d"});
    State().RepeatList = true;
    NextItem();
    EXPECT_EQ(Opened().size(), 4U);
    Host().Forget();
    PreviousItem();
    EXPECT_EQ(Opened().size(), 4U);
    EXPECT_EQ(Host().Numbers().back(), 33);  // by the end step
}

TEST_F(Sequence, InARepeatedListTheOnlyLiveItemIsComeBackTo) {
    Die({u"b", u"c", u"d"});
    State().RepeatList = true;
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"b", u"c", u"d", u"a"}));
    EXPECT_EQ(Current(), 0);
    EXPECT_TRUE(State().Playing);
}

TEST_F(Sequence, RepeatItemPlaysTheRowAgainAndLeavesTheOthers) {
    State().RepeatItem = true;
    State().Random = true;
    Current(2);
    NextItem();
    PreviousItem();
    EXPECT_EQ(Opened(), (Paths{u"c", u"c"}));
    EXPECT_EQ(State().History.Count(), 0);
    Current(-1);
    NextItem();
    PreviousItem();
    EXPECT_EQ(Opened().size(), 2U);
}

TEST_F(Sequence, RepeatItemDoesNotSkipADeadItem) {
    State().RepeatItem = true;
    Die({u"a"});
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"a"}));
    EXPECT_EQ(Current(), 0);
}

TEST_F(Sequence, RepeatItemReplaysAtTheEndOfTheStream) {
    State().RepeatItem = true;
    PlayCurrentItem();
    Host().playing = false;
    world_->Advance(50);
    EXPECT_EQ(Opened(), (Paths{u"a", u"a"}));
}

TEST_F(Sequence, AfterTheCurrentRowIsRemovedTheListHasRunOut) {
    Current(1);
    PlayCurrentItem();
    world_->List().RemoveItem(1);
    Host().Forget();
    NextItem();
    EXPECT_TRUE(Opened().empty());
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{33}));
    EXPECT_TRUE(State().Playing);  // the stream plays on
}

TEST_F(Sequence, AStaleRowBeyondTheListEndsTheStepInEitherDirection) {
    for (const Long row : {4, 7, kMost - 1, kMost}) {
        Current(row);
        NextItem();
        EXPECT_TRUE(Opened().empty()) << row;
    }
    Current(kMost);
    PreviousItem();  // down through rows that are not there
    EXPECT_EQ(Opened(), (Paths{u"d"}));
    EXPECT_EQ(Current(), 3);
}

TEST_F(Sequence, AStaleRowFarBelowStepsUpToNoRow) {
    Current(-kMost - 1);
    NextItem();
    EXPECT_TRUE(Opened().empty());
    EXPECT_EQ(Host().Numbers().back(), 33);
    Current(-kMost - 1);
    Host().Forget();
    PreviousItem();  // never comes to a row: ends by itself
    EXPECT_TRUE(Opened().empty());
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{33}));
    Current(-1);
    Host().Forget();
    PreviousItem();  // no row is where the list begins: there is no end step
    EXPECT_TRUE(Host().calls.empty());
}

TEST_F(Sequence, TheItemThatPlaysScrollsIntoView) {
    for (int i = 0; i < 60; ++i) {
        world_->Rows({u"more"});
    }
    JList& list = world_->List();
    Current(40);
    NextItem();
    EXPECT_GE(list.ListCurrent(), list.DisplayFirst());
    EXPECT_LE(list.ListCurrent(), list.DisplayLast());
    list.DisplayFrom(0);
    Current(30);
    PreviousItem();
    EXPECT_LE(29, list.DisplayLast());
    EXPECT_GE(29, list.DisplayFirst());
    list.DisplayFrom(0);
    Current(30);
    PlayCurrentItem();  // by itself it does not move the view
    EXPECT_EQ(list.DisplayFirst(), 0);
}

TEST_F(Sequence, TheSelectedRowPlaysNoPart) {
    world_->List().ListIndex(2);
    world_->List().Selected(3, true);
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"b"}));
    EXPECT_EQ(world_->List().ListIndex(), 2);
}

TEST_F(Sequence, AListThatIsEmptiedWhileItSkipsEndsTheStep) {
    Die({u"b", u"c", u"d"});
    Host().inside[26] = [&] { world_->List().Clear(); };
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"b"}));
}

TEST_F(Sequence, ALongListOfDeadItemsIsSkippedWithoutHarm) {
    std::vector<std::u16string> many(10'000, u"dead");
    world_->List().RedrawFlag(false);
    world_->Rows(many);
    world_->Rows({u"alive"});
    Die({u"b", u"c", u"d", u"dead"});
    NextItem();
    EXPECT_EQ(Current(), 10'004);
    EXPECT_EQ(world_->Main().Caption(), u"alive");
}

}  // namespace
}  // namespace sarnel

// Random order: the picks, the history and the steps through it. Which row is picked is the
// driver's luck; the rules hold for every luck.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <set>
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

class RandomOrder : public ::testing::Test {
  protected:
    RandomOrder() { world_->State().Random = true; }
    JList& List() { return world_->List(); }
    FakeHost& Host() { return world_->host; }
    PlayedHistory& History() { return world_->State().History; }
    const Paths& Opened() { return world_->host.opened; }
    static Paths Sorted(Paths paths) {
        std::sort(paths.begin(), paths.end());
        return paths;
    }

    std::unique_ptr<World> world_ = WorldBuilder().Rows({u"a", u"b", u"c"}).Started();
};

TEST_F(RandomOrder, ThreePicksGiveEachRowOnceAndStandInTheHistory) {
    for (Long pick = 1; pick <= 3; ++pick) {
        NextItem();
        EXPECT_EQ(History().Count(), pick);
        EXPECT_EQ(History().Pos(), pick - 1);
        EXPECT_EQ(History().Item(pick - 1), Opened().back());
        EXPECT_EQ(List().ListData(List().ListCurrent()), Opened().back());
    }
    EXPECT_EQ(Sorted(Opened()), (Paths{u"a", u"b", u"c"}));
}

TEST_F(RandomOrder, ACompleteHistoryEndsTheRunAndTheLastItemLosesItsMark) {
    for (int i = 0; i < 3; ++i) {
        NextItem();
    }
    Host().Forget();
    for (const bool repeat : {false, true}) {  // which has no effect here
        world_->State().RepeatList = repeat;
        NextItem();
        EXPECT_TRUE(Opened().empty());
        EXPECT_EQ(Host().Numbers().back(), 33);
        EXPECT_EQ(List().ListCurrent(), -1);
        EXPECT_TRUE(world_->State().Playing);
    }
    Host().playing = false;
    world_->Advance(50);
    EXPECT_FALSE(world_->State().Playing);
    EXPECT_EQ(Host().Count(28), 1);
}

TEST_F(RandomOrder, BackAndForwardFollowTheHistoryWithoutNewPicks) {
    for (int i = 0; i < 3; ++i) {
        NextItem();
    }
    const Paths picks = Opened();
    PreviousItem();
    PreviousItem();
    PreviousItem();  // at the first pick: just returns
    EXPECT_EQ(History().Pos(), 0);
    NextItem();
    NextItem();
    EXPECT_EQ(Opened(),
              (Paths{picks[0], picks[1], picks[2], picks[1], picks[0], picks[1], picks[2]}));
    EXPECT_EQ(History().Count(), 3);
    EXPECT_EQ(History().Pos(), 2);
}

TEST_F(RandomOrder, PreviousWithoutAHistoryDoesNothing) {
    PreviousItem();
    EXPECT_TRUE(Host().calls.empty());
    NextItem();
    Host().Forget();
    PreviousItem();
    EXPECT_TRUE(Host().calls.empty());
    EXPECT_EQ(History().Pos(), 0);
}

TEST_F(RandomOrder, AfterTheEndPreviousPlaysTheNewestAgain) {
    for (int i = 0; i < 4; ++i) {
        NextItem();
    }
    EXPECT_EQ(History().Pos(), 3);  // the spare slot
    const std::u16string newest = Opened().back();
    PreviousItem();
    EXPECT_EQ(Opened().back(), newest);
    EXPECT_EQ(Opened().size(), 4U);
    EXPECT_EQ(History().Pos(), 2);
}

TEST_F(RandomOrder, ADeadPickEntersTheHistorySoTheRunEndsByItself) {
    Host().dead = {u"a", u"b", u"c"};
    NextItem();
    EXPECT_EQ(Sorted(Opened()), (Paths{u"a", u"b", u"c"}));
    EXPECT_EQ(History().Count(), 3);
    EXPECT_EQ(List().ListCurrent(), -1);
    Host().Forget();
    NextItem();
    EXPECT_TRUE(Opened().empty());
}

TEST_F(RandomOrder, ADeadPickIsFollowedByAnother) {
    Host().dead = {u"a", u"b"};
    NextItem();
    EXPECT_EQ(Opened().back(), u"c");
    EXPECT_LE(History().Count(), 3);
    EXPECT_TRUE(world_->State().Playing);
}

TEST_F(RandomOrder, AnEntryThatHasLeftTheListIsSteppedOver) {
    for (int i = 0; i < 3; ++i) {
        NextItem();
    }
    const Paths picks = Opened();
    List().RemoveItem(List().FindDataIndex(picks[1], true));
    Host().Forget();
    PreviousItem();
    EXPECT_EQ(Opened(), (Paths{picks[0]}));
    EXPECT_EQ(History().Pos(), 0);
    NextItem();
    EXPECT_EQ(Opened(), (Paths{picks[0], picks[2]}));
    EXPECT_EQ(History().Pos(), 2);
}

TEST_F(RandomOrder, TheHistoryOutlivesModeChangesAndAClearedListAndEndsByItsOwnClear) {
    NextItem();
    NextItem();
    world_->State().Random = false;
    NextItem();
    world_->State().Random = true;
    EXPECT_EQ(History().Count(), 2);
    List().Clear();
    EXPECT_EQ(History().Count(), 2);
    ClearPlayedHistory();
    EXPECT_EQ(History().Count(), 0);
    EXPECT_EQ(History().Pos(), 0);
    EXPECT_FALSE(History().Has(0));
}

TEST_F(RandomOrder, ARowAddedAfterTheEndIsTheNextPick) {
    for (int i = 0; i < 4; ++i) {
        NextItem();
    }
    world_->Rows({u"d"});
    NextItem();
    EXPECT_EQ(Opened().back(), u"d");
    EXPECT_EQ(History().Count(), 4);
}

TEST_F(RandomOrder, ItIsKeyedByPathSoItSurvivesAnotherOrderOfTheRows) {
    NextItem();
    const std::u16string first = Opened().back();
    NextItem();
    List().Clear();
    world_->Rows({u"c", u"b", u"a", u"x"});
    PreviousItem();
    EXPECT_EQ(Opened().back(), first);
    EXPECT_EQ(List().ListData(List().ListCurrent()), first);
}

TEST_F(RandomOrder, IsInPlayedHistoryIgnoresCaseButTheStepToARowDoesNot) {
    NextItem();
    const std::u16string played = Opened().back();
    const std::u16string capital(1, static_cast<char16_t>(played[0] - 32));
    EXPECT_TRUE(IsInPlayedHistory(played));
    EXPECT_TRUE(IsInPlayedHistory(capital));
    NextItem();
    const Long row = List().FindDataIndex(played, true);
    List().ListData(row, capital);
    Host().Forget();
    PreviousItem();  // the entry names no row any more, and it is the first
    EXPECT_TRUE(Opened().empty());
    EXPECT_EQ(List().ListCurrent(), -1);
}

TEST_F(RandomOrder, RowsThatShareAPathEndTheRunInsteadOfSearchingForEver) {
    List().Clear();
    world_->Rows({u"a", u"A", u"a", u"b"});
    for (int i = 0; i < 2; ++i) {
        NextItem();
    }
    EXPECT_EQ(History().Count(), 2);
    Host().Forget();
    NextItem();
    EXPECT_TRUE(Opened().empty());
    EXPECT_EQ(Host().Numbers(), (std::vector<Long>{33}));
    EXPECT_EQ(History().Count(), 2);
}

TEST_F(RandomOrder, RepeatItemComesBeforeRandom) {
    world_->State().RepeatItem = true;
    List().ListCurrent(1);
    NextItem();
    EXPECT_EQ(Opened(), (Paths{u"b"}));
    EXPECT_EQ(History().Count(), 0);
}

TEST_F(RandomOrder, AListOfManyRowsIsPlayedThroughOnce) {
    List().Clear();
    List().RedrawFlag(false);
    std::vector<std::u16string> rows;
    for (int i = 0; i < 400; ++i) {
        rows.push_back(u"row " + std::u16string(1, static_cast<char16_t>(0x4E00 + i)));
    }
    world_->Rows(rows);
    for (int i = 0; i < 400; ++i) {
        NextItem();
    }
    EXPECT_EQ(Sorted(Opened()), Sorted(rows));
    NextItem();
    EXPECT_EQ(Opened().size(), 400U);
}

// 6000 first picks of 6 rows, 1000 each on average. The seeds are real luck, so the bound is wide:
// chi-square with 5 degrees of freedom passes 60 less than once in 10^10 runs if the picks are
// even.
TEST_F(RandomOrder, TheFirstPickIsEvenOverAllRows) {
    List().Clear();
    world_->Rows({u"a", u"b", u"c", u"d", u"e", u"f"});
    std::array<int, 6> picked{};
    for (int i = 0; i < 6000; ++i) {
        ClearPlayedHistory();
        NextItem();
        ++picked[static_cast<std::size_t>(List().ListCurrent())];
    }
    double chiSquare = 0;
    for (const int count : picked) {
        chiSquare += (count - 1000.0) * (count - 1000.0) / 1000.0;
    }
    EXPECT_LT(chiSquare, 60) << testing::PrintToString(picked);
}

// The same for a later pick: of 40 rows 36 have been played, and each of the four that are left
// must have its chance. 2000 picks, 500 each on average; 3 degrees of freedom.
TEST_F(RandomOrder, ALatePickIsEvenOverTheRowsThatAreLeft) {
    List().Clear();
    for (char16_t letter = 0; letter < 40; ++letter) {
        world_->Rows({std::u16string(1, static_cast<char16_t>(0x4E00 + letter))});
    }
    std::array<int, 4> picked{};
    for (int i = 0; i < 2000; ++i) {
        ClearPlayedHistory();
        for (Long row = 0; row < 36; ++row) {
            History().Add(List().ListData(row));
        }
        History().Pos(History().Count());
        NextItem();
        ASSERT_GE(List().ListCurrent(), 36);
        ++picked[static_cast<std::size_t>(List().ListCurrent() - 36)];
    }
    double chiSquare = 0;
    for (const int count : picked) {
        chiSquare += (count - 500.0) * (count - 500.0) / 500.0;
    }
    EXPECT_LT(chiSquare, 60) << testing::PrintToString(picked);
}

}  // namespace
}  // namespace sarnel

// What the start of a run makes of what the run before has left.
#include "host/rescue/rescue.h"

#include <functional>
#include <memory>

#include "tests/host/rescue_fixture.h"

namespace veldrin {
namespace {

namespace fs = std::filesystem;

class RescueTest : public RescueFixture {
  protected:
    /// A run that is killed, after `live` if that is given: its mark stays.
    Rescue::Findings Killed(const std::function<void(Rescue&)>& live = {}) {
        Rescue::Findings findings;
        const std::string mark = Path("mark");
        {
            Rescue rescue(places_);
            findings = rescue.Begin();
            if (live) {
                live(rescue);
            }
            fs::copy_file(places_.mark, mark, fs::copy_options::overwrite_existing);
        }
        fs::rename(mark, places_.mark);
        return findings;
    }
    /// A run that ends in order, and saves this as the component does.
    Rescue::Findings InOrder(const std::string& saved) {
        Rescue rescue(places_);
        const Rescue::Findings findings = rescue.Begin();
        WriteBytes(places_.list, saved);
        EXPECT_EQ(rescue.Finish(), std::nullopt);
        return findings;
    }
    void Copied(const std::string& bytes, time_t when) {
        WriteBytes(places_.copy, bytes);
        Age(places_.copy, when);
    }
    void Listed(const std::string& bytes, time_t when) {
        WriteBytes(places_.list, bytes);
        Age(places_.list, when);
    }

    static constexpr time_t kThen = 1'000'000'000;
};

TEST_F(RescueTest, AFirstRunFindsNothing) {
    const Rescue::Findings findings = InOrder(ListOf(2));
    EXPECT_TRUE(findings.mayPlay);
    EXPECT_FALSE(findings.putBack);
    EXPECT_TRUE(findings.notices.empty());
    EXPECT_EQ(BytesOf(places_.list), ListOf(2));
}

TEST_F(RescueTest, ThereIsACopyFromTheBeginning) {
    InOrder(ListOf(3));
    Killed([this](Rescue& rescue) {
        EXPECT_TRUE(rescue.HasFirstCopy());
        EXPECT_EQ(BytesOf(places_.copy), ListOf(3));
        fs::remove(places_.list);  // killed as the list was saved
    });
    const Rescue::Findings findings = Killed();
    EXPECT_TRUE(findings.putBack);
    EXPECT_EQ(findings.notices.size(), 1U);
    EXPECT_EQ(BytesOf(places_.list), ListOf(3));
}

TEST_F(RescueTest, ACutListGivesWayToTheCopyAndIsKept) {
    InOrder(ListOf(3));
    Killed([this](Rescue&) { WriteBytes(places_.list, ListOf(3, "new").substr(0, 50)); });
    const Rescue::Findings findings = Killed();
    EXPECT_TRUE(findings.putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(3));
    EXPECT_EQ(BytesOf(places_.list + ".damaged"), ListOf(3, "new").substr(0, 50));
}

TEST_F(RescueTest, BehindAKillTheNewerOfListAndCopyCountsWhateverTheClockSays) {
    Listed(ListOf(3, "old"), kThen);
    Killed([this](Rescue&) { Copied(ListOf(2, "newer"), kThen - 60); });
    EXPECT_TRUE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(2, "newer"));
    EXPECT_EQ(BytesOf(places_.list + ".damaged"), ListOf(3, "old"));

    Killed([this](Rescue&) {
        Copied(ListOf(3, "old"), kThen);
        Listed(ListOf(4, "saved"), kThen - 60);
    });
    EXPECT_FALSE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(4, "saved"));
}

TEST_F(RescueTest, AKillBetweenTheTwoStepsOfPuttingBackIsMadeUpFor) {
    Listed(ListOf(3, "old"), kThen);
    Killed([this](Rescue& rescue) {
        rescue.Lasted();
        Copied(ListOf(2, "newer"), kThen);
    });
    // As if killed once the list was set aside, and once more when the copy was in its place.
    fs::rename(places_.list, places_.list + ".damaged");
    Killed([this](Rescue&) { EXPECT_EQ(BytesOf(places_.list), ListOf(2, "newer")); });
    EXPECT_FALSE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(2, "newer"));
}

TEST_F(RescueTest, AnEmptiedListDoesNotComeBack) {
    Listed(ListOf(3), kThen);
    Killed([this](Rescue&) { Copied(ListOf(0), kThen + 60); });
    EXPECT_TRUE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(0));
    InOrder(ListOf(0));
    EXPECT_FALSE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(0));
}

TEST_F(RescueTest, TheSameListTwiceIsNoNews) {
    Listed(ListOf(3), kThen);
    Killed([this](Rescue&) { Copied(ListOf(3), kThen + 60); });
    const Rescue::Findings findings = Killed();
    EXPECT_FALSE(findings.putBack);
    EXPECT_TRUE(findings.notices.empty());
    EXPECT_FALSE(fs::exists(places_.list + ".damaged"));
}

TEST_F(RescueTest, ACopyOfAnEarlierRunIsNeverPutBack) {
    Killed([this](Rescue&) { Copied(ListOf(9, "earlier"), kThen + 60); });
    InOrder(ListOf(2));
    fs::remove(places_.list);
    Listed(ListOf(1), kThen);  // a user's own, with an old date
    Killed();
    EXPECT_EQ(BytesOf(places_.list), ListOf(1));
    EXPECT_FALSE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(1));
}

TEST_F(RescueTest, BetweenTwoRunsInOrderTheListIsTheUsers) {
    InOrder(ListOf(3));
    fs::remove(places_.list);
    EXPECT_FALSE(InOrder(ListOf(0)).putBack);
    InOrder(ListOf(3));
    Listed(ListOf(1, "mine"), kThen);
    EXPECT_FALSE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(1, "mine"));
}

TEST_F(RescueTest, APowerCutBehindTheEndLosesNoMoreThanTheCopyDoes) {
    InOrder(ListOf(3, "before"));
    Killed([this](Rescue& rescue) {
        Copied(ListOf(4, "copy"), kThen);
        WriteBytes(places_.list, ListOf(5, "saved"));
        rescue.Finish();
    });
    WriteBytes(places_.list, "");  // its bytes never reached the disk
    EXPECT_TRUE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(4, "copy"));
}

TEST_F(RescueTest, ACutCopyIsNoCopy) {
    Killed([this](Rescue&) {
        WriteBytes(places_.list, ListOf(3).substr(0, 40));
        Copied(ListOf(3).substr(0, 30), kThen);
    });
    EXPECT_FALSE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(3).substr(0, 40));
}

TEST_F(RescueTest, WhatIsNoFileIsNoCopyAndNoMark) {
    Killed([this](Rescue&) {
        fs::remove(places_.list);
        fs::remove(places_.copy);
        ASSERT_EQ(mkfifo(places_.copy.c_str(), 0600), 0);
    });
    EXPECT_FALSE(Killed().putBack);
    fs::remove(places_.mark);
    fs::create_directory(places_.mark);
    Rescue rescue(places_);
    rescue.Begin();
    EXPECT_FALSE(rescue.KeepsCopy());
}

TEST_F(RescueTest, AListThatCannotBeReadIsSetAsideAndTheCopyTakesItsPlace) {
    fs::create_directories(places_.list + "/inside");
    const Rescue::Findings first = Killed();
    EXPECT_EQ(first.notices.size(), 1U);
    EXPECT_FALSE(fs::exists(places_.list));
    EXPECT_TRUE(fs::exists(places_.list + ".damaged/inside"));
    Killed([this](Rescue&) {
        Copied(ListOf(2), kThen);
        ASSERT_EQ(mkfifo(places_.list.c_str(), 0600), 0);
    });
    const Rescue::Findings second = Killed();
    EXPECT_TRUE(second.putBack);
    EXPECT_EQ(second.notices.size(), 1U);
    EXPECT_TRUE(fs::is_fifo(places_.list + ".damaged.2"));
    EXPECT_EQ(BytesOf(places_.list), ListOf(2));
}

TEST_F(RescueTest, TheFourthStartPlaysNothingBehindThreeThatBrokeOff) {
    EXPECT_TRUE(Killed().mayPlay);
    EXPECT_TRUE(Killed().mayPlay);
    EXPECT_TRUE(Killed().mayPlay);
    const Rescue::Findings fourth = Killed();
    EXPECT_FALSE(fourth.mayPlay);
    EXPECT_EQ(fourth.notices.size(), 1U);
    EXPECT_FALSE(Killed([](Rescue& rescue) { rescue.Lasted(); }).mayPlay);
    EXPECT_TRUE(Killed().mayPlay);
    EXPECT_TRUE(Killed().mayPlay);
    EXPECT_TRUE(InOrder(ListOf(0)).mayPlay);
    EXPECT_TRUE(Killed().mayPlay);
}

TEST_F(RescueTest, TheMarkOfARunThatGoesOnIsNotTaken) {
    Listed(ListOf(2), kThen);
    Rescue running(places_);
    running.Begin();
    Copied(ListOf(1, "copy"), kThen + 60);
    Rescue other(places_);
    const Rescue::Findings findings = other.Begin();
    EXPECT_FALSE(other.KeepsCopy());
    EXPECT_FALSE(findings.putBack);
    EXPECT_TRUE(findings.mayPlay);
    EXPECT_EQ(BytesOf(places_.copy), ListOf(1, "copy"));
}

TEST_F(RescueTest, AnEndWhoseListCouldNotBeSavedIsToldAndMadeUpFor) {
    InOrder(ListOf(3));
    {
        Rescue rescue(places_);
        rescue.Begin();
        WriteBytes(places_.list, ListOf(4).substr(0, 40));  // the disk was full
        EXPECT_NE(rescue.Finish(), std::nullopt);
        EXPECT_EQ(rescue.Finish(), std::nullopt);
    }
    EXPECT_TRUE(Killed().putBack);
    EXPECT_EQ(BytesOf(places_.list), ListOf(3));
}

}  // namespace
}  // namespace veldrin

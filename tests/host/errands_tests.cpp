#include "host/errands.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/headless/headless_driver.h"

namespace veldrin {
namespace {

class ErrandsInTurn : public testing::Test {
  protected:
    /// Leaves its word.
    Errands::Errand Noting(const std::string& word, const std::string& name = {},
                           bool isForList = false) {
        return {[this, word] { done_ += word; }, name, isForList};
    }
    Errands::Errand Line(const std::string& word) { return Noting(word, {}, true); }
    void Turn() {
        windows_.Schedule(0, [] {});
        windows_.WaitMessage();
    }

    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows_{driver_};
    Errands errands_{windows_, true};
    std::string done_;
};

TEST_F(ErrandsInTurn, AreDoneInTheirOrder) {
    EXPECT_TRUE(errands_.Add(Noting("a")));
    EXPECT_TRUE(errands_.Add(Line("b")));
    EXPECT_TRUE(errands_.Add(Noting("c")));
    EXPECT_EQ(done_, "");
    errands_.WorkOff();
    EXPECT_EQ(done_, "abc");
}

TEST_F(ErrandsInTurn, WaitWhileTheyAreHeld) {
    errands_.Hold();
    errands_.Add(Line("a"));
    errands_.WorkOff();
    Turn();
    EXPECT_EQ(done_, "");
    errands_.LetGo();
    EXPECT_EQ(done_, "");  // whoever lets go is not yet ready for it
    errands_.Add(Noting("b"));
    Turn();
    EXPECT_EQ(done_, "ab");
}

TEST_F(ErrandsInTurn, WhatIsForTheListCanGoBeforeTheOthers) {
    errands_.Add(Noting("a"));
    errands_.Add(Line("b"));
    errands_.Add(Noting("c"));
    errands_.Add(Line("d"));
    errands_.DoForList();
    EXPECT_EQ(done_, "bd");
    errands_.WorkOff();
    EXPECT_EQ(done_, "bdac");
    errands_.Hold();
    errands_.Add(Line("e"));
    errands_.DoForList();
    EXPECT_EQ(done_, "bdac");
}

TEST_F(ErrandsInTurn, WaitForAllWhoHoldThem) {
    errands_.Hold();
    errands_.Hold();
    errands_.Add(Line("a"));
    errands_.LetGo();
    errands_.Hurry();
    Turn();
    EXPECT_EQ(done_, "");
    errands_.LetGo();
    Turn();
    EXPECT_EQ(done_, "a");
}

TEST_F(ErrandsInTurn, AnErrandMayHoldTheOthersAndAddToThem) {
    errands_.Add({[this] {
        errands_.Hold();
        errands_.Add(Noting("c"));
        errands_.WorkOff();
        done_ += "a";
    }});
    errands_.Add(Noting("b"));
    errands_.WorkOff();
    EXPECT_EQ(done_, "a");
    errands_.LetGo();
    Turn();
    EXPECT_EQ(done_, "abc");
}

TEST_F(ErrandsInTurn, ImpatienceCountsOnceWhileTheyAreHeld) {
    errands_.Hold();
    EXPECT_TRUE(errands_.Add(Noting("n", "next")));
    EXPECT_TRUE(errands_.Add(Noting("v")));
    EXPECT_FALSE(errands_.Add(Noting("n", "next")));
    EXPECT_TRUE(errands_.Add(Noting("v")));
    EXPECT_TRUE(errands_.Add(Noting("p", "previous")));
    errands_.LetGo();
    EXPECT_TRUE(errands_.Add(Noting("n", "next")));
    errands_.WorkOff();
    EXPECT_EQ(done_, "nvvpn");
}

TEST_F(ErrandsInTurn, LeaveTheWindowItsTurnBetweenSlices) {
    for (const char* word : {"a", "b", "c", "d"}) {
        errands_.Add({[this, word] {
            driver_.WaitUntil(driver_.Now() + 15);
            done_ += word;
        }});
    }
    errands_.WorkOff();
    EXPECT_EQ(done_, "ab");  // 20 ms are over
    errands_.Add(Noting("e"));
    Turn();
    EXPECT_EQ(done_, "abcd");
    Turn();
    EXPECT_EQ(done_, "abcde");
}

TEST_F(ErrandsInTurn, WithoutAWindowThereAreNoSlices) {
    Errands whole(windows_, false);
    for (int i = 0; i < 3; ++i) {
        whole.Add({[this] {
            driver_.WaitUntil(driver_.Now() + 50);
            done_ += "a";
        }});
    }
    whole.WorkOff();
    EXPECT_EQ(done_, "aaa");
}

TEST_F(ErrandsInTurn, TheEndHasTheLinesAndNothingElse) {
    errands_.Hold();
    errands_.Add(Noting("a"));
    for (const char* word : {"b", "c"}) {
        errands_.Add({[this, word] {
                          driver_.WaitUntil(driver_.Now() + 50);
                          done_ += word;
                      },
                      {},
                      true});
    }
    errands_.Add(Noting("d"));
    errands_.LetGo();
    errands_.Hurry();
    EXPECT_EQ(done_, "bc");
    errands_.Stop();
    EXPECT_FALSE(errands_.Add(Line("e")));
    errands_.WorkOff();
    Turn();
    EXPECT_EQ(done_, "bc");
}

}  // namespace
}  // namespace veldrin

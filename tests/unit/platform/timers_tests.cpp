// What happens in time: timers, scheduled calls, waiting, and keeping what ends inside its own
// dispatch.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"

namespace platform {
namespace {

using Beats = std::vector<std::pair<std::string, Millis>>;
using TimerList = std::vector<std::pair<Long, Long>>;

class Timers : public ::testing::Test {
  protected:
    /// A timer's callback that writes down its name and the time.
    TimerProc Beat(std::string name) {
        return [this, name = std::move(name)](Handle, Long) { Note(name); };
    }
    void Note(const std::string& name) { beats_.emplace_back(name, windows_.Now()); }
    std::vector<Millis> Times() const {
        std::vector<Millis> times;
        for (const auto& beat : beats_) {
            times.push_back(beat.second);
        }
        return times;
    }

    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    Handle window_ = windows_.CreateWindow(0, {}, {});
    Beats beats_;
};

TEST_F(Timers, ATimerComesAgainAfterEachPeriod) {
    windows_.SetTimer(window_, 14, 50, Beat("tick"));
    windows_.Sleep(49);
    EXPECT_EQ(beats_, Beats{});
    windows_.Sleep(1);
    EXPECT_EQ(beats_, (Beats{{"tick", 50}}));
    windows_.Sleep(110);
    EXPECT_EQ(Times(), (std::vector<Millis>{50, 100, 150}));
    EXPECT_EQ(windows_.Now(), 160);
}

TEST_F(Timers, TheCallbackGetsTheWindowAndTheId) {
    std::pair<Handle, Long> got;
    windows_.SetTimer(window_, 12, 30, [&](Handle w, Long id) { got = {w, id}; });
    windows_.Sleep(30);
    EXPECT_EQ(got, (std::pair<Handle, Long>{window_, 12}));
}

TEST_F(Timers, AtEqualTimesTheOneThatWasSetFirstComesFirst) {
    windows_.SetTimer(window_, 2, 10, Beat("second id, set first"));
    windows_.Schedule(20, [&] { Note("scheduled"); });
    windows_.SetTimer(window_, 1, 20, Beat("first id, set last"));
    windows_.Sleep(20);
    EXPECT_EQ(beats_, (Beats{{"second id, set first", 10},
                             {"second id, set first", 20},
                             {"scheduled", 20},
                             {"first id, set last", 20}}));
}

TEST_F(Timers, TheEarlierComesFirstWhateverTheOrderOfSetting) {
    windows_.Schedule(30, [&] { Note("late"); });
    windows_.Schedule(10, [&] { Note("early"); });
    windows_.SetTimer(window_, 1, 20, Beat("between"));
    windows_.Sleep(30);
    EXPECT_EQ(beats_, (Beats{{"early", 10}, {"between", 20}, {"late", 30}}));
}

TEST_F(Timers, SettingATimerAgainStartsItAfreshWithItsNewPeriodAndCallback) {
    windows_.SetTimer(window_, 1, 100, Beat("old"));
    windows_.Sleep(60);
    windows_.SetTimer(window_, 1, 100, Beat("new"));
    windows_.Sleep(99);
    EXPECT_EQ(beats_, Beats{});
    windows_.Sleep(1);
    EXPECT_EQ(beats_, (Beats{{"new", 160}}));
    windows_.SetTimer(window_, 1, 5, Beat("quick"));
    windows_.Sleep(10);
    EXPECT_EQ(beats_, (Beats{{"new", 160}, {"quick", 165}, {"quick", 170}}));
}

TEST_F(Timers, ATimerSetAgainStandsBehindThoseSetBefore) {
    windows_.SetTimer(window_, 1, 10, Beat("one"));
    windows_.SetTimer(window_, 2, 10, Beat("two"));
    windows_.SetTimer(window_, 1, 10, Beat("one"));
    windows_.Sleep(10);
    EXPECT_EQ(beats_, (Beats{{"two", 10}, {"one", 10}}));
}

TEST_F(Timers, APeriodIsAtLeastOneMillisecond) {
    windows_.SetTimer(window_, 1, 0, Beat("a"));
    windows_.SetTimer(window_, 2, -7, Beat("b"));
    EXPECT_EQ(windows_.Timers(window_), (TimerList{{1, 1}, {2, 1}}));
    windows_.Sleep(2);
    EXPECT_EQ(Times(), (std::vector<Millis>{1, 1, 2, 2}));
}

TEST_F(Timers, RunningTimersAreListedByIdForTheirWindowAlone) {
    const Handle other = windows_.CreateWindow(0, {}, {});
    windows_.SetTimer(window_, 14, 50, Beat("a"));
    windows_.SetTimer(window_, 12, 30, Beat("b"));
    windows_.SetTimer(other, 12, 99, Beat("c"));
    windows_.Schedule(5, [] {});
    EXPECT_EQ(windows_.Timers(window_), (TimerList{{12, 30}, {14, 50}}));
    windows_.KillTimer(window_, 12);
    windows_.KillTimer(window_, 77);  // never set
    EXPECT_EQ(windows_.Timers(window_), (TimerList{{14, 50}}));
    EXPECT_EQ(windows_.Timers(other), (TimerList{{12, 99}}));
    EXPECT_EQ(windows_.Timers(0), TimerList{});
}

TEST_F(Timers, ATimerMayKillItselfInItsCallback) {
    windows_.SetTimer(window_, 1, 10, [&](Handle w, Long id) {
        Note("once");
        windows_.KillTimer(w, id);
    });
    windows_.Sleep(100);
    EXPECT_EQ(beats_, (Beats{{"once", 10}}));
}

TEST_F(Timers, ATimerKilledByAnotherAtTheSameTimeStaysSilent) {
    windows_.SetTimer(window_, 1, 10, [&](Handle, Long) {
        Note("killer");
        windows_.KillTimer(window_, 2);
    });
    windows_.SetTimer(window_, 2, 10, Beat("victim"));
    windows_.Sleep(15);
    EXPECT_EQ(beats_, (Beats{{"killer", 10}}));
}

TEST_F(Timers, ATimerMaySetItselfAgainInItsCallback) {
    windows_.SetTimer(window_, 1, 10, [&](Handle, Long) {
        Note("first");
        windows_.SetTimer(window_, 1, 25, Beat("then"));
    });
    windows_.Sleep(60);
    EXPECT_EQ(beats_, (Beats{{"first", 10}, {"then", 35}, {"then", 60}}));
}

TEST_F(Timers, ACallbackMayDestroyItsWindow) {
    const std::string text(100, 'x');
    windows_.SetTimer(window_, 1, 10, [&, text](Handle w, Long) {
        windows_.DestroyWindow(w);
        Note(text.substr(0, 1));
    });
    windows_.SetTimer(window_, 2, 10, Beat("other"));
    windows_.Sleep(50);
    EXPECT_EQ(beats_, (Beats{{"x", 10}}));
}

TEST_F(Timers, ACallbackThatWaitsGoesOnBeingCalled) {
    bool waiting = false;
    windows_.SetTimer(window_, 1, 10, [&](Handle, Long) {
        Note(waiting ? "inside" : "outside");
        if (!std::exchange(waiting, true)) {
            windows_.Sleep(25);
            Note("waited");
            waiting = false;
        }
    });
    windows_.Sleep(40);
    EXPECT_EQ(beats_, (Beats{{"outside", 10},
                             {"inside", 20},
                             {"inside", 30},
                             {"waited", 35},
                             {"outside", 40},
                             {"inside", 50},
                             {"inside", 60},
                             {"waited", 65}}));
}

TEST_F(Timers, BeatsMissedByABusyThreadAreNotMadeUpFor) {
    bool busy = true;
    windows_.SetTimer(window_, 1, 10, [&](Handle, Long) {
        Note("beat");
        if (std::exchange(busy, false)) {
            driver_.WaitUntil(windows_.Now() + 100);  // time passes and nobody pumps
        }
    });
    windows_.Sleep(140);
    // Eleven were due from 20 to 120; one comes, late, and the beat goes on from there.
    EXPECT_EQ(Times(), (std::vector<Millis>{10, 110, 120, 130, 140}));
}

TEST_F(Timers, AScheduledCallComesOnceAndMayScheduleAnother) {
    windows_.Schedule(10, [&] {
        Note("first");
        windows_.Schedule(10, [&] { Note("second"); });
        windows_.Schedule(-5, [&] { Note("at once"); });
    });
    windows_.Sleep(100);
    EXPECT_EQ(beats_, (Beats{{"first", 10}, {"at once", 10}, {"second", 20}}));
}

TEST_F(Timers, DoEventsDeliversWhatIsDueAndLetsNoTimePass) {
    windows_.Schedule(0, [&] { Note("now"); });
    windows_.Schedule(1, [&] { Note("later"); });
    windows_.DoEvents();
    EXPECT_EQ(beats_, (Beats{{"now", 0}}));
    EXPECT_EQ(windows_.Now(), 0);
}

TEST_F(Timers, SleepingForNoTimeDeliversWhatIsPending) {
    windows_.Schedule(0, [&] { Note("now"); });
    windows_.Sleep(0);
    EXPECT_EQ(beats_, (Beats{{"now", 0}}));
    windows_.Sleep(-100);
    EXPECT_EQ(windows_.Now(), 0);
}

TEST_F(Timers, SleepDeliversWhatIsPostedMeanwhile) {
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message&) -> Long {
        Note("posted");
        return 0;
    });
    windows_.Schedule(10, [&] { windows_.PostMessage(w, 1, 0, 0); });
    windows_.Sleep(20);
    EXPECT_EQ(beats_, (Beats{{"posted", 10}}));
}

TEST_F(Timers, WaitMessageGoesToTheNextThingThatIsDue) {
    windows_.SetTimer(window_, 1, 30, Beat("timer"));
    windows_.Schedule(70, [&] { Note("scheduled"); });
    for (int turn = 0; turn < 3; ++turn) {
        windows_.WaitMessage();
    }
    EXPECT_EQ(beats_, (Beats{{"timer", 30}, {"timer", 60}, {"scheduled", 70}}));
}

TEST_F(Timers, WaitMessageLetsNoTimePassWhileAMessageIsPosted) {
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message&) -> Long {
        Note("posted");
        return 0;
    });
    windows_.SetTimer(window_, 1, 30, Beat("timer"));
    windows_.PostMessage(w, 1, 0, 0);
    windows_.WaitMessage();
    EXPECT_EQ(beats_, (Beats{{"posted", 0}}));
}

class Kept : public Timers {
  protected:
    std::shared_ptr<void> Mortal() {
        return {nullptr, [this](void*) { Note("died"); }};
    }
};

TEST_F(Kept, OutsideOfAnyDispatchWhatIsDeferredDiesAtOnce) {
    windows_.DeferDelete(Mortal());
    EXPECT_EQ(beats_, (Beats{{"died", 0}}));
}

TEST_F(Kept, InsideItLivesUntilTheOutermostDispatchIsOver) {
    const Handle inner = windows_.CreateWindow(0, {}, [&](const Message&) -> Long {
        windows_.DeferDelete(Mortal());
        return 0;
    });
    const Handle outer = windows_.CreateWindow(0, {}, [&](const Message&) -> Long {
        windows_.SendMessage(inner, 1, 0, 0);
        Note("still inside");
        return 0;
    });
    windows_.SendMessage(outer, 1, 0, 0);
    EXPECT_EQ(beats_, (Beats{{"still inside", 0}, {"died", 0}}));
}

TEST_F(Kept, TimersScheduledCallsAndDropsAreDispatchesToo) {
    windows_.SetTimer(window_, 1, 10, [&](Handle w, Long id) {
        windows_.KillTimer(w, id);
        windows_.DeferDelete(Mortal());
        Note("timer");
    });
    windows_.Schedule(20, [&] {
        windows_.DeferDelete(Mortal());
        Note("scheduled");
    });
    windows_.Sleep(20);
    windows_.SetDropTarget(window_, [&](const std::vector<std::string>&) {
        windows_.DeferDelete(Mortal());
        Note("drop");
    });
    windows_.DropFiles(window_, {"x"});
    EXPECT_EQ(beats_, (Beats{{"timer", 10},
                             {"died", 10},
                             {"scheduled", 20},
                             {"died", 20},
                             {"drop", 20},
                             {"died", 20}}));
}

TEST_F(Kept, ACallFromOutsideMayHoldDeletionBack) {
    {
        const WindowSystem::Dispatching outside(windows_);
        windows_.DeferDelete(Mortal());
        windows_.SendMessage(window_, 1, 0, 0);
        Note("held");
    }
    EXPECT_EQ(beats_, (Beats{{"held", 0}, {"died", 0}}));
}

TEST_F(Kept, WhatDiesMayDestroyWindowsAndDeferMore) {
    {
        const WindowSystem::Dispatching outside(windows_);
        windows_.DeferDelete(std::shared_ptr<void>(nullptr, [this](void*) {
            windows_.DestroyWindow(window_);
            windows_.DeferDelete(Mortal());
        }));
    }
    EXPECT_FALSE(windows_.IsWindow(window_));
    EXPECT_EQ(beats_, (Beats{{"died", 0}}));
}

// As a driver of a desktop: what is slower than the 30 ms of what moves may wait for it.
class LateDriver : public HeadlessDriver {
  public:
    LateDriver() : HeadlessDriver(Clock::kVirtual) {}
    Millis Lateness(Long period) const override { return period > 30 ? 30 : 0; }
};

class LateTimers : public Timers {
  protected:
    LateDriver lateDriver_;
    WindowSystem late_{lateDriver_};
    Handle lateWindow_ = late_.CreateWindow(0, {}, {});
    TimerProc LateBeat(std::string name) {
        return [this, name = std::move(name)](Handle, Long) {
            beats_.emplace_back(name, late_.Now());
        };
    }
};

TEST_F(LateTimers, TheSlowerOneComesTogetherWithTheFasterOne) {
    late_.SetTimer(lateWindow_, 12, 30, LateBeat("beat"));
    late_.SetTimer(lateWindow_, 14, 50, LateBeat("tick"));
    late_.Sleep(150);
    EXPECT_EQ(beats_, (Beats{{"beat", 30},
                             {"tick", 60},
                             {"beat", 60},
                             {"beat", 90},
                             {"tick", 120},
                             {"beat", 120},
                             {"beat", 150},
                             {"tick", 150}}));
}

TEST_F(LateTimers, OneAloneKeepsItsPeriod) {
    late_.SetTimer(lateWindow_, 14, 50, LateBeat("tick"));
    late_.Sleep(190);
    EXPECT_EQ(beats_, (Beats{{"tick", 80}, {"tick", 130}, {"tick", 180}}));
}

TEST_F(LateTimers, WhatIsScheduledIsNotLate) {
    late_.SetTimer(lateWindow_, 14, 50, LateBeat("tick"));
    late_.Schedule(55, [&] { beats_.emplace_back("call", late_.Now()); });
    late_.Sleep(60);
    EXPECT_EQ(beats_, (Beats{{"tick", 55}, {"call", 55}}));
}

}  // namespace
}  // namespace platform

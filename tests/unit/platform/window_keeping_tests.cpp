// A wait in which timers run and pictures are shown, while input is kept for later.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"

namespace platform {
namespace {

using Notes = std::vector<std::string>;

class WindowKeeping : public ::testing::Test {
  protected:
    WindowKeeping() {
        windows_.ShowWindow(window_, SW_SHOW);
        windows_.SetFocus(window_);
        windows_.DoEvents();
        notes_.clear();
    }

    Long Note(const Message& message) {
        if (message.id == WM_KEYDOWN) {
            notes_.push_back("key " + std::to_string(message.wParam));
        } else if (message.id == WM_USER) {
            notes_.emplace_back("posted");
        }
        return 0;
    }
    void Wait(Millis duration) {
        const Millis end = windows_.Now() + duration;
        windows_.WaitKeepingInput([&] { return windows_.Now() < end; },
                                  [](const DriverEvent&) { return true; });
    }

    static constexpr Long WM_USER = 1024;
    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    Handle window_ = windows_.CreateWindow(
        0, {0, 0, 10, 10}, [this](const Message& message) { return Note(message); });
    Notes notes_;
};

TEST_F(WindowKeeping, TimersAndCallsRunWhileInputAndMessagesWait) {
    driver_.Push(KeyChanged{'A'});
    windows_.PostMessage(window_, WM_USER, 0, 0);
    windows_.SetTimer(window_, 1, 30, [this](Handle, Long) { notes_.emplace_back("timer"); });
    windows_.Schedule(40, [this] { notes_.emplace_back("call"); });
    Wait(65);
    EXPECT_EQ(notes_, (Notes{"timer", "call", "timer"}));
    EXPECT_TRUE(windows_.HasKeptInput());
    notes_.clear();
    windows_.DoEvents();
    EXPECT_EQ(notes_, (Notes{"key 65", "posted"}));
    EXPECT_FALSE(windows_.HasKeptInput());
}

TEST_F(WindowKeeping, WhatIsKeptComesBeforeWhatIsReportedLater) {
    driver_.Push(KeyChanged{'A'});
    driver_.Push(KeyChanged{'B'});
    Wait(5);
    driver_.Push(KeyChanged{'C'});
    windows_.DoEvents();
    EXPECT_EQ(notes_, (Notes{"key 65", "key 66", "key 67"}));
}

TEST_F(WindowKeeping, TheMainLoopAndLoopsWithinItDoNotSleepOverIt) {
    driver_.Push(KeyChanged{'A'});
    Wait(5);
    const Millis before = windows_.Now();
    windows_.Schedule(1000, [] {});
    windows_.WaitMessage();
    EXPECT_EQ(windows_.Now(), before);
    EXPECT_EQ(notes_, Notes{"key 65"});
    driver_.Push(KeyChanged{'B'});
    Wait(5);
    EXPECT_TRUE(windows_.ExpectsInput());
    windows_.RunWhile([this] { return notes_.size() < 2; });
    EXPECT_EQ(windows_.Now(), before + 5 + 5);
    EXPECT_EQ(notes_, (Notes{"key 65", "key 66"}));
}

TEST_F(WindowKeeping, WhatIsNotWantedIsDropped) {
    driver_.Push(KeyChanged{'A'});
    driver_.Push(KeyChanged{'B'});
    int asked = 0;
    windows_.WaitKeepingInput([] { return false; },
                              [&](const DriverEvent&) { return ++asked == 2; });
    windows_.DoEvents();
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(notes_, Notes{"key 66"});
}

TEST_F(WindowKeeping, OneTurnIsDoneAtLeast) {
    const Millis before = windows_.Now();
    windows_.Schedule(0, [this] { notes_.emplace_back("call"); });
    windows_.WaitKeepingInput([] { return false; }, [](const DriverEvent&) { return true; });
    EXPECT_EQ(notes_, Notes{"call"});
    EXPECT_EQ(windows_.Now(), before);
}

TEST_F(WindowKeeping, ItLooksSomeHundredTimesASecond) {
    int looks = 0;
    const Millis end = windows_.Now() + 1000;
    windows_.WaitKeepingInput(
        [&] {
            ++looks;
            return windows_.Now() < end;
        },
        [](const DriverEvent&) { return true; });
    EXPECT_EQ(looks, 101);
}

}  // namespace
}  // namespace platform

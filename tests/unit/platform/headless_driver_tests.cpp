#include "platform/headless/headless_driver.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "platform/windows/window_system.h"

namespace platform {
namespace {

constexpr Millis kForEver = 600'000;  // longer than any test may take

// Two ends of a pipe.
class Pipe {
  public:
    Pipe() {
        if (pipe(ends_.data()) != 0) {
            ADD_FAILURE() << "no pipe";
        }
    }
    ~Pipe() {
        close(ends_[0]);
        close(ends_[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int ReadEnd() const { return ends_[0]; }
    void Write() const { EXPECT_EQ(write(ends_[1], "x", 1), 1); }
    void Read() const {
        char byte = 0;
        EXPECT_EQ(read(ends_[0], &byte, 1), 1);
    }

  private:
    std::array<int, 2> ends_{};
};

TEST(HeadlessDriver, TheVirtualClockBeginsAtZeroAndMovesToTheDeadlineOnly) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    EXPECT_EQ(driver.Now(), 0);
    driver.WaitUntil(40);
    EXPECT_EQ(driver.Now(), 40);
    driver.WaitUntil(10);  // never goes back
    EXPECT_EQ(driver.Now(), 40);
    driver.WaitUntil(std::nullopt);  // nothing would ever end this wait
    EXPECT_EQ(driver.Now(), 40);
}

TEST(HeadlessDriver, AWaitingEventKeepsTheVirtualClockWhereItIs) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    driver.Push(WorkAreaChanged{});
    driver.WaitUntil(40);
    EXPECT_EQ(driver.Now(), 0);
    EXPECT_TRUE(driver.NextEvent().has_value());
    driver.WaitUntil(40);
    EXPECT_EQ(driver.Now(), 40);
}

TEST(HeadlessDriver, EventsComeInTheOrderInWhichTheyHappened) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    driver.Push(CloseRequested{7});
    driver.Push(KeyChanged{13, 4, true});
    const auto first = driver.NextEvent();
    const auto second = driver.NextEvent();
    ASSERT_TRUE(first && second);
    EXPECT_EQ(std::get<CloseRequested>(*first).window, 7);
    EXPECT_EQ(std::get<KeyChanged>(*second).code, 13);
    EXPECT_EQ(std::get<KeyChanged>(*second).shift, 4);
    EXPECT_FALSE(driver.NextEvent().has_value());
}

TEST(HeadlessDriver, TheScreenItsWorkAreaAndThePointer) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    EXPECT_EQ(driver.ScreenSize(), (Size{1024, 768}));
    EXPECT_EQ(driver.WorkArea(), (Rect{0, 0, 1024, 740}));
    EXPECT_EQ(driver.Pointer(), (Point{0, 0}));
    driver.MovePointer({3, 4});
    EXPECT_EQ(driver.Pointer(), (Point{3, 4}));
    driver.SetWorkArea({0, 30, 1024, 768});
    EXPECT_EQ(driver.WorkArea(), (Rect{0, 30, 1024, 768}));
    const auto event = driver.NextEvent();
    ASSERT_TRUE(event);
    EXPECT_TRUE(std::holds_alternative<WorkAreaChanged>(*event));
}

TEST(HeadlessDriver, EveryCodeUnitIsSixPixelsWideAndALineThirteenHigh) {
    const HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    EXPECT_EQ(driver.MeasureText({}, u"^j"), (Size{12, 13}));
    EXPECT_EQ(driver.MeasureText({u"Arial", 30, true, true}, u"\U0001D11E"), (Size{12, 13}));
    EXPECT_EQ(driver.MeasureText({}, u""), (Size{0, 13}));
}

TEST(HeadlessDriver, ItKeepsWhatTheShellIsGiven) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    driver.TakeHotKey(3, 38);
    EXPECT_FALSE(driver.GrabHotKey(1, {u"Up", 3, 38}));
    EXPECT_TRUE(driver.GrabHotKey(2, {u"Up", 2, 38}));
    EXPECT_TRUE(driver.GrabHotKey(3, {u"Down", 3, 40}));
    driver.ReleaseHotKey(2);
    driver.ReleaseHotKey(7);
    EXPECT_EQ(driver.HotKeys(), (std::map<Handle, KeyCombination>{{3, {u"Down", 3, 40}}}));
    EXPECT_EQ(driver.LastErrorText(), u"");

    driver.ShowTrayIcon(5, u"One");
    driver.ShowTrayIcon(6, u"Two");
    driver.ShowTrayIcon(5, u"Three");
    driver.HideTrayIcon(6);
    EXPECT_EQ(driver.TrayTips(), (std::map<Handle, std::u16string>{{5, u"Three"}}));

    driver.RegistryWritten({u"k", u"1"});
    driver.RegistryWritten({u"k", u"2"});
    EXPECT_EQ(driver.Registry(), (std::vector<RegistryValue>{{u"k", u"1"}, {u"k", u"2"}}));
    EXPECT_FALSE(driver.Published());
    driver.PublishAssociations({});
    EXPECT_EQ(driver.Published(), std::vector<RegistryValue>{});
}

TEST(HeadlessDriver, EverySeedIsAnother) {
    HeadlessDriver driver(HeadlessDriver::Clock::kVirtual);
    std::set<std::uint64_t> seeds;
    for (int i = 0; i < 100; ++i) {
        seeds.insert(driver.RandomSeed());
    }
    EXPECT_EQ(seeds.size(), 100U);
}

TEST(HeadlessDriver, TheRealClockWaitsForTheDeadlineAndNeverGoesBack) {
    HeadlessDriver driver(HeadlessDriver::Clock::kReal);
    const Millis begin = driver.Now();
    EXPECT_GE(begin, 0);
    while (driver.Now() < begin + 30) {
        const Millis before = driver.Now();
        driver.WaitUntil(begin + 30);
        EXPECT_GE(driver.Now(), before);
    }
    driver.WaitUntil(begin);  // past already
    EXPECT_LT(driver.Now(), begin + kForEver);
}

TEST(HeadlessDriver, AReadableDescriptorEndsARealWait) {
    HeadlessDriver driver(HeadlessDriver::Clock::kReal);
    const Pipe pipe;
    int called = 0;
    driver.Watch(pipe.ReadEnd(), [&] {
        pipe.Read();
        ++called;
    });
    pipe.Write();
    driver.WaitUntil(driver.Now() + kForEver);
    EXPECT_EQ(called, 1);
    EXPECT_LT(driver.Now(), kForEver);
    driver.WaitUntil(driver.Now() + 5);  // nothing more to read
    EXPECT_EQ(called, 1);
    pipe.Write();
    driver.WaitUntil(std::nullopt);
    EXPECT_EQ(called, 2);
}

TEST(HeadlessDriver, AnEndedWatchIsNotCalled) {
    HeadlessDriver driver(HeadlessDriver::Clock::kReal);
    const Pipe pipe;
    int called = 0;
    driver.Watch(pipe.ReadEnd(), [&] { ++called; });
    driver.Watch(pipe.ReadEnd(), {});
    pipe.Write();
    driver.WaitUntil(driver.Now() + 5);
    EXPECT_EQ(called, 0);
}

TEST(HeadlessDriver, AWatchMayEndItselfAndAnotherInItsCall) {
    HeadlessDriver driver(HeadlessDriver::Clock::kReal);
    const Pipe first;
    const Pipe second;
    std::string called;
    const std::string text(100, 'x');
    const auto endBoth = [&, text] {
        driver.Watch(first.ReadEnd(), {});
        driver.Watch(second.ReadEnd(), {});
        called += text[0];
    };
    driver.Watch(first.ReadEnd(), endBoth);
    driver.Watch(second.ReadEnd(), endBoth);
    first.Write();
    second.Write();
    driver.WaitUntil(driver.Now() + kForEver);
    driver.WaitUntil(driver.Now() + 5);
    EXPECT_EQ(called, "x");
}

TEST(HeadlessDriver, AnEventEndsARealWaitAtOnce) {
    HeadlessDriver driver(HeadlessDriver::Clock::kReal);
    const Pipe pipe;
    driver.Watch(pipe.ReadEnd(), [&] {
        pipe.Read();
        driver.Push(CloseRequested{1});
    });
    driver.Push(CloseRequested{1});
    driver.WaitUntil(std::nullopt);
    EXPECT_TRUE(driver.NextEvent().has_value());
    pipe.Write();
    driver.WaitUntil(std::nullopt);
    EXPECT_TRUE(driver.NextEvent().has_value());
    EXPECT_LT(driver.Now(), kForEver);
}

TEST(HeadlessDriver, TimersBeatOnTheRealClockToo) {
    HeadlessDriver driver(HeadlessDriver::Clock::kReal);
    WindowSystem windows(driver);
    const Handle window = windows.CreateWindow(0, {}, {});
    int beats = 0;
    windows.SetTimer(window, 1, 5, [&](Handle, Long) { ++beats; });
    const Millis begin = windows.Now();
    while (beats < 3) {
        windows.WaitMessage();
    }
    EXPECT_GE(windows.Now(), begin + 15);
    EXPECT_LT(windows.Now(), begin + kForEver);
}

}  // namespace
}  // namespace platform

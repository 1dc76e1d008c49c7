// When the rescue copy is brought up to date.
#include "host/rescue/list_keeper.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <vector>

#include "core/ambrisor.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "platform/base/text.h"
#include "platform/headless/headless_driver.h"
#include "tests/host/rescue_fixture.h"

namespace veldrin {
namespace {

using platform::Millis;

TEST(CopyTimes, AListThatHasSettledIsCopied) {
    CopyTimes times;
    times.firstChange = times.lastChange = 1000;
    EXPECT_FALSE(times.IsDue(5999, 10));
    EXPECT_TRUE(times.IsDue(6000, 10));
}

TEST(CopyTimes, AListThatNeverSettlesIsCopiedAsItIs) {
    CopyTimes times;
    times.firstChange = 1000;
    times.lastChange = 10990;
    EXPECT_FALSE(times.IsDue(10999, 10));
    EXPECT_TRUE(times.IsDue(11000, 10));
}

TEST(CopyTimes, CopiesKeepTheirDistance) {
    CopyTimes times;
    times.lastCopy = 100'000;
    times.firstChange = times.lastChange = 100'001;
    EXPECT_FALSE(times.IsDue(109'999, 200'000));
    EXPECT_TRUE(times.IsDue(110'000, 200'000));
    EXPECT_EQ(times.Rest(104'000, 200'000), 6'000);
    EXPECT_EQ(times.Rest(111'000, 200'000), 0);
    EXPECT_FALSE(times.IsDue(159'999, 200'001));
    EXPECT_TRUE(times.IsDue(160'000, 200'001));
}

/// A run of the component on a clock of the test's own.
class ListKeeperTest : public RescueFixture {
  protected:
    /// The run begins with so many rows in the saved list.
    void Start(int rows) {
        WriteBytes(places_.list, ListOf(rows));
        rescue_.Begin();
        sarnel::ImpulseValue first;
        sarnel::ImpulseValue second;
        component_.ProcessImpulse(sarnel::kImpulseAttach, {}, first, second);
        component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlLoad, first, second);
        first = true;
        second = std::u16string();
        component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, first, second);
    }
    sarnel::JList& List() { return component_.State().Main().lstPlaylist; }
    void Add(const std::u16string& title) { List().AddItem(title, u"/music/" + title); }

    /// The main loop, for so long; what is written then gets the time that it needs.
    void Pass(Millis duration) {
        const Millis end = windows_.Now() + duration;
        while (windows_.Now() < end) {
            windows_.Sleep(std::min<Millis>(100, end - windows_.Now()));
            keeper_.Turn();
            for (int i = 0; i < 10'000 && rescue_.Writer().IsBusy(); ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        }
    }
    std::int64_t RowsOfCopy() {
        const auto head = ReadListHead(places_.copy);
        return head ? head->count : -1;
    }

    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows_{driver_};
    sarnel::Ambrisor component_{windows_, {folder_.Path()}};
    Rescue rescue_{places_};
    ListKeeper keeper_{windows_, sarnel::Remote(component_), rescue_};
};

TEST_F(ListKeeperTest, ARestoredListHasItsCopyAlready) {
    Start(2);
    struct stat before {};
    ASSERT_EQ(stat(places_.copy.c_str(), &before), 0);
    keeper_.Begin(true);
    Pass(30'000);
    struct stat after {};
    ASSERT_EQ(stat(places_.copy.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(ListKeeperTest, WhatARunBeginsWithIsCopiedUnlessItIsTheSavedList) {
    Start(2);
    Add(u"new");
    keeper_.Begin(false);
    Pass(4'900);
    EXPECT_EQ(RowsOfCopy(), 2);
    Pass(200);
    EXPECT_EQ(RowsOfCopy(), 3);
}

TEST_F(ListKeeperTest, ARowThatTheStartHasMovedToIsCopied) {
    Start(3);
    List().ListCurrent(0);
    keeper_.Begin(true);
    Pass(5'100);
    ASSERT_TRUE(ReadListHead(places_.copy));
    EXPECT_EQ(ReadListHead(places_.copy)->current, 0);
}

TEST_F(ListKeeperTest, AChangeIsCopiedWhenTheListHasSettled) {
    Start(1);
    keeper_.Begin(true);
    Pass(20'000);
    Add(u"a");
    Pass(3'000);
    Add(u"b");
    Pass(4'900);
    EXPECT_EQ(RowsOfCopy(), 1);
    Pass(1'200);  // it is looked at once a second
    EXPECT_EQ(RowsOfCopy(), 3);
    ASSERT_TRUE(List().Serialize(platform::Widen(Path("list"))));
    EXPECT_EQ(BytesOf(places_.copy), BytesOf(Path("list")));
    EXPECT_EQ(RightsOf(places_.copy), 0600U);
}

TEST_F(ListKeeperTest, ChangesWithoutEndCostNoMoreThanFifteenSeconds) {
    Start(0);
    keeper_.Begin(true);
    std::vector<Millis> made;
    const Millis start = windows_.Now();
    while (windows_.Now() - start < 60'000) {
        made.push_back(windows_.Now());
        Add(u"x");
        Pass(500);
        // The first change that is in no copy.
        const auto copied = static_cast<std::size_t>(std::max<std::int64_t>(RowsOfCopy(), 0));
        if (copied < made.size()) {
            ASSERT_LE(windows_.Now() - made[copied], 12'000);
        }
    }
    EXPECT_GT(RowsOfCopy(), 80);
}

TEST_F(ListKeeperTest, WithinAWaitNothingIsCopied) {
    Start(1);
    keeper_.Begin(true);
    Add(u"a");
    windows_.Sleep(20'000);  // as a loop within a handler
    EXPECT_EQ(RowsOfCopy(), 1);
    keeper_.Turn();
    Pass(200);
    EXPECT_EQ(RowsOfCopy(), 2);
}

TEST_F(ListKeeperTest, WhileNothingChangesNothingHappens) {
    Start(1);
    keeper_.Begin(true);
    Pass(25'000);
    Add(u"a");
    Pass(10'000);
    EXPECT_EQ(RowsOfCopy(), 2);
    windows_.SetMinimised(component_.State().Main().HWnd(), true);
    EXPECT_FALSE(windows_.ExpectsInput());  // no call is scheduled
}

TEST_F(ListKeeperTest, AFailedCopyIsTriedAgain) {
    Start(1);
    keeper_.Begin(true);
    std::filesystem::create_directory(places_.copy + ".new");  // in the way of the new file
    Add(u"a");
    Pass(8'000);
    EXPECT_EQ(RowsOfCopy(), 1);
    std::filesystem::remove(places_.copy + ".new");
    Pass(70'000);
    EXPECT_EQ(RowsOfCopy(), 2);
}

TEST_F(ListKeeperTest, ARunThatIsOverLeavesTheCopyAsItIs) {
    Start(1);
    keeper_.Begin(true);
    Add(u"a");
    Pass(4'000);
    sarnel::ImpulseValue show(false);
    sarnel::ImpulseValue unused(platform::Long{0});
    component_.ProcessImpulse(sarnel::kImpulseControl, sarnel::kControlShow, show, unused);
    Pass(20'000);
    EXPECT_EQ(RowsOfCopy(), 1);
    rescue_.Finish();
    rescue_.Writer().Write(sarnel::ListCopy(0, -1));
    EXPECT_FALSE(rescue_.Writer().IsBusy());
    EXPECT_EQ(RowsOfCopy(), 1);
}

}  // namespace
}  // namespace veldrin

// Scrolling by the mouse: track, wheel, thumb and a band that leaves the list, with their waits.
// Thirty rows of which twelve fit; the thumb is 71 high and goes down by 6.11 pixels a row.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "controls/list/jlist.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;
using support::Unsorted;
using Range = std::pair<Long, Long>;

class JListScroll : public ::testing::Test {
  protected:
    JListScroll() {
        bench_.AddMany(30);
        list_.DisplayList();
    }
    /// First row on show when so many ms have passed, filled in while a loop runs.
    void Note(platform::Millis when) {
        bench_.After(when, [this] { seen_.push_back(bench_.list->DisplayFirst()); });
    }
    void ReleaseAfter(platform::Millis when) {
        bench_.After(when, [this] { bench_.Release(); });
    }
    void Wheel(Long delta) { list_.WM_MOUSEWHEEL_Process(delta * 65536); }

    ListBench bench_{{281, 181}, Unsorted()};
    JList& list_ = *bench_.list;
    std::vector<Long> seen_;
};

TEST_F(JListScroll, TheTrackGivesOneStepAtOnceAndRepeatsAfter200Ms) {
    bench_.MoveTo(270, 175);
    for (const platform::Millis when : {1, 249, 251, 301, 351, 401}) {
        Note(when);
    }
    ReleaseAfter(2000);
    bench_.Press();
    // 3, 6, 9 ... until row 29 is on show: the loop ends by itself.
    EXPECT_EQ(seen_, (std::vector<Long>{3, 3, 6, 9, 12, 15}));
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
    EXPECT_EQ(bench_.windows.Now(), 450);
    EXPECT_EQ(list_.Mouse().mode, 3);
    bench_.Release();
    EXPECT_EQ(list_.Mouse().mode, 0);
}

TEST_F(JListScroll, AReleaseBeforeTheRepeatLeavesOneStep) {
    bench_.MoveTo(270, 175);
    ReleaseAfter(120);
    bench_.Press();
    EXPECT_EQ(bench_.Range(), (Range{3, 14}));
    EXPECT_EQ(bench_.windows.Now(), 120);
}

TEST_F(JListScroll, TheRepeatStopsWhereThePointerIs) {
    bench_.MoveTo(270, 80);
    bench_.Press();
    // Row 15 puts the thumb's top to 92, below the pointer: the next step is not painted any more.
    EXPECT_EQ(list_.TopIndex(), 15);
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
    EXPECT_EQ(bench_.windows.Now(), 450);
    bench_.Release();
    EXPECT_EQ(list_.Thumb().rect.top, 110);  // the strip is drawn at the release
    EXPECT_EQ(list_.TopIndex(), 15);
}

TEST_F(JListScroll, OffTheTrackTheRepeatPauses) {
    bench_.MoveTo(270, 175);
    bench_.After(260, [&] { bench_.MoveTo(100, 175); });
    bench_.After(460, [&] { bench_.MoveTo(270, 175); });
    Note(499);
    Note(501);
    ReleaseAfter(510);
    bench_.Press();
    EXPECT_EQ(seen_, (std::vector<Long>{6, 9}));
}

TEST_F(JListScroll, TheTrackAboveTheThumbScrollsUp) {
    list_.DisplayFrom(18);
    bench_.MoveTo(270, 5);
    Note(1);
    Note(251);
    bench_.Press();
    EXPECT_EQ(seen_, (std::vector<Long>{15, 12}));
    EXPECT_EQ(bench_.Range(), (Range{0, 11}));
    EXPECT_EQ(bench_.windows.Now(), 450);
    bench_.Release();
}

TEST_F(JListScroll, ANotchIsThreeRowsAndReturnsAtOnce) {
    bench_.MoveTo(100, 100);
    Wheel(-120);
    EXPECT_EQ(bench_.Range(), (Range{3, 14}));
    Wheel(-1);
    EXPECT_EQ(bench_.Range(), (Range{6, 17}));
    Wheel(120);
    EXPECT_EQ(bench_.Range(), (Range{3, 14}));
    Wheel(1);
    Wheel(1);
    EXPECT_EQ(bench_.Range(), (Range{0, 11}));
    EXPECT_EQ(bench_.windows.Now(), 0);
}

TEST_F(JListScroll, TheLastStepDownEndsWithTheLastRow) {
    bench_.MoveTo(100, 100);
    list_.DisplayFrom(17);
    Wheel(-120);
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
    Wheel(-120);
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
}

TEST_F(JListScroll, TheWheelOverAnotherWindowOrAListThatFitsDoesNothing) {
    bench_.driver.MovePointer({500, 500});
    bench_.windows.SetFocus(list_.HWnd());
    Wheel(-120);
    EXPECT_EQ(bench_.Range(), (Range{0, 11}));
    bench_.MoveTo(100, 100);
    list_.Clear();
    bench_.AddMany(12);
    Wheel(-120);
    Wheel(120);
    EXPECT_EQ(bench_.Range(), (Range{0, 11}));
}

TEST_F(JListScroll, ABandBelowTheListSelectsWhileItScrolls) {
    bench_.MoveTo(20, 35);
    bench_.Press();
    std::vector<Long> counts;
    for (const platform::Millis when : {49, 51, 101}) {
        bench_.After(when, [&] { counts.push_back(list_.SelCount()); });
    }
    bench_.After(10, [&] { EXPECT_TRUE(list_.Mouse().edgeScrolling); });
    bench_.MoveTo(20, 200);
    EXPECT_EQ(counts, (std::vector<Long>{1, 13, 16}));  // rows 2 to 14, to 17
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
    EXPECT_EQ(list_.SelCount(), 28);
    EXPECT_EQ(list_.ListIndex(), 29);
    EXPECT_EQ(bench_.windows.Now(), 300);
    EXPECT_FALSE(list_.Mouse().edgeScrolling);
    bench_.Release();
}

TEST_F(JListScroll, ABandAboveTheListGoesUpToRow0) {
    list_.DisplayFrom(18);
    bench_.MoveTo(20, 20);
    bench_.Press();
    bench_.MoveTo(20, -1);
    EXPECT_EQ(bench_.Range(), (Range{0, 11}));
    EXPECT_EQ(list_.ListIndex(), 0);
    EXPECT_EQ(list_.SelCount(), 20);  // rows 0 to 19
}

// The list is 181 high: y = 181 is below its last pixel, but not yet off it for the scrolling. The
// band goes to the last row, since no row is there.
TEST_F(JListScroll, AtItsHeightTheBandDoesNotScroll) {
    bench_.MoveTo(20, 35);
    bench_.Press();
    bench_.MoveTo(20, 181);
    EXPECT_EQ(bench_.windows.Now(), 0);
    EXPECT_EQ(bench_.Range(), (Range{0, 11}));
    EXPECT_EQ(list_.ListIndex(), 29);
    EXPECT_EQ(list_.SelCount(), 28);
    bench_.Release();
}

TEST_F(JListScroll, AtY0TheBandDoesNotScroll) {
    list_.DisplayFrom(18);
    bench_.MoveTo(20, 35);
    bench_.Press();
    bench_.MoveTo(20, 0);
    EXPECT_EQ(bench_.windows.Now(), 0);
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
    EXPECT_EQ(list_.ListIndex(), 18);
    EXPECT_EQ(list_.SelCount(), 3);
    bench_.Release();
}

TEST_F(JListScroll, ComingBackToEitherEdgeEndsTheScrolling) {
    for (const Long edge : {181, 0}) {
        list_.DisplayFrom(edge == 0 ? 18 : 0);
        bench_.windows.Sleep(1000);  // no double click
        const platform::Millis start = bench_.windows.Now();
        bench_.MoveTo(20, 35);
        bench_.Press();
        bench_.After(120, [&] { bench_.MoveTo(20, edge); });
        ReleaseAfter(300);
        bench_.MoveTo(20, edge == 0 ? -9 : 200);
        EXPECT_EQ(bench_.Range(), (edge == 0 ? Range{12, 23} : Range{6, 17})) << edge;
        EXPECT_EQ(bench_.windows.Now() - start, 300) << edge;
    }
}

TEST_F(JListScroll, AStepThatOvershootsTakesTheSpareSlotIntoTheBand) {
    bench_.AddMany(1);  // 31 rows: the last step begins at 20, and the twelfth row is number 31
    bench_.MoveTo(20, 35);
    bench_.Press();
    bench_.MoveTo(20, 200);
    EXPECT_EQ(bench_.Range(), (Range{19, 30}));
    EXPECT_EQ(list_.ListIndex(), 31);
    EXPECT_EQ(list_.SelCount(), 30);
    EXPECT_TRUE(list_.Selected(31));
}

TEST_F(JListScroll, APointerThatComesBackEndsTheScrollingAndGoesOnWithTheBand) {
    bench_.MoveTo(20, 35);
    bench_.Press();
    bench_.After(120, [&] { bench_.MoveTo(20, 95); });
    ReleaseAfter(300);
    bench_.MoveTo(20, 200);
    EXPECT_EQ(bench_.Range(), (Range{6, 17}));
    EXPECT_EQ(list_.ListIndex(), 12);  // the seventh row on show
    EXPECT_EQ(list_.SelCount(), 11);
    EXPECT_FALSE(list_.Mouse().edgeScrolling);
}

TEST_F(JListScroll, LeavingAgainStartsASecondLoopInsideTheFirst) {
    bench_.MoveTo(20, 35);
    bench_.Press();
    bench_.After(120, [&] { bench_.MoveTo(20, 95); });
    bench_.After(130, [&] { bench_.MoveTo(20, 200); });
    bench_.MoveTo(20, 200);
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
    EXPECT_EQ(list_.SelCount(), 28);
    bench_.Release();
}

TEST_F(JListScroll, TheHeldThumbTakesTheListAlong) {
    bench_.MoveTo(275, 30);
    bench_.After(50, [&] { bench_.MoveTo(275, 60); });
    Note(99);
    Note(101);
    bench_.After(102, [&] {
        EXPECT_TRUE(list_.Mouse().thumbLoopActive);
        EXPECT_EQ(list_.Thumb().rect.top, 30);  // it follows the pointer
        EXPECT_EQ(list_.Mouse().thumbLastY, 60);
        EXPECT_EQ(list_.Mouse().thumbGrabOffset, 30);
    });
    ReleaseAfter(150);
    bench_.Press();
    EXPECT_EQ(seen_, (std::vector<Long>{0, 8}));  // 30 / 111 * 30 = 8.1
    EXPECT_EQ(bench_.Range(), (Range{8, 19}));
    EXPECT_EQ(list_.Mouse().mode, 0);
    EXPECT_FALSE(list_.Mouse().thumbDragging);
    EXPECT_FALSE(list_.Mouse().thumbLoopActive);
    EXPECT_EQ(bench_.windows.Now(), 200);
}

TEST_F(JListScroll, SmallMovesOfTheThumbAddUp) {
    list_.DisplayFrom(9);
    bench_.MoveTo(275, 80);
    bench_.After(50, [&] { bench_.MoveTo(275, 82); });   // 2 / 111 * 30 = 0.5
    bench_.After(150, [&] { bench_.MoveTo(275, 84); });  // 4: 1.08
    bench_.After(250, [&] { bench_.MoveTo(275, 76); });  // -8: -2.2
    for (const platform::Millis when : {110, 210, 310}) {
        Note(when);
    }
    ReleaseAfter(320);
    bench_.Press();
    EXPECT_EQ(seen_, (std::vector<Long>{9, 10, 8}));
}

TEST_F(JListScroll, AtTheEndsTheThumbsLoopEndsAndAMoveStartsItAgain) {
    bench_.MoveTo(275, 30);
    bench_.After(50, [&] { bench_.MoveTo(275, 181); });
    bench_.Press();
    EXPECT_EQ(bench_.windows.Now(), 100);
    EXPECT_EQ(bench_.Range(), (Range{18, 29}));
    EXPECT_FALSE(list_.Mouse().thumbLoopActive);
    EXPECT_TRUE(list_.Mouse().thumbDragging);
    bench_.MoveTo(275, 0);  // handled at once
    EXPECT_EQ(bench_.Range(), (Range{0, 11}));
    EXPECT_EQ(bench_.windows.Now(), 100);
    ReleaseAfter(150);
    bench_.MoveTo(275, 60);  // from 30, where it last stepped: 8 rows
    EXPECT_EQ(bench_.windows.Now(), 300);
    EXPECT_EQ(bench_.Range(), (Range{8, 19}));
}

TEST_F(JListScroll, ThePressIsToldOfOnlyAfterItsLoop) {
    std::vector<std::string> events;
    list_.Observe([&](const std::string& event, const std::string&) { events.push_back(event); });
    bench_.MoveTo(275, 30);
    ReleaseAfter(50);
    bench_.Press();
    EXPECT_EQ(events, (std::vector<std::string>{"MouseMove", "MouseUp", "MouseDown"}));
}

// What can happen to the list while it waits for a release.
struct Mishap {
    const char* name;
    Long x;
    Long y;
};

class JListMishaps : public JListScroll, public ::testing::WithParamInterface<Mishap> {
  protected:
    void Press() {
        bench_.MoveTo(GetParam().x, GetParam().y);
        bench_.Press();
        bench_.MoveTo(GetParam().x, 300);  // a band leaves the list; nothing new for the others
    }
};

TEST_P(JListMishaps, TheEndOfItsWindowEndsTheLoop) {
    std::vector<std::string> events;
    list_.Observe([&](const std::string& event, const std::string&) { events.push_back(event); });
    bench_.After(30, [&] {
        events.clear();
        bench_.windows.DestroyWindow(bench_.window);
    });
    Press();
    EXPECT_LT(bench_.windows.Now(), 200);
    EXPECT_TRUE(events.empty());
}

TEST_P(JListMishaps, TheEndOfTheListItselfDoesNoHarm) {
    bench_.After(30, [&] {
        bench_.windows.DestroyWindow(bench_.list->HWnd());
        bench_.windows.DeferDelete(std::shared_ptr<JList>(std::move(bench_.list)));
    });
    Press();
    EXPECT_LT(bench_.windows.Now(), 200);
}

TEST_P(JListMishaps, AListOffTheScreenGoesOnWithItsPressUntilTheRelease) {
    const std::vector<std::function<void()>> mishaps{
        [&] { bench_.windows.SetMinimised(bench_.window, true); },
        [&] { bench_.windows.ShowWindow(bench_.window, platform::SW_HIDE); },
        [&] { bench_.windows.ShowWindow(list_.HWnd(), platform::SW_HIDE); },
        [&] { bench_.windows.EnableWindow(list_.HWnd(), false); },
    };
    for (const auto& mishap : mishaps) {
        Long modeBefore = 0;
        list_.DisplayFrom(0);
        bench_.After(30, mishap);
        bench_.After(110, [&] { modeBefore = list_.Mouse().mode; });
        ReleaseAfter(120);
        Press();
        EXPECT_NE(modeBefore, 0);
        EXPECT_EQ(list_.Mouse().mode, 0);
        EXPECT_FALSE(list_.Mouse().thumbDragging);
        bench_.windows.EnableWindow(list_.HWnd(), true);
        bench_.windows.ShowWindow(list_.HWnd(), platform::SW_SHOW);
        bench_.windows.ShowWindow(bench_.window, platform::SW_SHOW);
        bench_.windows.SetMinimised(bench_.window, false);
        bench_.windows.Sleep(1000);
    }
}

TEST_P(JListMishaps, AClearedOrRefilledListDoesNoHarm) {
    bench_.After(30, [&] { list_.Clear(); });
    bench_.After(330, [&] { bench_.AddMany(13); });
    bench_.After(630, [&] { list_.RemoveItem(0); });
    bench_.After(930, [&] { bench_.Release(); });
    Press();
    bench_.windows.Sleep(1000);
    EXPECT_EQ(list_.Mouse().mode, 0);
    EXPECT_EQ(list_.ListCount(), 12);
}

INSTANTIATE_TEST_SUITE_P(InEachLoop, JListMishaps,
                         ::testing::Values(Mishap{"Band", 20, 35}, Mishap{"Track", 270, 175},
                                           Mishap{"Thumb", 275, 30}),
                         [](const auto& mishap) { return std::string(mishap.param.name); });

}  // namespace
}  // namespace sarnel

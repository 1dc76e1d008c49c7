// The mouse on the rows: presses, the band, clicks. Thirty rows of 15 pixels, of which twelve fit
// into 281 x 181; the strip begins at x = 269.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/list/jlist.h"
#include "platform/base/keys.h"
#include "tests/unit/support/list_bench.h"

namespace sarnel {
namespace {

using support::ListBench;
using support::Unsorted;
using Events = std::vector<std::string>;

constexpr Long kShiftKey = 16;
constexpr Long kCtrlKey = 17;

class JListMouse : public ::testing::Test {
  protected:
    explicit JListMouse(const JListStored& stored = Unsorted()) : bench_({281, 181}, stored) {
        bench_.AddMany(30);
        list_.DisplayList();
        list_.Observe([this](const std::string& event, const std::string& arguments) {
            events_.push_back(arguments.empty() ? event : event + ' ' + arguments);
        });
    }
    void Over(Long row) { bench_.MoveTo(20, row * 15 + 5); }
    void Click(Long row) {
        Over(row);
        bench_.Press();
        bench_.Release();
    }
    void Hold(Long code, Long shift) { bench_.Key(code, shift, true); }
    void ExpectSelected(const std::string& firstRows, Long count) {
        EXPECT_EQ(bench_.Flags().substr(0, firstRows.size()), firstRows);
        EXPECT_EQ(list_.SelCount(), count);
    }

    ListBench bench_;
    JList& list_ = *bench_.list;
    Events events_;
};

TEST_F(JListMouse, APressSelectsTheRowAloneAndTakesTheFocus) {
    Click(2);
    Over(5);
    bench_.Press();
    ExpectSelected(".....x....", 1);
    EXPECT_EQ(list_.CaretIndex(), 5);
    EXPECT_EQ(list_.FocusIndex(), 5);
    EXPECT_EQ(list_.ListIndex(), 5);
    EXPECT_EQ(list_.Mouse().mode, 1);
    EXPECT_EQ(list_.Mouse().lastHover, 5);
    EXPECT_EQ(bench_.windows.GetFocus(), list_.HWnd());
    bench_.Release();
    EXPECT_EQ(list_.Mouse().mode, 0);
}

TEST_F(JListMouse, CtrlTurnsTheRowsFlagAndItStaysListIndex) {
    Click(2);
    Hold(kCtrlKey, 2);
    Click(4);
    ExpectSelected("..x.x.", 2);
    Click(2);
    ExpectSelected("....x.", 1);
    EXPECT_EQ(list_.ListIndex(), 2);
}

TEST_F(JListMouse, ShiftAddsTheRowsFromWhereTheKeyWentDown) {
    Click(2);
    Hold(kShiftKey, 1);
    EXPECT_EQ(list_.Mouse().shiftAnchor, 2);
    Click(4);
    ExpectSelected("..xxx...", 3);
    Click(1);  // adds, does not replace
    ExpectSelected(".xxxx...", 4);
    bench_.Key(kShiftKey, 0, false);
    Click(6);
    ExpectSelected("......x.", 1);
}

TEST_F(JListMouse, ShiftThatGoesDownDuringAPressIsAnchoredAtItsRow) {
    Click(1);
    Over(3);
    bench_.Press();
    Hold(kShiftKey, 1);
    EXPECT_EQ(list_.Mouse().shiftAnchor, 3);
    bench_.Release();
    Click(6);
    ExpectSelected("...xxxx...", 4);
}

TEST_F(JListMouse, ShiftFromNoRowAddsAllRowsFromTheFirstOn) {
    bench_.windows.SetFocus(list_.HWnd());
    list_.ListIndex(-1);
    Hold(kShiftKey, 1);
    EXPECT_EQ(list_.Mouse().shiftAnchor, -1);
    Click(2);
    ExpectSelected("xxx...", 3);
}

TEST_F(JListMouse, ModifiersComeFromKeysOfTheListAlone) {
    Click(2);
    bench_.windows.SetFocus(0);
    Hold(kShiftKey, 1);  // nobody hears of it
    Click(4);
    ExpectSelected("....x...", 1);
}

TEST_F(JListMouse, ShiftAndCtrlTurnTheRowAndThenAddTheRange) {
    Click(2);
    Hold(kShiftKey, 3);
    Click(4);
    ExpectSelected("..xxx...", 3);
}

TEST_F(JListMouse, BelowTheLastRowAPressOnlyTellsOfItself) {
    list_.Clear();
    bench_.AddMany(3);
    Click(1);
    events_.clear();
    bench_.MoveTo(20, 100);
    bench_.Press();
    EXPECT_EQ(list_.Mouse().mode, 0);
    bench_.Release();
    ExpectSelected(".x.", 1);
    EXPECT_EQ(events_,
              (Events{"MouseMove 0 0 20 100", "MouseDown 1 0 20 100", "MouseUp 1 0 20 100"}));
}

TEST_F(JListMouse, TheRightButtonSelectsNothingAndDoesNotClick) {
    Over(3);
    bench_.Press(2);
    bench_.Release(2);
    ExpectSelected("......", 0);
    EXPECT_EQ(events_, (Events{"MouseMove 0 0 20 50", "MouseDown 2 0 20 50", "MouseUp 2 0 20 50"}));
    EXPECT_TRUE(list_.Mouse().rightDown);
    EXPECT_EQ(bench_.windows.GetFocus(), list_.HWnd());
}

TEST_F(JListMouse, TheMiddleButtonIsAPressThatOnlyTheLeftOneEnds) {
    Over(3);
    bench_.Press(4);
    ExpectSelected("...x..", 1);
    bench_.Release(4);
    EXPECT_EQ(list_.Mouse().mode, 1);
    EXPECT_EQ(events_.back(), "Click");
    Click(3);
    EXPECT_EQ(list_.Mouse().mode, 0);
}

TEST_F(JListMouse, AClickComesAfterTheRelease) {
    Over(3);
    events_.clear();
    bench_.Press();
    bench_.Release();
    EXPECT_EQ(events_, (Events{"MouseDown 1 0 20 50", "MouseUp 1 0 20 50", "Click"}));
}

TEST_F(JListMouse, ADoubleClickHasNoSecondPressAndNoSecondClick) {
    Over(3);
    events_.clear();
    for (int i = 0; i < 2; ++i) {
        bench_.Press();
        bench_.Release();
    }
    EXPECT_EQ(events_, (Events{"MouseDown 1 0 20 50", "MouseUp 1 0 20 50", "Click", "DblClick",
                               "MouseUp 1 0 20 50"}));
    EXPECT_EQ(list_.Mouse().mode, 0);
}

TEST_F(JListMouse, ARightDoubleClickCountsAndOneBesideTheRowsDoesNot) {
    Over(3);
    for (int i = 0; i < 2; ++i) {
        bench_.Press(2);
        bench_.Release(2);
    }
    EXPECT_EQ(events_[3], "DblClick");
    bench_.windows.Sleep(1000);
    bench_.MoveTo(275, 30);
    events_.clear();
    bench_.After(50, [&] { bench_.Release(); });
    bench_.Press();
    bench_.Press();
    bench_.Release();
    for (const std::string& event : events_) {
        EXPECT_EQ(event.find("Click"), std::string::npos) << event;
    }
}

TEST_F(JListMouse, AReleaseOverTheStripIsNoClick) {
    Over(3);
    bench_.Press();
    bench_.MoveTo(275, 50);
    bench_.Release();
    EXPECT_NE(events_.back(), "Click");
}

TEST_F(JListMouse, TheBandSelectsFromThePressToThePointer) {
    Over(2);
    bench_.Press();
    Over(5);
    ExpectSelected("..xxxx....", 4);
    EXPECT_EQ(list_.ListIndex(), 5);
    EXPECT_EQ(list_.Mouse().bandStart, 2);
    EXPECT_EQ(list_.Mouse().bandEnd, 5);
    Over(1);
    ExpectSelected(".xx.......", 2);
    bench_.MoveTo(30, 22);  // still row 1
    EXPECT_EQ(list_.Mouse().lastHover, 1);
    bench_.Release();
    Over(9);
    ExpectSelected(".xx.......", 2);
}

TEST_F(JListMouse, WithAModifierTheBandAddsAndCounts) {
    Click(8);
    Hold(kCtrlKey, 2);
    Over(2);
    bench_.Press();
    Over(4);
    ExpectSelected("..xxx...x.", 4);
    Over(3);
    ExpectSelected("..xxx...x.", 4);  // what it has left stays
}

TEST_F(JListMouse, BelowTheRowsOfAShortListTheBandEndsWithTheLast) {
    list_.Clear();
    bench_.AddMany(5);
    Over(1);
    bench_.Press();
    bench_.MoveTo(20, 150);
    ExpectSelected(".xxxx", 4);
    EXPECT_EQ(list_.ListIndex(), 4);
}

TEST_F(JListMouse, DragEnabledIsGoneWithTheNextPress) {
    list_.DragEnabled(true);
    EXPECT_TRUE(list_.DragEnabled());
    Over(2);
    bench_.Press();
    EXPECT_FALSE(list_.DragEnabled());
    Over(4);
    ExpectSelected("..xxx.", 3);
}

TEST_F(JListMouse, KeysWaitForTheReleaseButAreHeardOf) {
    Over(2);
    bench_.Press();
    events_.clear();
    Hold(platform::VK_DOWN, 0);
    EXPECT_EQ(list_.CaretIndex(), 2);
    EXPECT_EQ(events_, Events{"KeyDown 40 0"});
    bench_.Release();
    Hold(platform::VK_DOWN, 0);
    EXPECT_EQ(list_.CaretIndex(), 3);
}

TEST_F(JListMouse, MouseOverIndexJudgesTheLastPointForTheListAndTheArgumentForTheRow) {
    Over(0);
    EXPECT_EQ(list_.MouseOverIndex(0), 0);
    EXPECT_EQ(list_.MouseOverIndex(14.9F), 0);
    EXPECT_EQ(list_.MouseOverIndex(15), 1);
    EXPECT_EQ(list_.MouseOverIndex(179), 11);
    EXPECT_EQ(list_.MouseOverIndex(5000), 11);
    EXPECT_EQ(list_.MouseOverIndex(-50), 0);
    list_.DisplayFrom(7);
    EXPECT_EQ(list_.MouseOverIndex(15), 8);
    bench_.MoveTo(268, 20);  // the last column of the rows
    EXPECT_EQ(list_.MouseOverIndex(15), 8);
    bench_.MoveTo(269, 20);
    EXPECT_EQ(list_.MouseOverIndex(15), -1);
}

TEST_F(JListMouse, EachRowIsFoundByBothOfItsEnds) {
    for (Long rows = 1; rows <= 12; ++rows) {
        ListBench bench({281, rows * 15 + 1}, Unsorted());
        bench.AddMany(rows);
        bench.MoveTo(20, 0);
        for (Long row = 0; row < rows; ++row) {
            EXPECT_EQ(bench.list->MouseOverIndex(static_cast<float>(row * 15)), row) << rows;
            EXPECT_EQ(bench.list->MouseOverIndex(static_cast<float>(row * 15 + 14)), row) << rows;
        }
    }
}

TEST_F(JListMouse, ZonesAreRowsTrackAndThumbAndLastElsewhere) {
    EXPECT_EQ(list_.Thumb().rect, (platform::Rect{269, 0, 280, 71}));
    const auto zone = [&](Long x, Long y) {
        bench_.MoveTo(x, y);
        return list_.Mouse().zone;
    };
    EXPECT_EQ(zone(268, 180), 1);
    EXPECT_EQ(zone(269, 71), 3);  // the borders belong to the thumb
    EXPECT_EQ(zone(280, 72), 3);  // beside the strip, which ends at 279: as before
    EXPECT_EQ(zone(279, 72), 2);
    EXPECT_EQ(zone(280, 71), 3);
}

TEST_F(JListMouse, AListThatFitsHasRowsUpToItsLastColumn) {
    list_.Clear();
    bench_.AddMany(12);
    bench_.MoveTo(280, 180);
    EXPECT_EQ(list_.Mouse().zone, 1);
    EXPECT_EQ(list_.MouseOverIndex(5), 0);
}

TEST_F(JListMouse, EnterAndLeaveAreToldOnce) {
    events_.clear();
    list_.WM_MOUSEMOVE_Process(list_.HWnd());
    list_.WM_MOUSEMOVE_Process(list_.HWnd());
    EXPECT_TRUE(list_.Mouse().inside);
    list_.WM_MOUSELEAVE_Process();
    list_.WM_MOUSEMOVE_Process(list_.HWnd());
    EXPECT_EQ(events_, (Events{"MouseEnter", "MouseLeave", "MouseEnter"}));
}

TEST_F(JListMouse, CharactersAreOnlyToldOf) {
    Click(2);
    events_.clear();
    bench_.windows.Deliver(platform::TextTyped{u"x"});
    EXPECT_EQ(events_, Events{"KeyPress 120"});
    ExpectSelected("..x.", 1);
}

JListStored WithDrag() {
    JListStored stored = Unsorted();
    stored.dragEnabled = true;
    return stored;
}

class JListDrag : public JListMouse {
  protected:
    JListDrag() : JListMouse(WithDrag()) {}
};

TEST_F(JListDrag, TheStoredValueHoldsFromTheStart) {
    EXPECT_TRUE(list_.DragEnabled());
}

TEST_F(JListDrag, APressBesideTheRowsIsNone) {
    list_.Clear();
    bench_.AddMany(3);
    bench_.MoveTo(20, 100);
    bench_.Press();
    EXPECT_FALSE(list_.DragEnabled());
    bench_.Release();
    list_.DragEnabled(true);
    bench_.Press(2);
    EXPECT_FALSE(list_.DragEnabled());
    bench_.Release(2);
    EXPECT_FALSE(list_.DragEnabled());
}

TEST_F(JListDrag, TheStoredValueKeepsTheBandOff) {
    Over(2);
    bench_.Press();
    EXPECT_TRUE(list_.DragEnabled());
    Over(5);
    ExpectSelected("..x...", 1);
    bench_.Release();
    EXPECT_FALSE(list_.DragEnabled());
}

}  // namespace
}  // namespace sarnel

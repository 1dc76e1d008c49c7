// Windows themselves: places, the tree, showing, minimising, destroying, and what the driver hears.
#include "platform/windows/window_system.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "tests/unit/support/window_log.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;

// What a desktop is told of top-level windows.
class ListeningDriver : public HeadlessDriver {
  public:
    ListeningDriver() : HeadlessDriver(Clock::kVirtual) {}
    void CreateTopLevel(Handle w) override { Add("create", w); }
    void DestroyTopLevel(Handle w) override { Add("destroy", w); }
    void SetTopLevelVisible(Handle w, bool visible) override { Add(visible ? "show" : "hide", w); }
    void SetTopLevelRect(Handle w, const Rect& rect) override {
        Add("rect " + std::to_string(rect.left) + "," + std::to_string(rect.top), w);
    }
    void SetTopLevelTitle(Handle w, std::u16string_view title) override {
        Add("title of " + std::to_string(title.size()), w);
    }
    void SetTopLevelTopMost(Handle w, bool top) override { Add(top ? "topmost" : "normal", w); }
    void SetTopLevelMinimised(Handle w, bool min) override { Add(min ? "minimise" : "restore", w); }
    void ActivateTopLevel(Handle w) override { Add("activate", w); }

    Lines heard;

  private:
    void Add(const std::string& what, Handle w) { heard.push_back(what + " " + std::to_string(w)); }
};

class Windows : public ::testing::Test {
  protected:
    Handle Top(const std::string& name, const Rect& rect = {0, 0, 100, 100}) {
        return windows_.CreateWindow(0, rect, log_.Named(name));
    }
    Handle Child(Handle parent, const Rect& rect) {
        const Handle child = windows_.CreateWindow(parent, rect, {});
        windows_.ShowWindow(child, SW_SHOW);
        return child;
    }

    ListeningDriver driver_;
    WindowSystem windows_{driver_};
    support::WindowLog log_;
};

TEST_F(Windows, ANewWindowIsHiddenEnabledAndWhereItWasPut) {
    const Handle window = Top("w", {10, 20, 110, 70});
    EXPECT_TRUE(windows_.IsWindow(window));
    EXPECT_FALSE(windows_.IsVisible(window));
    EXPECT_TRUE(windows_.IsEnabled(window));
    EXPECT_FALSE(windows_.IsIconic(window));
    EXPECT_EQ(windows_.GetRect(window), (Rect{10, 20, 110, 70}));
    EXPECT_EQ(log_.Take(), Lines{});
}

TEST_F(Windows, AHandleIsNeverGivenOutTwice) {
    std::set<Handle> seen;
    for (int i = 0; i < 50; ++i) {
        const Handle window = Top("w");
        EXPECT_NE(window, 0);
        EXPECT_TRUE(seen.insert(window).second);
        windows_.DestroyWindow(window);
    }
}

TEST_F(Windows, AStaleHandleMakesEveryOperationDoNothing) {
    const Handle stale = Top("w");
    windows_.DestroyWindow(stale);
    log_.Take();
    driver_.heard.clear();
    for (const Handle none : {stale, Handle{0}, Handle{-5}, Handle{9999}}) {
        EXPECT_FALSE(windows_.IsWindow(none));
        windows_.DestroyWindow(none);
        windows_.SetWindowPos(none, HWND_TOPMOST, 1, 2, 3, 4, 0);
        windows_.BringToFront(none);
        windows_.ShowWindow(none, SW_SHOW);
        windows_.SetMinimised(none, true);
        windows_.EnableWindow(none, true);
        windows_.SetWindowText(none, u"text");
        windows_.SetForegroundWindow(none);
        windows_.PostMessage(none, 1, 2, 3);
        windows_.SetTimer(none, 1, 10, [&](Handle, Long) { log_.Add("timer"); });
        windows_.SetDropTarget(none, [](const std::vector<std::string>&) {});
        windows_.DropFiles(none, {"a"});
        windows_.SendCopyData(none, {0, "x"});
        EXPECT_EQ(windows_.SendMessage(none, 1, 2, 3), 0);
        EXPECT_EQ(windows_.SetWindowLong(none, GWL_STYLE, 5), 0);
        EXPECT_EQ(windows_.GetWindowLong(none, GWL_STYLE), 0);
        EXPECT_EQ(windows_.GetParent(none), 0);
        EXPECT_EQ(windows_.GetRect(none), Rect{});
        EXPECT_EQ(windows_.GetWindowText(none), u"");
        EXPECT_FALSE(windows_.IsVisible(none) || windows_.IsEnabled(none) ||
                     windows_.IsIconic(none) || windows_.IsTopMost(none));
        EXPECT_FALSE(windows_.SetWindowProc(none, log_.Named("x")));
        EXPECT_TRUE(windows_.Timers(none).empty());
    }
    windows_.Sleep(100);
    EXPECT_EQ(log_.Take(), Lines{});
    EXPECT_EQ(driver_.heard, Lines{});
}

TEST_F(Windows, TheDriverHearsOfTopLevelWindowsOnly) {
    const Handle top = Top("top", {5, 6, 100, 100});
    const Handle child = Child(top, {1, 2, 10, 10});
    windows_.SetWindowText(child, u"abc");
    windows_.SetWindowPos(child, HWND_TOPMOST, 3, 3, 3, 3, 0);
    windows_.SetMinimised(child, true);
    EXPECT_FALSE(windows_.IsIconic(child));
    windows_.SetWindowText(top, u"title");
    windows_.ShowWindow(top, SW_SHOW);
    windows_.ShowWindow(top, SW_SHOW);  // no change, no word
    windows_.SetWindowPos(top, HWND_TOPMOST, 7, 8, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    windows_.SetWindowPos(top, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    windows_.SetMinimised(top, true);
    windows_.SetForegroundWindow(child);
    windows_.ShowWindow(top, SW_HIDE);
    windows_.DestroyWindow(top);
    const std::string h = " " + std::to_string(top);
    EXPECT_EQ(driver_.heard, (Lines{"create" + h, "rect 5,6" + h, "title of 5" + h, "show" + h,
                                    "topmost" + h, "rect 7,8" + h, "normal" + h, "minimise" + h,
                                    "activate" + h, "hide" + h, "destroy" + h}));
}

TEST_F(Windows, SetWindowPosChangesWhatTheFlagsLeave) {
    const Handle w = Top("w", {10, 20, 110, 70});
    windows_.SetWindowPos(w, HWND_TOP, 1, 2, 30, 40, SWP_NOSIZE);
    EXPECT_EQ(windows_.GetRect(w), (Rect{1, 2, 101, 52}));
    windows_.SetWindowPos(w, HWND_TOP, 5, 6, 30, 40, SWP_NOMOVE);
    EXPECT_EQ(windows_.GetRect(w), (Rect{1, 2, 31, 42}));
    windows_.SetWindowPos(w, HWND_TOP, 5, 6, -3, -4, 0);
    EXPECT_EQ(windows_.GetRect(w), (Rect{5, 6, 5, 6}));
    windows_.SetWindowPos(w, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_FALSE(windows_.IsTopMost(w));
    windows_.SetWindowPos(w, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    EXPECT_TRUE(windows_.IsTopMost(w));
    windows_.SetWindowPos(w, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    EXPECT_TRUE(windows_.IsTopMost(w));
    windows_.SetWindowPos(w, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    EXPECT_FALSE(windows_.IsTopMost(w));
}

TEST_F(Windows, APlaceAtTheEndOfAllNumbersIsTaken) {
    constexpr Long kMost = std::numeric_limits<Long>::max();
    constexpr Long kLeast = std::numeric_limits<Long>::min();
    const Handle w = Top("w", {0, 0, 100, 50});
    const Handle child = Child(w, {10, 10, 20, 20});
    windows_.ShowWindow(w, SW_SHOW);
    for (const Point place : {Point{kMost, kMost}, Point{kLeast, kLeast}, Point{kMost, kLeast}}) {
        windows_.SetWindowPos(w, HWND_TOP, place.x, place.y, 0, 0, SWP_NOSIZE);
        EXPECT_EQ(windows_.WindowFromPoint({5, 5}), 0);
        windows_.GetWindowRect(child);
    }
    windows_.SetWindowPos(w, HWND_TOP, 0, 0, kMost, kMost, 0);
    EXPECT_EQ(windows_.WindowFromPoint({5, 5}), w);
}

TEST_F(Windows, GetWindowRectAddsUpTheParents) {
    const Handle top = Top("w", {100, 200, 300, 400});
    const Handle panel = Child(top, {10, 20, 110, 120});
    const Handle button = Child(panel, {1, 2, 11, 12});
    EXPECT_EQ(windows_.GetWindowRect(button), (Rect{111, 222, 121, 232}));
    EXPECT_EQ(windows_.GetWindowRect(top), (Rect{100, 200, 300, 400}));
    EXPECT_EQ(windows_.GetRect(button), (Rect{1, 2, 11, 12}));
    EXPECT_EQ(windows_.GetParent(button), panel);
    EXPECT_EQ(windows_.GetTopLevel(button), top);
    EXPECT_EQ(windows_.GetTopLevel(top), top);
    EXPECT_EQ(windows_.GetParent(top), 0);
}

TEST_F(Windows, TheFirstShowingSendsTheSizeOnce) {
    const Handle w = Top("w", {0, 0, 293, 277});
    windows_.SetWindowPos(w, HWND_TOP, 0, 0, 100, 50, 0);  // not shown yet: nothing is sent
    windows_.ShowWindow(w, SW_SHOWNORMAL);
    EXPECT_EQ(log_.Take(), (Lines{"w 24 1 0", "w 5 0 " + std::to_string(100 + 50 * 65536)}));
    windows_.ShowWindow(w, SW_SHOWNORMAL);
    windows_.ShowWindow(w, SW_HIDE);
    windows_.ShowWindow(w, SW_SHOW);
    EXPECT_EQ(log_.Take(), (Lines{"w 24 0 0", "w 24 1 0"}));
}

TEST_F(Windows, AShownWindowHearsOfEachChangeOfItsSize) {
    const Handle w = Top("w", {0, 0, 10, 10});
    windows_.ShowWindow(w, SW_SHOW);
    log_.Take();
    windows_.SetWindowPos(w, HWND_TOP, 50, 50, 10, 10, 0);  // moved only
    EXPECT_EQ(log_.Take(), Lines{});
    windows_.SetWindowPos(w, HWND_TOP, 50, 50, 11, 10, 0);
    EXPECT_EQ(log_.Take(), (Lines{"w 5 0 " + std::to_string(11 + 10 * 65536)}));
}

TEST_F(Windows, MinimisingAndRestoringSendOneSizeEach) {
    const Handle w = Top("w", {0, 0, 0, 0});
    windows_.ShowWindow(w, SW_SHOW);
    log_.Take();
    windows_.ShowWindow(w, SW_MINIMIZE);
    windows_.SetMinimised(w, true);
    EXPECT_TRUE(windows_.IsIconic(w));
    EXPECT_TRUE(windows_.IsVisible(w));
    EXPECT_EQ(log_.Take(), (Lines{"w 5 1 0"}));
    windows_.ShowWindow(w, SW_SHOW);  // shows it as it is
    EXPECT_TRUE(windows_.IsIconic(w));
    EXPECT_EQ(log_.Take(), Lines{});
    windows_.ShowWindow(w, SW_RESTORE);
    EXPECT_FALSE(windows_.IsIconic(w));
    EXPECT_EQ(log_.Take(), (Lines{"w 5 0 0"}));
    windows_.SetMinimised(w, true);
    windows_.ShowWindow(w, SW_HIDE);
    log_.Take();
    windows_.ShowWindow(w, SW_SHOWNORMAL);
    EXPECT_TRUE(windows_.IsVisible(w));
    EXPECT_FALSE(windows_.IsIconic(w));
    EXPECT_EQ(log_.Take(), (Lines{"w 24 1 0", "w 5 0 0"}));
}

TEST_F(Windows, WindowFromPointFindsTheDeepestVisibleOne) {
    const Handle top = Top("w", {100, 100, 200, 200});
    const Handle panel = Child(top, {10, 10, 50, 50});
    const Handle button = Child(panel, {5, 5, 15, 15});
    EXPECT_EQ(windows_.WindowFromPoint({120, 120}), 0);  // still hidden
    windows_.ShowWindow(top, SW_SHOW);
    EXPECT_EQ(windows_.WindowFromPoint({115, 115}), button);
    EXPECT_EQ(windows_.WindowFromPoint({124, 124}), button);
    EXPECT_EQ(windows_.WindowFromPoint({125, 125}), panel);  // edges are half-open
    EXPECT_EQ(windows_.WindowFromPoint({100, 100}), top);
    EXPECT_EQ(windows_.WindowFromPoint({200, 150}), 0);
    windows_.ShowWindow(button, SW_HIDE);
    EXPECT_EQ(windows_.WindowFromPoint({115, 115}), panel);
    windows_.ShowWindow(button, SW_SHOW);
    windows_.ShowWindow(panel, SW_HIDE);
    EXPECT_EQ(windows_.WindowFromPoint({115, 115}), top);
    windows_.SetMinimised(top, true);
    EXPECT_EQ(windows_.WindowFromPoint({115, 115}), 0);
}

TEST_F(Windows, TheLaterSiblingLiesAboveUntilAnotherIsBroughtToTheFront) {
    const Handle below = Top("below");
    const Handle above = Top("above");
    windows_.ShowWindow(below, SW_SHOW);
    windows_.ShowWindow(above, SW_SHOW);
    EXPECT_EQ(windows_.WindowFromPoint({5, 5}), above);
    windows_.SetForegroundWindow(below);
    EXPECT_EQ(windows_.WindowFromPoint({5, 5}), below);
    const Handle first = Child(below, {0, 0, 50, 50});
    const Handle second = Child(below, {0, 0, 50, 50});
    EXPECT_EQ(windows_.WindowFromPoint({5, 5}), second);
    windows_.BringToFront(first);
    EXPECT_EQ(windows_.WindowFromPoint({5, 5}), first);
}

TEST_F(Windows, SetWindowLongAnswersTheFormerValue) {
    const Handle w = Top("w");
    EXPECT_EQ(windows_.SetWindowLong(w, GWL_EXSTYLE, WS_EX_ACCEPTFILES), 0);
    EXPECT_EQ(windows_.SetWindowLong(w, GWL_EXSTYLE, 5), WS_EX_ACCEPTFILES);
    EXPECT_EQ(windows_.GetWindowLong(w, GWL_EXSTYLE), 5);
    EXPECT_EQ(windows_.GetWindowLong(w, GWL_STYLE), 0);
    EXPECT_EQ(windows_.SetWindowLong(w, -99, 5), 0);
    EXPECT_EQ(windows_.GetWindowLong(w, -99), 0);
}

TEST_F(Windows, DestroyingTellsTheWindowThenItsChildrenAndKillsTheirTimers) {
    const Handle top = Top("top");
    const Handle panel = windows_.CreateWindow(top, {}, log_.Named("panel"));
    const Handle button = windows_.CreateWindow(panel, {}, log_.Named("button"));
    const Handle other = Top("other");
    for (const Handle w : {top, panel, button}) {
        windows_.SetTimer(w, 1, 10, [&](Handle, Long) { log_.Add("timer"); });
        windows_.PostMessage(w, 100, 0, 0);
    }
    windows_.SetFocus(button);
    log_.Take();
    windows_.DestroyWindow(top);
    EXPECT_EQ(log_.Take(), (Lines{"top 2 0 0", "panel 2 0 0", "button 2 0 0"}));
    EXPECT_EQ(windows_.GetFocus(), 0);
    EXPECT_FALSE(windows_.IsWindow(panel) || windows_.IsWindow(button));
    EXPECT_TRUE(windows_.IsWindow(other));
    windows_.Sleep(50);
    EXPECT_EQ(log_.Take(), Lines{});
}

TEST_F(Windows, AProcedureMayDestroyItsOwnWindow) {
    Handle w = 0;
    const std::string text(100, 'x');  // on the heap, so that a dead procedure is noticed
    w = windows_.CreateWindow(0, {}, [&, text](const Message& message) -> Long {
        if (message.id == WM_CLOSE) {
            windows_.DestroyWindow(w);
            return static_cast<Long>(text.size());
        }
        return 0;
    });
    EXPECT_EQ(windows_.SendMessage(w, WM_CLOSE, 0, 0), 100);
    EXPECT_FALSE(windows_.IsWindow(w));
}

TEST_F(Windows, DestroyingAgainWhileBeingDestroyedEndsOnce) {
    int told = 0;
    Handle parent = 0;
    Handle child = 0;
    const auto destroyAll = [&](const Message& message) -> Long {
        told += message.id == WM_DESTROY ? 1 : 0;
        windows_.DestroyWindow(message.window);
        windows_.DestroyWindow(child);
        windows_.DestroyWindow(parent);
        return 0;
    };
    parent = windows_.CreateWindow(0, {}, destroyAll);
    child = windows_.CreateWindow(parent, {}, destroyAll);
    windows_.DestroyWindow(parent);
    EXPECT_EQ(told, 2);
    EXPECT_FALSE(windows_.IsWindow(parent) || windows_.IsWindow(child));
}

}  // namespace
}  // namespace platform

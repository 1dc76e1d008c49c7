// What travels between windows: sent and posted messages, subclassing, focus, drops, copied data
// and what a desktop reports.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"
#include "tests/unit/support/window_log.h"

namespace platform {
namespace {

using Lines = std::vector<std::string>;

class WindowMessages : public ::testing::Test {
  protected:
    Handle Top(const std::string& name, Long result = 0) {
        const Handle window = windows_.CreateWindow(0, {0, 0, 100, 100}, log_.Named(name, result));
        windows_.ShowWindow(window, SW_SHOW);
        log_.Take();
        return window;
    }
    Handle Child(Handle parent, const std::string& name, const Rect& rect = {10, 10, 50, 50}) {
        const Handle window = windows_.CreateWindow(parent, rect, log_.Named(name));
        windows_.ShowWindow(window, SW_SHOW);
        log_.Take();
        return window;
    }
    static std::string Number(Long number) { return std::to_string(number); }

    HeadlessDriver driver_{HeadlessDriver::Clock::kVirtual};
    WindowSystem windows_{driver_};
    support::WindowLog log_;
};

TEST_F(WindowMessages, ASentMessageIsHandledAtOnceAndAnswered) {
    const Handle w = Top("w", 42);
    EXPECT_EQ(windows_.SendMessage(w, 1, 2, 3), 42);
    EXPECT_EQ(log_.Take(), (Lines{"w 1 2 3"}));
}

TEST_F(WindowMessages, PostedMessagesWaitForThePumpAndKeepTheirOrder) {
    const Handle a = Top("a");
    const Handle b = Top("b");
    windows_.PostMessage(a, 1, 0, 0);
    windows_.PostMessage(b, 2, 0, 0);
    windows_.PostMessage(a, 3, 0, 0);
    windows_.SendMessage(a, 4, 0, 0);
    EXPECT_EQ(log_.Take(), (Lines{"a 4 0 0"}));
    windows_.DoEvents();
    EXPECT_EQ(log_.Take(), (Lines{"a 1 0 0", "b 2 0 0", "a 3 0 0"}));
    windows_.DoEvents();
    EXPECT_EQ(log_.Take(), Lines{});
}

TEST_F(WindowMessages, AHandlerThatThrowsLeavesNoRecordBehind) {
    Long named = 0;
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        if (message.id == WM_COPYDATA || message.id == WM_DROPFILES) {
            named = message.id == WM_COPYDATA ? message.lParam : message.wParam;
            throw std::runtime_error("no");
        }
        return 0;
    });
    windows_.SetWindowLong(w, GWL_EXSTYLE, WS_EX_ACCEPTFILES);
    EXPECT_THROW(windows_.SendCopyData(w, {5, "text"}), std::runtime_error);
    EXPECT_NE(named, 0);
    EXPECT_EQ(windows_.CopyData(named), nullptr);
    named = 0;
    EXPECT_THROW(windows_.DropFiles(w, {"/a"}), std::runtime_error);
    EXPECT_NE(named, 0);
    EXPECT_EQ(windows_.DragQueryFileCount(named), 0);
}

TEST_F(WindowMessages, WhatIsPostedDuringThePumpWaitsForTheNext) {
    int handled = 0;
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        ++handled;
        windows_.PostMessage(message.window, message.id, 0, 0);  // for ever
        return 0;
    });
    windows_.PostMessage(w, 1, 0, 0);
    windows_.DoEvents();
    EXPECT_EQ(handled, 1);
    windows_.DoEvents();
    EXPECT_EQ(handled, 2);
}

TEST_F(WindowMessages, APostedMessageDiesWithItsWindowAndNoOther) {
    const Handle w = Top("w");
    const Handle other = Top("other");
    windows_.PostMessage(w, 1, 0, 0);
    windows_.PostMessage(other, 2, 0, 0);
    windows_.DestroyWindow(w);
    log_.Take();
    windows_.DoEvents();
    EXPECT_EQ(log_.Take(), (Lines{"other 2 0 0"}));
}

TEST_F(WindowMessages, TheProcedureInFrontSeesAMessageFirstAndPassesItOn) {
    const Handle w = Top("own", 7);
    WindowProc former;
    former = windows_.SetWindowProc(w, [&](const Message& message) -> Long {
        log_.Add("front");
        return WindowSystem::CallWindowProc(former, message) + 100;
    });
    EXPECT_EQ(windows_.SendMessage(w, 1, 0, 0), 107);
    EXPECT_EQ(log_.Take(), (Lines{"front", "own 1 0 0"}));
    windows_.SetWindowProc(w, former);
    EXPECT_EQ(windows_.SendMessage(w, 2, 0, 0), 7);
    EXPECT_EQ(log_.Take(), (Lines{"own 2 0 0"}));
}

TEST_F(WindowMessages, GetWindowProcIsWhatStandsInFrontNow) {
    const Handle w = Top("own", 7);
    windows_.SetWindowProc(w, log_.Named("front", 8));
    EXPECT_EQ(WindowSystem::CallWindowProc(windows_.GetWindowProc(w), {w, 1, 0, 0}), 8);
    EXPECT_EQ(WindowSystem::CallWindowProc({}, {w, 1, 0, 0}), 0);
    windows_.SetWindowProc(w, {});
    EXPECT_EQ(windows_.SendMessage(w, 1, 0, 0), 0);
}

TEST_F(WindowMessages, AProcedureMayTakeItselfOutWhileItRuns) {
    const Handle w = Top("own");
    const WindowProc former = windows_.GetWindowProc(w);
    const std::string text(100, 'x');
    windows_.SetWindowProc(w, [&, text](const Message& message) -> Long {
        windows_.SetWindowProc(message.window, former);
        return static_cast<Long>(text.size());
    });
    EXPECT_EQ(windows_.SendMessage(w, 1, 0, 0), 100);
    EXPECT_EQ(windows_.SendMessage(w, 2, 0, 0), 0);
    EXPECT_EQ(log_.Take(), (Lines{"own 2 0 0"}));
}

TEST_F(WindowMessages, FocusTellsTheLoserThenTheWinnerOfEachOther) {
    const Handle a = Top("a");
    const Handle b = Child(a, "b");
    windows_.SetFocus(a);
    EXPECT_EQ(log_.Take(), (Lines{"a 7 0 0"}));
    windows_.SetFocus(b);
    EXPECT_EQ(log_.Take(), (Lines{"a 8 " + Number(b) + " 0", "b 7 " + Number(a) + " 0"}));
    windows_.SetFocus(b);  // has it already
    EXPECT_EQ(log_.Take(), Lines{});
    windows_.SetFocus(9999);  // no window: stays where it is
    EXPECT_EQ(windows_.GetFocus(), b);
    windows_.SetFocus(0);
    EXPECT_EQ(windows_.GetFocus(), 0);
    EXPECT_EQ(log_.Take(), (Lines{"b 8 0 0"}));
}

TEST_F(WindowMessages, WhoeverTakesTheFocusWhileItMovesHasIt) {
    const Handle b = Top("b");
    const Handle c = Top("c");
    const Handle a = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        if (message.id == WM_KILLFOCUS) {
            windows_.SetFocus(c);
        }
        return 0;
    });
    windows_.SetFocus(a);
    windows_.SetFocus(b);
    EXPECT_EQ(windows_.GetFocus(), c);
    EXPECT_EQ(log_.Take(), (Lines{"b 8 " + Number(c) + " 0", "c 7 " + Number(b) + " 0"}));
}

TEST_F(WindowMessages, AHiddenWindowKeepsTheFocus) {
    const Handle w = Top("w");
    windows_.SetFocus(w);
    windows_.ShowWindow(w, SW_HIDE);
    EXPECT_EQ(windows_.GetFocus(), w);
}

TEST_F(WindowMessages, CopiedDataIsThereWhileTheMessageIsHandledOnly) {
    Long named = 0;
    std::string seen;
    const std::string bytes("a\0\xFF", 3);
    const Handle w = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        if (message.id == WM_COPYDATA) {
            named = message.lParam;
            seen = windows_.CopyData(named)->bytes;
            EXPECT_EQ(windows_.CopyData(named)->data, 5);
            EXPECT_EQ(windows_.CopyData(named + 1), nullptr);
        }
        return 0;
    });
    windows_.SendCopyData(w, {5, bytes});
    EXPECT_EQ(seen, bytes);
    EXPECT_EQ(windows_.CopyData(named), nullptr);
}

TEST_F(WindowMessages, CopiedDataOutlivesAnotherHandOverInside) {
    std::vector<std::string> seen;
    Handle w = 0;
    w = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        if (message.id == WM_COPYDATA) {
            const CopyDataRecord* record = windows_.CopyData(message.lParam);
            if (record->bytes == "outer") {
                windows_.SendCopyData(w, {0, "inner"});
            }
            seen.push_back(record->bytes);
        }
        return 0;
    });
    windows_.SendCopyData(w, {0, "outer"});
    EXPECT_EQ(seen, (Lines{"inner", "outer"}));
}

TEST_F(WindowMessages, ADropGoesToTheNearestWindowThatTakesDrops) {
    const Handle top = Top("top");
    const Handle list = Child(top, "list");
    const Handle row = Child(list, "row", {0, 0, 10, 10});
    windows_.SetWindowLong(top, GWL_EXSTYLE, WS_EX_ACCEPTFILES);
    Lines taken;
    windows_.SetDropTarget(list, [&](const Lines& paths) { taken = paths; });
    windows_.DropFiles(list, {"/b", "/a"});
    EXPECT_EQ(taken, (Lines{"/b", "/a"}));
    windows_.DropFiles(row, {"/c"});
    EXPECT_EQ(taken, (Lines{"/c"}));
    EXPECT_EQ(log_.Take(), Lines{});
}

TEST_F(WindowMessages, ADropThatNobodyTakesGoesToAWindowThatAcceptsFiles) {
    Lines names;
    Long count = -1;
    Long named = 0;
    const Handle top = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        if (message.id == WM_DROPFILES) {
            named = message.wParam;
            count = windows_.DragQueryFileCount(named);
            names = {windows_.DragQueryFile(named, 0, 254), windows_.DragQueryFile(named, 1, 254),
                     windows_.DragQueryFile(named, 2, 254), windows_.DragQueryFile(named, -1, 254)};
        }
        return 0;
    });
    const Handle child = Child(top, "child");
    const std::string longName = "/" + std::string(300, 'n');
    windows_.DropFiles(child, {"/x", longName});
    EXPECT_EQ(count, -1);  // does not accept files yet
    windows_.SetWindowLong(top, GWL_EXSTYLE, WS_EX_ACCEPTFILES);
    windows_.DropFiles(child, {"/x", longName});
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names, (Lines{"/x", longName.substr(0, 254), "", ""}));
    EXPECT_EQ(windows_.DragQueryFileCount(named), 0);
    EXPECT_EQ(windows_.DragQueryFile(named, 0, 254), "");
}

TEST_F(WindowMessages, AFinishedDropIsGone) {
    Long countAfter = -1;
    const Handle top = windows_.CreateWindow(0, {}, [&](const Message& message) -> Long {
        if (message.id == WM_DROPFILES) {
            windows_.DragFinish(message.wParam);
            windows_.DragFinish(message.wParam);
            countAfter = windows_.DragQueryFileCount(message.wParam);
        }
        return 0;
    });
    windows_.SetWindowLong(top, GWL_EXSTYLE, WS_EX_ACCEPTFILES);
    windows_.DropFiles(top, {"/x"});
    EXPECT_EQ(countAfter, 0);
}

TEST_F(WindowMessages, ADesktopsDropReachesTheWindowUnderThePoint) {
    const Handle top = Top("top");
    const Handle child = Child(top, "child", {10, 10, 50, 50});
    Lines heard;
    windows_.SetDropTarget(top, [&](const Lines&) { heard.emplace_back("top"); });
    windows_.SetDropTarget(child, [&](const Lines&) { heard.emplace_back("child"); });
    driver_.Push(FilesDropped{top, {20, 20}, {"/x"}});
    driver_.Push(FilesDropped{top, {5, 5}, {"/x"}});
    driver_.Push(FilesDropped{top, {900, 700}, {"/x"}});  // no window there: the one that it names
    windows_.DoEvents();
    EXPECT_EQ(heard, (Lines{"child", "top", "top"}));
}

TEST_F(WindowMessages, ADesktopsCloseIsARequestOnly) {
    const Handle w = Top("w");
    driver_.Push(CloseRequested{w});
    windows_.DoEvents();
    EXPECT_EQ(log_.Take(), (Lines{"w 16 0 0"}));
    EXPECT_TRUE(windows_.IsWindow(w));
}

TEST_F(WindowMessages, ADesktopMinimisesAndRestores) {
    const Handle w = Top("w");
    const std::string size = Number(100 + 100 * 65536);
    driver_.Push(MinimisedByDesktop{w});
    driver_.Push(MinimisedByDesktop{w});
    windows_.DoEvents();
    EXPECT_TRUE(windows_.IsIconic(w));
    EXPECT_EQ(log_.Take(), (Lines{"w 5 1 " + size}));
    driver_.Push(RestoredByDesktop{w});
    windows_.DoEvents();
    EXPECT_FALSE(windows_.IsIconic(w));
    EXPECT_EQ(log_.Take(), (Lines{"w 5 0 " + size}));
}

TEST_F(WindowMessages, AChangeOfTheWorkAreaReachesEveryTopLevelWindow) {
    const Handle a = Top("a");
    Child(a, "child");
    Top("b");
    driver_.SetWorkArea({0, 20, 1024, 740});
    windows_.DoEvents();
    EXPECT_EQ(log_.Take(), (Lines{"a 26 47 0", "b 26 47 0"}));
    EXPECT_EQ(windows_.WorkArea(), (Rect{0, 20, 1024, 740}));
}

TEST_F(WindowMessages, AKeyGoesDownAndUpWhereTheFocusIs) {
    const Handle a = Top("a");
    const Handle child = Child(a, "child");
    driver_.PushKey(90, 2);  // nobody has the focus
    windows_.DoEvents();
    EXPECT_EQ(log_.Take(), Lines{});
    windows_.SetFocus(child);
    log_.Take();
    driver_.PushKey(90, 2);
    windows_.DoEvents();
    EXPECT_EQ(log_.Take(), (Lines{"child 256 90 2", "child 257 90 2"}));
}

}  // namespace
}  // namespace platform

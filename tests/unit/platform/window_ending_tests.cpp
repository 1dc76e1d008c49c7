// Windows that end inside an operation on them which somebody calls outside of any message: nothing
// but the operation itself keeps what it goes on with.
#include <gtest/gtest.h>

#include <functional>
#include <list>
#include <set>
#include <string>
#include <vector>

#include "platform/windows/window_system.h"
#include "tests/unit/support/screen_driver.h"

namespace platform {
namespace {

/// Knows which top-level windows there are.
class TopLevelsDriver : public support::ScreenDriver {
  public:
    void CreateTopLevel(Handle window) override { topLevels.insert(window); }
    void DestroyTopLevel(Handle window) override { topLevels.erase(window); }
    void ShowPicture(Handle window, const Surface& picture,
                     std::span<const Rect> changed) override {
        EXPECT_TRUE(topLevels.contains(window));
        ScreenDriver::ShowPicture(window, picture, changed);
    }

    std::set<Handle> topLevels;
};

enum class Ends { kItself, kParent, kAll };

// A window in a panel in a top-level window, and a top-level window that was never shown. One
// message, once armed, ends windows.
class Desk {
  public:
    explicit Desk(Ends ends) : ends_(ends) {
        top = Window(0, {0, 0, 30, 30});
        panel = Window(top, {2, 2, 28, 28});
        child = Window(panel, {2, 2, 20, 20});
        late = Window(0, {50, 50, 60, 60});
        windows.ShowWindow(top, SW_SHOWNORMAL);
        windows.SetDropTarget(child, [this](const auto&) { End(child); });
        windows.SetWindowLong(top, GWL_EXSTYLE, WS_EX_ACCEPTFILES);
        windows.DoEvents();
    }
    void Arm(Long message) { deadly_ = message; }
    void End(Handle window) {
        ended = true;
        deadly_ = 0;
        const Handle parent = windows.GetParent(window);
        for (const Handle doomed : ends_ == Ends::kItself ? std::vector{window}
                                   : ends_ == Ends::kParent
                                       ? std::vector{parent != 0 ? parent : window}
                                       : std::vector{top, late}) {
            windows.DestroyWindow(doomed);
            EXPECT_FALSE(windows.IsWindow(doomed) && !windows.IsDispatching());
        }
    }
    // Whatever goes through all windows finds none that is gone.
    void LookAround() {
        windows.DoEvents();
        EXPECT_FALSE(windows.IsDispatching());
        for (const Handle window : {windows.GetFocus(), windows.GetCapture()}) {
            EXPECT_TRUE(window == 0 || windows.IsWindow(window));
        }
        std::set<Handle> topLevels;
        for (const Handle window : {top, late}) {
            if (windows.IsWindow(window)) {
                topLevels.insert(window);
            }
        }
        EXPECT_EQ(driver.topLevels, topLevels);
        for (const Point at : {Point{3, 3}, Point{13, 13}, Point{25, 25}}) {
            const Handle hit = windows.WindowFromPoint(at);
            EXPECT_TRUE(hit == 0 || windows.IsWindow(hit));
            windows.Deliver(PointerMoved{at});
            windows.Deliver(ButtonChanged{at, kLeftButton, false});
        }
        windows.Compose(top);
        windows.Compose(late);
        windows.Sleep(100);
    }

    TopLevelsDriver driver;
    WindowSystem windows{driver};
    bool ended = false;
    Handle top = 0;
    Handle panel = 0;
    Handle child = 0;
    Handle late = 0;

  private:
    Handle Window(Handle parent, const Rect& rect) {
        const Handle window =
            windows.CreateWindow(parent, rect, [this](const Message& message) -> Long {
                if (message.id == deadly_) {
                    End(message.window);
                }
                return 0;
            });
        windows.SetFace(window, &faces_.emplace_back(Size{rect.Width(), rect.Height()}));
        if (parent != 0) {
            windows.ShowWindow(window, SW_SHOW);
        }
        return window;
    }

    std::list<Surface> faces_;
    Ends ends_;
    Long deadly_ = 0;
};

struct Operation {
    const char* what;
    Long deadly;
    std::function<void(Desk& desk)> before;
    std::function<void(Desk& desk)> run;
};

void EndEachWay(const std::vector<Operation>& operations) {
    for (const Operation& operation : operations) {
        for (const Ends ends : {Ends::kItself, Ends::kParent, Ends::kAll}) {
            SCOPED_TRACE(std::string(operation.what) + ", message " +
                         std::to_string(operation.deadly) + ", ends " +
                         std::to_string(static_cast<int>(ends)));
            Desk desk(ends);
            operation.before(desk);
            desk.Arm(operation.deadly);
            operation.run(desk);
            EXPECT_TRUE(desk.ended);
            desk.LookAround();
        }
    }
}

void Nothing(Desk& /*desk*/) {}

std::function<void(Desk&)> Delivers(const DriverEvent& event) {
    return [event](Desk& desk) { desk.windows.Deliver(event); };
}

TEST(WindowEnding, WhileItIsPlacedShownMinimisedOrDestroyed) {
    const auto place = [](Desk& d) { d.windows.SetWindowPos(d.child, HWND_TOP, 1, 1, 7, 7, 0); };
    const auto show = [](Desk& d) { d.windows.ShowWindow(d.late, SW_SHOWNORMAL); };
    const auto minimise = [](Desk& d) { d.windows.ShowWindow(d.late, SW_MINIMIZE); };
    EndEachWay({
        {"placed", WM_MOVE, Nothing, place},
        {"placed", WM_SIZE, Nothing, place},
        {"placed", WM_SIZE, Nothing,
         [](Desk& d) { d.windows.SetWindowPos(d.top, HWND_TOPMOST, 1, 1, 7, 7, 0); }},
        {"hidden", WM_SHOWWINDOW, Nothing, [](Desk& d) { d.windows.ShowWindow(d.child, SW_HIDE); }},
        {"shown", WM_SHOWWINDOW, Nothing, show},
        {"shown", WM_SIZE, Nothing, show},
        {"minimised", WM_SIZE, Nothing, minimise},
        {"minimised", WM_SIZE, Nothing, [](Desk& d) { d.windows.SetMinimised(d.top, true); }},
        {"restored", WM_SHOWWINDOW, minimise, show},
        {"restored", WM_SIZE, minimise, show},
        {"destroyed", WM_DESTROY, Nothing, [](Desk& d) { d.windows.DestroyWindow(d.child); }},
        {"destroyed", WM_DESTROY, Nothing, [](Desk& d) { d.windows.DestroyWindow(d.panel); }},
        {"destroyed", WM_DESTROY, Nothing, [](Desk& d) { d.windows.DestroyWindow(d.top); }},
    });
}

TEST(WindowEnding, WhileTheFocusComesOrGoes) {
    const auto come = [](Desk& d) { d.windows.SetFocus(d.child); };
    const auto go = [](Desk& d) { d.windows.SetFocus(d.late); };
    const auto write = [](Desk& d) {
        d.windows.SetTextInput(d.child, Rect{0, 0, 1, 5});
        d.windows.SetFocus(d.child);
        d.windows.Deliver(TextComposed{u"ab", 1});
    };
    EndEachWay({
        {"gets the focus", WM_SETFOCUS, Nothing, come},
        {"loses the focus", WM_KILLFOCUS, come, go},
        {"gets the focus from another", WM_KILLFOCUS, go, come},
        {"loses what is composed", WM_IME_COMPOSITION, write, go},
        {"gets what was composed", WM_CHAR, write, go},
        {"gets what was composed", WM_CHAR, write, [](Desk& d) { d.windows.EndComposition(); }},
        {"is hidden while it composes", WM_IME_COMPOSITION, write,
         [](Desk& d) {
             d.windows.SetTextInput(d.child, std::nullopt);
             d.windows.UpdateScreen();
         }},
    });
}

TEST(WindowEnding, WhileInputArrives) {
    constexpr Point kAt{13, 13};
    const auto focus = [](Desk& d) { d.windows.SetFocus(d.child); };
    const auto press = Delivers(ButtonChanged{kAt});
    const auto release = Delivers(ButtonChanged{kAt, kLeftButton, false});
    const auto track = [=](Desk& d) {
        d.windows.Deliver(PointerMoved{kAt});
        d.windows.TrackMouseLeave(d.child);
    };
    const auto click = [=](Desk& d) {
        press(d);
        release(d);
    };
    EndEachWay({
        {"pointer", WM_MOUSEMOVE, Nothing, Delivers(PointerMoved{kAt})},
        {"held pointer", WM_MOUSEMOVE, press, Delivers(PointerMoved{{300, 300}})},
        {"pointer goes elsewhere", WM_MOUSELEAVE, track, Delivers(PointerMoved{{1, 1}})},
        {"pointer leaves", WM_MOUSELEAVE, track, Delivers(PointerLeft{})},
        {"press", WM_LBUTTONDOWN, Nothing, press},
        {"release", WM_LBUTTONUP, press, release},
        {"double click", WM_LBUTTONDBLCLK, click, press},
        {"wheel", WM_MOUSEWHEEL, Nothing, Delivers(WheelTurned{kAt, 3})},
        {"key", WM_KEYDOWN, focus, Delivers(KeyChanged{'A'})},
        {"key up", WM_KEYUP, focus, Delivers(KeyChanged{'A', 0, false})},
        {"text", WM_CHAR, focus, Delivers(TextTyped{u"abc"})},
        {"composed text", WM_IME_COMPOSITION,
         [=](Desk& d) {
             d.windows.SetTextInput(d.child, Rect{0, 0, 1, 5});
             focus(d);
         },
         Delivers(TextComposed{u"ab", 1})},
    });
}

TEST(WindowEnding, WhileADesktopASecondStartOrTimeHasItsWay) {
    const auto dropped = [](Point at) {
        return [at](Desk& d) { d.windows.Deliver(FilesDropped{d.top, at, {"a", "b"}}); };
    };
    const auto timer = [](Desk& d) {
        d.windows.SetTimer(d.child, 1, 10, [&d](Handle window, Long) { d.End(window); });
    };
    const auto wait = [](Desk& d) { d.windows.Sleep(25); };
    EndEachWay({
        {"close", WM_CLOSE, Nothing, [](Desk& d) { d.windows.Deliver(CloseRequested{d.top}); }},
        {"minimised", WM_SIZE, Nothing,
         [](Desk& d) { d.windows.Deliver(MinimisedByDesktop{d.top}); }},
        {"work area", WM_SETTINGCHANGE, Nothing, Delivers(WorkAreaChanged{})},
        {"density", WM_DISPLAYCHANGE, Nothing, Delivers(DensityChanged{})},
        {"drop on a target", 0, Nothing, dropped({13, 13})},
        {"drop elsewhere", WM_DROPFILES, Nothing, dropped({1, 1})},
        {"drop by a host", 0, Nothing, [](Desk& d) { d.windows.DropFiles(d.child, {"a"}); }},
        {"drop by a host", WM_DROPFILES, Nothing,
         [](Desk& d) { d.windows.DropFiles(d.panel, {"a"}); }},
        {"copied data", WM_COPYDATA, Nothing,
         [](Desk& d) {
             d.windows.SendCopyData(d.top, {0, "line"});
         }},
        {"posted", 100,
         [](Desk& d) {
             d.windows.PostMessage(d.child, 100, 0, 0);
             d.windows.PostMessage(d.child, 100, 0, 0);
         },
         [](Desk& d) { d.windows.DoEvents(); }},
        {"timer", 0, timer, wait},
        {"scheduled call", 0, [](Desk& d) { d.windows.Schedule(5, [&d] { d.End(d.child); }); },
         wait},
    });
}

class WindowEnd : public ::testing::Test {
  protected:
    support::ScreenDriver driver_;
    WindowSystem windows_{driver_};
};

TEST_F(WindowEnd, IsThatOfAChildMadeInIt) {
    const Handle parent = windows_.CreateWindow(0, {0, 0, 10, 10}, {});
    Handle heir = 0;
    windows_.CreateWindow(parent, {}, [&](const Message& message) -> Long {
        if (message.id == WM_DESTROY) {
            heir = windows_.CreateWindow(parent, {0, 0, 5, 5}, {});
        }
        return 0;
    });
    windows_.DestroyWindow(parent);
    EXPECT_NE(heir, 0);
    EXPECT_FALSE(windows_.IsWindow(heir));
}

TEST_F(WindowEnd, LeavesAChildThatIsStillEndingInNoList) {
    const Handle parent = windows_.CreateWindow(0, {0, 0, 10, 10}, {});
    windows_.ShowWindow(parent, SW_SHOW);
    Handle hit = -1;
    const Handle child = windows_.CreateWindow(parent, {0, 0, 5, 5}, [&](const Message& message) {
        if (message.id == WM_DESTROY) {
            windows_.DestroyWindow(parent);
            windows_.BringToFront(message.window);
            windows_.SetWindowPos(message.window, HWND_TOP, 1, 1, 5, 5, 0);
            hit = windows_.WindowFromPoint({2, 2});
        }
        return 0;
    });
    windows_.ShowWindow(child, SW_SHOW);
    windows_.DestroyWindow(child);
    EXPECT_EQ(hit, 0);
    EXPECT_FALSE(windows_.IsWindow(parent) || windows_.IsWindow(child));
}

TEST_F(WindowEnd, IsToldOnceOfEachWindowChildrenFirst) {
    std::vector<Handle> gone;
    windows_.ObserveDestroyed([&](Handle window) { gone.push_back(window); });
    const Handle parent = windows_.CreateWindow(0, {}, {});
    const Handle child = windows_.CreateWindow(parent, {}, {});
    const Handle other = windows_.CreateWindow(0, {}, {});
    windows_.DestroyWindow(parent);
    windows_.DestroyWindow(parent);
    EXPECT_EQ(gone, (std::vector{child, parent}));
    windows_.ObserveDestroyed({});
    windows_.DestroyWindow(other);
    EXPECT_EQ(gone.size(), 2U);
}

}  // namespace
}  // namespace platform

// The host ends the run inside its answer to what an event or a timer has made the component ask.
// The scroll timer is not among them: it asks nothing.
#include <gtest/gtest.h>

#include "core/mAmbrisor.h"
#include "menus/commandmenu.h"
#include "platform/base/keys.h"
#include "playback/mPlayback.h"
#include "playlist/media.h"
#include "tests/unit/support/reentry.h"

namespace sarnel {
namespace {

using namespace platform;
using namespace support;

std::function<void(World&)> Sent(Long id, Long wParam = 0, Long lParam = 0) {
    return [=](World& world) { world.Message(id, wParam, lParam); };
}

std::function<void(World&)> Pushed(std::function<DriverEvent(World&)> event) {
    return [event](World& world) {
        world.driver.Push(event(world));
        world.windows.DoEvents();
    };
}

void EndedTick(World& world) {
    world.host.playing = false;
    Tick(world);
}

void WithManualAdvance(World& world) {
    world.State().ManualAdvance = true;
    Playing(world);
}

void DropOnList(World& world) {
    world.windows.DropFiles(world.List().HWnd(), {world.folder.Path("x.mp3"), world.folder.Path()});
}

void DropOnWindow(World& world) {
    world.windows.DropFiles(world.Window(), {world.folder.Path("x.mp3"), "/y.mp3"});
}

// A tick in the midst of the drag.
void Drag(World& world) {
    Pointer pointer(world, world.Main(), {2, 2});
    pointer.Press();
    pointer.MoveTo({40, 30}, 20);
    pointer.MoveTo({60, 50}, 80);
    pointer.Release(1, 100);
    pointer.Do();
    world.Advance(120);
}

void RightPress(World& world) {
    ChooseLater(world, u"", 120);
    Pointer pointer(world, world.Main(), {2, 2});
    pointer.Press(2);
    pointer.Release(2);
    pointer.Do();
}

std::function<void(World&)> WheelOver(std::function<Widget&(World&)> find) {
    return [find](World& world) {
        const Rect rect = world.windows.GetWindowRect(find(world).HWnd());
        const Point at{rect.left + rect.Width() / 2, rect.top + rect.Height() / 2};
        world.driver.MovePointer(at);
        world.driver.Push(WheelTurned{at, 2});
        world.driver.Push(WheelTurned{at, -3});
        world.windows.DoEvents();
    };
}

void Minimised(World& world) {
    Playing(world);
    SetMinimized(true);
}

void InTheTray(World& world) {
    world.folder.Write(World::kSettings, "[Memory]\r\nHideInSystray=True\r\n");
    Playing(world);
}

std::vector<Way> TimerWays() {
    return {
        {"Tick", Playing, Tick},
        {"TickAtTheEndOfAStream", Playing, EndedTick},
        {"TickAtTheEndOfTheList", AtTheEnd, EndedTick},
        {"TickWithManualAdvance", WithManualAdvance, EndedTick},
        {"TickAfterASuspension",
         [](World& world) {
             Playing(world);
             world.State().Playing = false;
         },
         Both(Call(TogglePlayback), Tick)},
    };
}

std::vector<Way> EventWays() {
    const auto main = [](World& world) -> Widget& { return world.Main(); };
    const auto list = [](World& world) -> Widget& { return world.List(); };
    const auto minimised = [](World& world) { return MinimisedByDesktop{world.Window()}; };
    const auto restored = [](World& world) { return RestoredByDesktop{world.Window()}; };
    const auto closed = [](World& world) { return CloseRequested{world.Window()}; };
    return {
        {"DropOnTheList", Stay, DropOnList},
        {"DropOnTheWindow", Stay, DropOnWindow},
        {"HandedOverPath", Stay,
         [](World& world) { world.HandOver("/add " + world.folder.Path("x.mp3")); }},
        {"HandedOverPathToPlay", Stay,
         [](World& world) { world.HandOver(world.folder.Path("x.mp3")); }, false, true},
        {"HandedOverFolder", Stay, [](World& world) { world.HandOver(world.folder.Path()); }, false,
         true},
        {"WheelOverTheWindow", Stay, WheelOver(main), true},
        {"WheelOverALongList", PlayingALongList, Both(WheelOver(list), Tick)},
        {"Resized", Stay, [](World& world) { world.Main().Move(0, 0, 200, 200); }, true},
        {"Minimising", Playing, Pushed(minimised), true},
        {"MinimisingToTheTray", InTheTray, Pushed(minimised), true},
        {"Restoring", Minimised, Pushed(restored), true},
        {"TickWhileMinimised", Minimised, Tick},
        {"DoubleClickOnTheTray", Minimised, Sent(WM_TRAY, 0, WM_LBUTTONDBLCLK), true},
        {"SettingsChange", Stay,
         [](World& world) {
             world.driver.SetWorkArea({0, 0, 500, 400});
         },
         true},
        {"DesktopsClose", Playing, Pushed(closed)},
        {"CloseMessage", Playing, Sent(WM_CLOSE)},
        {"SystemMenuClose", Playing, Sent(WM_SYSCOMMAND, SC_CLOSE)},
        {"EndImpulse", Playing,
         [](World& world) { world.Impulse(kImpulseControl, kControlShow, false); }},
        {"MinimiseImpulse", Playing,
         [](World& world) { world.Impulse(kImpulseControl, kControlMinimise, true); }, true},
        {"ScrollTextImpulse", Playing,
         [](World& world) { world.Impulse(kImpulseControl, kControlScrollText, u"text"); }, true},
        {"Drag", Playing, Drag},
        {"RightPressOnTheWindow", Playing, RightPress},
    };
}

class ReentryOfEvents : public ::testing::TestWithParam<Way> {};

TEST_P(ReentryOfEvents, TheRunMayEndInsideEveryCall) {
    EndInsideEveryCall(GetParam());
}

TEST_P(ReentryOfEvents, TheHostMayGoToTheNextItemInsideTheFirstCall) {
    NextItemInsideTheFirstCall(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Timers, ReentryOfEvents, ::testing::ValuesIn(TimerWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);
INSTANTIATE_TEST_SUITE_P(Events, ReentryOfEvents, ::testing::ValuesIn(EventWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);

}  // namespace
}  // namespace sarnel

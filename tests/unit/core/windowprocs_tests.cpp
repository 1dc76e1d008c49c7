// The procedures in front of the main window and of three of its controls.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/mAmbrisor.h"
#include "core/state/frmtip.h"
#include "platform/base/messages.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/window_log.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using namespace platform;
using support::World;
using support::WorldBuilder;
using Lines = std::vector<std::string>;

class WindowProcs : public ::testing::Test {
  protected:
    bool Runs(Long timer) {
        for (const Long id : world_->Timers()) {
            if (id == timer) {
                return true;
            }
        }
        return false;
    }
    /// A notch of the wheel over a point of a control.
    void Wheel(Long delta, Handle control, Point inControl = {2, 2}) {
        const Rect rect = world_->windows.GetWindowRect(control);
        const Long x = rect.left + inControl.x;
        const Long y = rect.top + inControl.y;
        world_->Message(WM_MOUSEWHEEL, delta * 65536, (x & 0xFFFF) | (y << 16));
    }
    Long Volume() { return world_->Main().sldSkin(1).Value(); }

    std::unique_ptr<World> world_ = WorldBuilder().Rows({u"a", u"b", u"c"}).Current(0).Started();
};

TEST_F(WindowProcs, MinimisingStopsTheScrollingAndHidesTheTipAndNothingElse) {
    world_->windows.ShowWindow(world_->State().Tip().HWnd(), SW_SHOW);
    PlayCurrentItem();
    EXPECT_TRUE(Runs(12));
    world_->driver.Push(MinimisedByDesktop{world_->Window()});
    world_->windows.DoEvents();
    EXPECT_FALSE(Runs(12));
    EXPECT_TRUE(Runs(14));  // it goes on playing
    EXPECT_FALSE(world_->State().Tip().Visible());
    EXPECT_TRUE(world_->Main().Visible());
    world_->driver.Push(RestoredByDesktop{world_->Window()});
    world_->windows.DoEvents();
    EXPECT_TRUE(Runs(12));
}

TEST_F(WindowProcs, HidingInTheTrayIsReadAnewAtEachMinimising) {
    world_->folder.Write(World::kSettings, "[Memory]\r\nHideInSystray=True\r\n");
    world_->windows.SetMinimised(world_->Window(), true);
    EXPECT_FALSE(world_->Main().Visible());
    EXPECT_FALSE(Runs(12));
    SetMinimized(false);
    EXPECT_TRUE(world_->Main().Visible());
    EXPECT_TRUE(Runs(12));
    world_->folder.Write(World::kSettings, "[Memory]\r\nHideInSystray=False\r\n");
    world_->windows.SetMinimised(world_->Window(), true);
    EXPECT_TRUE(world_->Main().Visible());
}

TEST_F(WindowProcs, AHiddenWindowGoesOnPlaying) {
    world_->folder.Write(World::kSettings, "[Memory]\r\nHideInSystray=True\r\n");
    PlayCurrentItem();
    world_->windows.SetMinimised(world_->Window(), true);
    world_->host.Forget();
    world_->host.playing = false;
    world_->Advance(50);
    EXPECT_EQ(world_->host.opened, (std::vector<std::u16string>{u"b"}));
}

TEST_F(WindowProcs, ASizeMessageOfAnotherStateDoesNothing) {
    StopScrollTimer();
    world_->Message(WM_SIZE, 2);
    world_->Message(WM_SIZE, -1);
    EXPECT_FALSE(Runs(12));
    world_->Message(WM_SIZE, 0);
    EXPECT_TRUE(Runs(12));
}

TEST_F(WindowProcs, CloseMessageAndSystemMenuCloseEndTheRun) {
    for (const bool viaSystemMenu : {false, true}) {
        world_->Start();
        const Long window = world_->Window();
        world_->host.Forget();
        if (viaSystemMenu) {
            world_->Message(WM_SYSCOMMAND, 61536);
        } else {
            world_->Message(WM_CLOSE);
        }
        EXPECT_EQ(world_->host.Numbers(), (std::vector<Long>{28, 7}));
        EXPECT_FALSE(world_->windows.IsWindow(window));
    }
}

TEST_F(WindowProcs, OtherSystemCommandsAreNoClose) {
    world_->Message(WM_SYSCOMMAND, 61472);  // minimise
    world_->Message(WM_SYSCOMMAND, 0);
    EXPECT_TRUE(world_->host.calls.empty());
    EXPECT_TRUE(world_->Main().IsLoaded());
}

TEST_F(WindowProcs, TheWorkAreaIsReadAgainAfterItsChangeOnly) {
    world_->driver.SetWorkArea({1, 2, 3, 4});
    world_->Message(WM_SETTINGCHANGE, 20);
    EXPECT_EQ(world_->State().WorkArea, (Rect{0, 0, 1024, 740}));
    world_->Message(WM_SETTINGCHANGE, 47);
    EXPECT_EQ(world_->State().WorkArea, (Rect{1, 2, 3, 4}));
}

TEST_F(WindowProcs, AHandedOverLineIsACommandLineOfARunningProgram) {
    world_->folder.Write("x.mp3", "");
    world_->HandOver("/add \"" + world_->folder.Path("x.mp3") + "\"");
    EXPECT_EQ(world_->Paths(),
              (std::vector<std::u16string>{u"a", u"b", u"c", world_->folder.Text("x.mp3")}));
    EXPECT_TRUE(world_->host.opened.empty());
    world_->windows.SetMinimised(world_->Window(), true);
    world_->HandOver(world_->folder.Path("x.mp3"));
    EXPECT_EQ(world_->List().ListCount(), 1);
    EXPECT_EQ(world_->host.opened, (std::vector<std::u16string>{world_->folder.Text("x.mp3")}));
    EXPECT_TRUE(world_->windows.IsIconic(world_->Window()));  // neither shown nor brought forward
}

TEST_F(WindowProcs, AHandedOverLineOfNoBytesDoesNothing) {
    world_->HandOver("");
    world_->Message(WM_COPYDATA, 0, 12345);  // no such record
    EXPECT_EQ(world_->List().ListCount(), 3);
    world_->HandOver(" ");  // one byte: an empty command line, which adds nothing
    EXPECT_EQ(world_->List().ListCount(), 3);
}

TEST_F(WindowProcs, HotKeysDoTheirAction) {
    world_->HotKey(u"Play");
    EXPECT_EQ(world_->host.opened, (std::vector<std::u16string>{u"a"}));
    world_->HotKey(u"Next");
    world_->HotKey(u"Prev");
    EXPECT_EQ(world_->host.opened, (std::vector<std::u16string>{u"a", u"b", u"a"}));
    world_->host.Forget();
    world_->HotKey(u"Pause");
    EXPECT_EQ(world_->host.Of({27}).size(), 1U);
    EXPECT_FALSE(world_->State().Playing);
    world_->Main().sldSkin(0).Value(50);
    world_->host.Forget();
    world_->HotKey(u"StepForw");
    world_->HotKey(u"StepBack");
    EXPECT_EQ(world_->host.Of({30}),
              (std::vector<support::FakeHost::Call>{{30, "53", "0", "0"}, {30, "50", "0", "0"}}));
    world_->HotKey(u"VolUp");
    EXPECT_EQ(Volume(), 85);
    world_->HotKey(u"VolDown");
    EXPECT_EQ(Volume(), 80);
    world_->HotKey(u"Stop");
    EXPECT_EQ(world_->host.Numbers().back(), 28);
    world_->Message(WM_HOTKEY, 987654);
    world_->Message(WM_HOTKEY, 0);
    EXPECT_EQ(world_->host.Numbers().back(), 28);
    world_->HotKey(u"Exit");
    EXPECT_EQ(world_->host.Numbers().back(), 7);
}

TEST_F(WindowProcs, TheWheelOverTheWindowOrADirectChildChangesTheVolume) {
    Wheel(120, world_->Main().picInfoDisplay.HWnd());
    EXPECT_EQ(Volume(), 85);
    Wheel(-120, world_->Main().picInfoDisplay.HWnd());
    EXPECT_EQ(Volume(), 80);
    Wheel(-120, world_->Window());
    EXPECT_EQ(Volume(), 75);
    EXPECT_EQ(world_->host.Of({29}).size(), 3U);
}

TEST_F(WindowProcs, TheWheelElsewhereLeavesTheVolume) {
    Wheel(120, world_->List().HWnd());
    world_->Main().picFrame(0).Visible(true);
    Wheel(120, world_->Main().txtLyrics->HWnd());  // a child's child
    Wheel(120, world_->Window(), {-50, -50});      // no window there
    EXPECT_EQ(Volume(), 80);
    EXPECT_EQ(world_->host.Count(29), 0);
}

TEST_F(WindowProcs, AWheelMovedByNothingCountsAsDown) {
    Wheel(0, world_->Window());
    EXPECT_EQ(Volume(), 75);
}

TEST_F(WindowProcs, TheWheelWorksLeftAndAboveOfTheScreenToo) {
    world_->windows.SetWindowPos(world_->Window(), HWND_TOP, -100, -50, 0, 0, SWP_NOSIZE);
    Wheel(120, world_->Window(), {5, 5});
    EXPECT_EQ(Volume(), 85);
}

TEST_F(WindowProcs, ADoubleClickOnTheTrayIconBringsTheWindowBack) {
    world_->folder.Write(World::kSettings, "[Memory]\r\nHideInSystray=True\r\n");
    world_->windows.SetMinimised(world_->Window(), true);
    world_->Message(1024, 0, 512);  // the pointer moves over it: nothing
    EXPECT_FALSE(world_->Main().Visible());
    world_->Message(1024, 0, 515);
    EXPECT_TRUE(world_->Main().Visible());
    EXPECT_FALSE(world_->windows.IsIconic(world_->Window()));
}

TEST_F(WindowProcs, MessagesOfNoInterestChangeNothing) {
    for (Long id = 0; id < 1100; ++id) {
        if (id == WM_CLOSE || id == WM_DESTROY || id == WM_SIZE || id == WM_MOUSEWHEEL ||
            id == WM_HOTKEY || id == WM_SYSCOMMAND) {
            continue;
        }
        world_->Message(id, 0, 0);
    }
    EXPECT_TRUE(world_->host.calls.empty());
    EXPECT_TRUE(world_->Main().IsLoaded());
    EXPECT_EQ(world_->List().ListCount(), 3);
}

// Procedures that stood there before ours do.
class FormerProcs : public ::testing::Test {
  protected:
    FormerProcs() {
        world_.Create();
        world_.Impulse(kImpulseAttach);
        Put(world_.Window(), "main");
        Put(world_.List().HWnd(), "playlist");
        Put(world_.Main().lstFilesAndFolders->HWnd(), "files");
        Put(world_.Main().txtLyrics->HWnd(), "lyrics");
        world_.Impulse(kImpulseControl, kControlLoad);
        for (JList* list : {&world_.List(), world_.Main().lstFilesAndFolders.get()}) {
            list->Observe(
                [this](const std::string& event, const std::string&) { log_.Add(event); });
        }
        log_.Take();
    }
    void Put(Handle window, const std::string& name) {
        world_.windows.SetWindowProc(window, log_.Named(name, 77));
    }
    Long Send(Handle window, Long id, Long wParam = 0, Long lParam = 0) {
        return world_.windows.SendMessage(window, id, wParam, lParam);
    }

    World world_;
    support::WindowLog log_;
};

TEST_F(FormerProcs, TheMainWindowsMessagesAreHandledFirstAndThenPassedOn) {
    std::vector<Long> timersSeen;
    world_.State().Hooks.main = [&](const Message&) -> Long {
        timersSeen = world_.Timers();
        return 55;
    };
    EXPECT_EQ(Send(world_.Window(), WM_SIZE, SIZE_RESTORED), 55);
    EXPECT_EQ(timersSeen, (std::vector<Long>{12}));
}

TEST_F(FormerProcs, EvenTheCloseThatEndsTheRunIsPassedOn) {
    EXPECT_EQ(Send(world_.Window(), WM_CLOSE), 77);
    const Lines lines = log_.Take();
    EXPECT_EQ(lines.back(), "main 16 0 0");
    EXPECT_EQ(world_.host.Numbers().back(), 7);
}

TEST_F(FormerProcs, AListsFormerProcedureRunsFirstAndGivesTheResult) {
    EXPECT_EQ(Send(world_.List().HWnd(), WM_MOUSEMOVE), 77);
    EXPECT_EQ(log_.Take(), (Lines{"playlist 512 0 0", "MouseEnter"}));
    EXPECT_EQ(Send(world_.List().HWnd(), WM_MOUSELEAVE), 77);
    EXPECT_EQ(log_.Take(), (Lines{"playlist 675 0 0", "MouseLeave"}));
    EXPECT_EQ(Send(world_.Main().lstFilesAndFolders->HWnd(), WM_MOUSEMOVE), 77);
    EXPECT_EQ(log_.Take(), (Lines{"files 512 0 0", "MouseEnter"}));
}

TEST_F(FormerProcs, TheLyricsBoxShowsNoMenuOfItsOwn) {
    const Handle lyrics = world_.Main().txtLyrics->HWnd();
    EXPECT_EQ(Send(lyrics, WM_CONTEXTMENU), 0);
    EXPECT_EQ(log_.Take(), Lines{});
    EXPECT_EQ(Send(lyrics, WM_KEYDOWN, 65), 77);
    EXPECT_EQ(log_.Take(), (Lines{"lyrics 256 65 0"}));
}

TEST_F(FormerProcs, TheWheelOverTheLyricsMovesTheirSliderByThree) {
    world_.Show(u"");
    world_.Main().picFrame(0).Visible(true);
    const Handle lyrics = world_.Main().txtLyrics->HWnd();
    const Rect rect = world_.windows.GetWindowRect(lyrics);
    const Long over = ((rect.left + 3) & 0xFFFF) | ((rect.top + 3) << 16);
    JSlider& slider = world_.Main().sldSkin(2);
    slider.Max(100);
    slider.Value(10);
    EXPECT_EQ(Send(lyrics, WM_MOUSEWHEEL, -120 * 65536, over), 77);  // and passed on
    EXPECT_EQ(slider.Value(), 13);
    Send(lyrics, WM_MOUSEWHEEL, 120 * 65536, over);
    Send(lyrics, WM_MOUSEWHEEL, 120 * 65536, over);
    EXPECT_EQ(slider.Value(), 7);
    Send(lyrics, WM_MOUSEWHEEL, 120 * 65536, 0);  // the pointer is elsewhere
    EXPECT_EQ(slider.Value(), 7);
}

}  // namespace
}  // namespace sarnel

// The host ends the run inside its answer to what the label of the file types asks, and while the
// window is in the tray: in a tick under the tray's popup, before the choice is made.
#include <gtest/gtest.h>

#include "core/mAmbrisor.h"
#include "core/state/settings.h"
#include "menus/commandmenu.h"
#include "platform/menus/menu.h"
#include "playback/mPlayback.h"
#include "tests/unit/support/reentry.h"

namespace sarnel {
namespace {

using namespace platform;
using namespace support;

void AssociationsOpen(World& world) {
    world.Do([] { RunMenuCommand(u"kAsF"); });
}

Widget& TypesLabel(World& world) {
    return *world.Main().lblFileTypesSupported;
}

// Row a plays in the tray.
void PlayingInTheTray(World& world) {
    settings::kHideInSystray.Write(true);
    Playing(world);
    world.Do([] { SetMinimized(true); });
}

void AtTheEndInTheTray(World& world) {
    AtTheEnd(world);
    settings::kHideInSystray.Write(true);
    world.Do([] { SetMinimized(true); });
    world.host.playing = false;
}

void UseTrayIcon(World& world, TrayIconUsed::Action action) {
    world.driver.Push(TrayIconUsed{world.Window(), action});
    world.windows.DoEvents();
}

void DoubleClickTray(World& world) {
    UseTrayIcon(world, TrayIconUsed::Action::kOpen);
}

// The item is there only once the popup is open, and not at all if a tick has ended the run.
Way TrayPopup(const std::string& name, std::u16string_view key) {
    return {"TrayPopup" + name, PlayingInTheTray, [key](World& world) {
                world.windows.Schedule(60, [&world, key] {
                    const frmMAIN* main = world.component ? world.State().ExistingMain() : nullptr;
                    const bool hasMenu = main != nullptr && main->hMenu;
                    world.windows.PopupMenus().EndMenu(
                        hasMenu ? main->hMenu->MenuId(main->hMenu->IndexForKey(key)) : 0);
                });
                UseTrayIcon(world, TrayIconUsed::Action::kMenu);
            }};
}

// As the desktop tells of it, and not the window.
void PressGrabbedKey(World& world, std::u16string_view name) {
    for (const auto& [grab, combination] : world.driver.HotKeys()) {
        if (combination.name == name) {
            world.driver.Push(HotKeyPressed{grab});
        }
    }
    world.windows.DoEvents();
}

std::vector<Way> ShellWays() {
    return {
        {"ClickOnTheTypes", AssociationsOpen, ClickOn(TypesLabel)},
        {"CloseAssociations", AssociationsOpen,
         ClickOn([](World& world) -> Widget& { return *world.Main().lblFrameFileAssocOK; }), true},
        {"DoubleClickOnTheIcon", PlayingInTheTray, Both(DoubleClickTray, Tick)},
        {"NextTitleInTheTray", PlayingInTheTray, HotKey(u"Next")},
        {"EndOfTheListInTheTray", AtTheEndInTheTray, Tick},
        TrayPopup("WithoutAChoice", u""),
        TrayPopup("Show", u"kSsSh"),
        TrayPopup("Exit", u"kSsEx"),
        {"GrabbedNext", Playing, [](World& world) { PressGrabbedKey(world, u"Next"); }},
        {"GrabbedExit", Playing, [](World& world) { PressGrabbedKey(world, u"Exit"); }},
        {"GrabbedStepInTheTray", PlayingInTheTray,
         [](World& world) { PressGrabbedKey(world, u"StepForw"); }},
    };
}

class ReentryOfShell : public ::testing::TestWithParam<Way> {};

TEST_P(ReentryOfShell, TheRunMayEndInsideEveryCall) {
    EndInsideEveryCall(GetParam());
}

TEST_P(ReentryOfShell, TheHostMayGoToTheNextItemInsideTheFirstCall) {
    NextItemInsideTheFirstCall(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Shell, ReentryOfShell, ::testing::ValuesIn(ShellWays()),
                         support::NameOfWay<::testing::TestParamInfo<Way>>);

// Else the ways could be quiet, or the choices none.
TEST(ReentryOfShellWays, DoWhatTheyAreNamedFor) {
    EXPECT_EQ(CallsOf({"", AssociationsOpen, ClickOn(TypesLabel)}),
              (std::vector<Long>{ImpulseGetFileTypes, ImpulseGetHostPath}));
    EXPECT_EQ(CallsOf(TrayPopup("", u"")).front(), ImpulseIsPlaying);
    auto back = Prepared(TrayPopup("", u""));
    EXPECT_FALSE(back->Main().Visible());
    EXPECT_EQ(back->driver.TrayTips().size(), 1U);
    TrayPopup("", u"kSsSh").enter(*back);
    EXPECT_TRUE(back->Main().Visible());
    back.reset();
    const auto over = Prepared(TrayPopup("", u""));
    TrayPopup("", u"kSsEx").enter(*over);
    EXPECT_EQ(over->host.Count(ImpulseClosed), 1);
    EXPECT_TRUE(over->driver.TrayTips().empty());
}

// A popup's choice may come when the run is another one by then: its window is not asked for.
TEST(ReentryOfShellWays, AnIconIsGoneWhateverEndsTheRun) {
    const auto world = Prepared({"", PlayingInTheTray, Stay});
    EndInside(*world, 0, Ending::kEndsAndBeginsAnew);
    TrayPopup("", u"").enter(*world);
    world->host.insideAny = nullptr;
    EXPECT_TRUE(world->Main().Visible());
    EXPECT_TRUE(world->driver.TrayTips().empty());
}

}  // namespace
}  // namespace sarnel

// The order in which the system comes up and goes down.
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "core/mAmbrisor.h"
#include "menus/jpopupmenu.h"
#include "platform/base/messages.h"
#include "playback/mPlayback.h"
#include "skin/panels.h"
#include "tests/unit/support/world.h"

namespace sarnel {
namespace {

using support::FakeHost;
using support::World;
using support::WorldBuilder;
using Calls = std::vector<FakeHost::Call>;

const std::set<Long> kVolumeAndEffects{29, 41, 42, 43, 44, 45, 46, 47};

/// A world whose window has just loaded, with all that the load said to the host.
std::unique_ptr<World> FreshlyLoaded(WorldBuilder& builder) {
    auto world = builder.Created();
    world->Impulse(kImpulseAttach);
    world->Impulse(kImpulseControl, kControlLoad);
    return world;
}

std::unique_ptr<World> FreshlyLoaded() {
    WorldBuilder builder;
    return FreshlyLoaded(builder);
}

bool Marked(World& world, std::u16string_view menuKey) {
    const JPopupMenu& menu = *world.Main().hMenu;
    EXPECT_NE(menu.IndexForKey(menuKey), 0);
    return menu.Checked(menu.IndexForKey(menuKey));
}

TEST(Startup, TheLoadSendsTheVolumeThenTheSevenEffectsAtTheirDefaults) {
    const auto world = FreshlyLoaded();
    EXPECT_EQ(world->host.Of(kVolumeAndEffects), (Calls{{29, "80", "0", "0"},
                                                        {41, "0", "0", "0"},
                                                        {42, "0", "0", "0"},
                                                        {43, "0", "0", "0"},
                                                        {44, "0", "0", "0"},
                                                        {45, "0", "0", "0"},
                                                        {46, "0", "0", "0"},
                                                        {47, "0", "0", "0"}}));
    EXPECT_EQ(world->host.Count(26) + world->host.Count(28), 0);
}

TEST(Startup, TheFirstStartWritesSkinVolumeAndEffectsInThisOrder) {
    const auto world = FreshlyLoaded();
    EXPECT_EQ(world->folder.Read(World::kSettings),
              "[Memory]\r\nSkin=1\r\nMusicVolume=80\r\nEffect_Tempo=50\r\nEffect_Pitch=20\r\n"
              "Effect_Echo=0\r\nEffect_Reverb=0\r\nEffect_Bass=15\r\nEffect_Mid=15\r\n"
              "Effect_Treble=15\r\n");
}

TEST(Startup, TheWindowRestsStoppedUnderItsTitleAndHidden) {
    const auto world = FreshlyLoaded();
    EXPECT_EQ(world->Main().Caption(), u"Veldrin v1.1");
    EXPECT_EQ(world->State().ScrollText,
              u"Veldrin v1.1  ---  Veldrin v1.1  ---  Veldrin v1.1  ---  Veldrin v1.1");
    EXPECT_FALSE(world->Main().Visible());
    EXPECT_FALSE(world->Main().sldSkin(0).Enabled());
    EXPECT_EQ(world->Main().sldSkin(1).Value(), 80);
    EXPECT_FALSE(world->State().Playing);
    EXPECT_EQ(world->State().DisplayMode, 1);
    EXPECT_EQ(world->State().CurrentSkin, 1);
    EXPECT_EQ(world->Timers(), std::vector<Long>{});
    EXPECT_EQ(world->List().ListCount(), 0);
}

TEST(Startup, WithoutASettingTheWindowOpensCentred) {
    const auto world = FreshlyLoaded();
    const Long left = (1024 - world->Main().Width()) / 2;
    const Long top = (768 - world->Main().Height()) / 2;
    EXPECT_GT(world->Main().Width(), 0);
    EXPECT_EQ(world->Main().Left(), left);
    EXPECT_EQ(world->Main().Top(), top);
    EXPECT_FALSE(world->windows.IsTopMost(world->Window()));
}

TEST(Startup, TheStoredPlaceAndTopMostAreTaken) {
    auto world = FreshlyLoaded(
        WorldBuilder().Setting("X", "-5").Setting("Y", "700").Setting("TopMost", "True"));
    EXPECT_EQ(world->Main().Left(), -5);
    EXPECT_EQ(world->Main().Top(), 700);
    EXPECT_TRUE(world->windows.IsTopMost(world->Window()));
    EXPECT_TRUE(world->Main().tglSkin(0).Value());
    EXPECT_TRUE(Marked(*world, u"kTMst"));
    world.reset();
    world = FreshlyLoaded();
    EXPECT_FALSE(world->Main().tglSkin(0).Value());
    EXPECT_FALSE(Marked(*world, u"kTMst"));
}

TEST(Startup, APlaceThatIsNoNumberIsZeroAndAnyNumberIsTaken) {
    auto world = FreshlyLoaded(WorldBuilder().Setting("X", "left").Setting("Y", ""));
    EXPECT_EQ(world->Main().Left(), 0);
    EXPECT_EQ(world->Main().Top(), 0);
    world.reset();
    world = FreshlyLoaded(WorldBuilder().Setting("X", "2147483647").Setting("Y", "-2147483648"));
    world->Show(u"");
    EXPECT_TRUE(world->Main().Visible());
    EXPECT_GT(world->Main().Width(), 0);
}

TEST(Startup, EachModeIsReadFromItsKeyAndMarksItsMenuItem) {
    struct Mode {
        const char* setting;
        bool Program::*state;
        const char16_t* menuKey;
    };
    const std::vector<Mode> modes{{"Random", &Program::Random, u"kPRdm"},
                                  {"RepeatItem", &Program::RepeatItem, u"kPRpI"},
                                  {"RepeatList", &Program::RepeatList, u"kPRpP"},
                                  {"ManualAdvance", &Program::ManualAdvance, u"kPMA"},
                                  {"PlayAtStartup", &Program::PlayAtStartup, u"kPPAS"}};
    for (const Mode& set : modes) {
        const auto world = FreshlyLoaded(WorldBuilder().Setting(set.setting, "-1"));
        for (const Mode& mode : modes) {
            const bool expected = mode.setting == set.setting;
            EXPECT_EQ(world->State().*mode.state, expected) << set.setting << mode.setting;
            EXPECT_EQ(Marked(*world, mode.menuKey), expected) << set.setting << mode.setting;
        }
    }
}

TEST(Startup, NumbersAreTakenWithoutACheckOfTheirRange) {
    const auto world =
        FreshlyLoaded(WorldBuilder().Setting("DisplayMode", "17").Setting("SortFilesMode", "-4"));
    EXPECT_EQ(world->State().DisplayMode, 17);
    EXPECT_EQ(world->State().SortFilesMode, -4);
}

TEST(Startup, ASkinThatDoesNotExistIsSkinOne) {
    for (const char* skin : {"0", "-3", "99", "blue", ""}) {
        const auto world = FreshlyLoaded(WorldBuilder().Setting("Skin", skin));
        EXPECT_EQ(world->State().CurrentSkin, 1) << skin;
        EXPECT_EQ(world->Setting("Skin"), "1") << skin;
    }
}

TEST(Startup, AVolumeThatIsNoNumberIsSkipped) {
    const auto world = FreshlyLoaded(WorldBuilder().Setting("MusicVolume", "loud"));
    EXPECT_EQ(world->host.Count(29), 0);
    EXPECT_EQ(world->Setting("MusicVolume"), "loud");
    EXPECT_EQ(world->host.Count(47), 1);  // and the start goes on
}

TEST(Startup, TheHostIsAskedForItsCellsOnceAndEachBecomesAMenuItem) {
    const auto world = FreshlyLoaded(WorldBuilder().Host([](FakeHost& host) {
        host.cellNames = {u"Engine", u"Tags"};
    }));
    EXPECT_EQ(world->host.capacityAsked, 1);
    const JPopupMenu& menu = *world->Main().hMenu;
    EXPECT_EQ(menu.Caption(menu.IndexForKey(u"kCell1")), u"Engine");
    EXPECT_EQ(menu.Caption(menu.IndexForKey(u"kCell2")), u"Tags");
    EXPECT_EQ(menu.IndexForKey(u"kCell3"), 0);
}

TEST(Startup, AHostThatFailsEverywhereKeepsNothingFromComingUp) {
    const auto world = FreshlyLoaded(WorldBuilder().Host([](FakeHost& host) {
        host.failingCells = true;
        host.failing = {11, 29, 41, 42, 43, 44, 45, 46, 47};
    }));
    EXPECT_EQ(world->host.Of(kVolumeAndEffects).size(), 8U);
    EXPECT_EQ(world->Setting("Effect_Treble"), "15");
    world->Show(u"");
    EXPECT_TRUE(world->Main().Visible());
}

TEST(Startup, TenHotKeysAreRegisteredForTheMainWindow) {
    const auto world = FreshlyLoaded();
    std::set<Long> ids;
    for (const char16_t* name : {u"Exit", u"Next", u"Prev", u"Stop", u"Play", u"Pause", u"StepBack",
                                 u"StepForw", u"VolUp", u"VolDown"}) {
        ASSERT_NE(world->Main().hKeys->Find(name), nullptr);
        ids.insert(world->Main().hKeys->Find(name)->id);
    }
    EXPECT_EQ(ids.size(), 10U);
    EXPECT_FALSE(ids.contains(0));
    EXPECT_EQ(world->Main().hKeys->hWndToCapture(), world->Window());
}

TEST(Startup, TheWindowAcceptsDroppedFilesBesideItsOtherStyles) {
    const auto world = WorldBuilder().Created();
    world->Impulse(kImpulseAttach);
    world->windows.SetWindowLong(world->Window(), platform::GWL_EXSTYLE, 256);
    world->Impulse(kImpulseControl, kControlLoad);
    EXPECT_EQ(world->windows.GetWindowLong(world->Window(), platform::GWL_EXSTYLE), 256 + 16);
}

TEST(Startup, TheLyricsPanelTakesTheFontOfItsTextBox) {
    const auto world = WorldBuilder().Created();
    world->Impulse(kImpulseAttach);
    world->Main().txtLyrics->FontName(u"Courier");
    world->Impulse(kImpulseControl, kControlLoad);
    EXPECT_EQ(world->Main().picFrame(0).FontName(), world->Main().txtLyrics->FontName());
}

TEST(Startup, TheListIsRestoredAndPlayingBeginsBeforeTheWindowIsSeen) {
    const auto world =
        WorldBuilder().Saved({"a", "b"}, 1).Setting("PlayAtStartup", "True").Loaded();
    bool seen = true;
    world->host.inside[26] = [&] { seen = world->Main().Visible(); };
    world->Show(u"");
    EXPECT_EQ(world->host.opened, (std::vector<std::u16string>{u"b"}));
    EXPECT_FALSE(seen);
    EXPECT_TRUE(world->Main().Visible());
}

TEST(Startup, TheFirstShowingStartsTheScrollTimer) {
    const auto world = WorldBuilder().Loaded();
    EXPECT_EQ(world->Timers(), std::vector<Long>{});
    world->Show(u"");
    EXPECT_EQ(world->windows.Timers(world->Window()),
              (std::vector<std::pair<Long, Long>>{{12, 30}}));
}

TEST(Stop, AClosePlayingStopsTheHostThenWritesTheListThenReports) {
    const auto world = WorldBuilder().Rows({u"a", u"b"}).Current(1).Started();
    PlayCurrentItem();
    world->host.Forget();
    std::optional<std::string> atStop;
    std::optional<std::string> atClosed;
    std::u16string captionAtStop;
    world->host.inside[28] = [&] {
        atStop = world->Saved();
        captionAtStop = world->Main().Caption();
        EXPECT_EQ(world->Timers(), std::vector<Long>{});
    };
    world->host.inside[7] = [&] {
        atClosed = world->Saved();
        EXPECT_EQ(world->State().ExistingMain(), nullptr);
    };
    world->End();
    EXPECT_EQ(world->host.calls, (Calls{{28, "0", "0", "0"}, {7, "0", "0", "0"}}));
    EXPECT_EQ(atStop, std::nullopt);
    EXPECT_EQ(captionAtStop, u"Veldrin v1.1");
    EXPECT_EQ(atClosed, "OMK v1.1\r\n 2 \r\n 1 \r\na\r\na\r\nb\r\nb\r\n");
}

TEST(Stop, AnEmptyListIsWrittenToo) {
    const auto world = WorldBuilder().Started();
    world->End();
    EXPECT_EQ(world->Saved(), "OMK v1.1\r\n 0 \r\n-1 \r\n");
}

TEST(Stop, AHostThatFailsToStopDoesNotKeepTheListFromBeingWritten) {
    const auto world = WorldBuilder()
                           .Rows({u"a"})
                           .Host([](FakeHost& host) {
                               host.failing = {7, 28};
                           })
                           .Started();
    world->End();
    EXPECT_EQ(world->Saved(), "OMK v1.1\r\n 1 \r\n-1 \r\na\r\na\r\n");
    EXPECT_EQ(world->State().ExistingMain(), nullptr);
}

TEST(Stop, AListThatCannotBeWrittenDoesNotKeepTheRunFromEnding) {
    const auto world = WorldBuilder().Rows({u"a"}).Started();
    world->folder.MakeFolder(World::kPlaylist);
    world->End();
    EXPECT_EQ(world->host.Numbers(), (std::vector<Long>{28, 7}));
}

TEST(Stop, NothingButThePlaylistIsWrittenAtTheEnd) {
    const auto world = WorldBuilder().Started();
    world->folder.Remove(World::kSettings);
    world->End();
    EXPECT_EQ(world->folder.Names(), (std::vector<std::string>{World::kPlaylist}));
}

TEST(Stop, APlaceThatTheDesktopGaveIsWrittenAtTheEnd) {
    const auto world = WorldBuilder().Setting("X", "12").Setting("Y", "34").Started();
    world->driver.Push(platform::MovedByDesktop{world->Window(), {-20, 410}});
    world->windows.DoEvents();
    EXPECT_EQ(world->Setting("X"), "12");
    world->End();
    EXPECT_EQ(world->Setting("X"), "-20");
    EXPECT_EQ(world->Setting("Y"), "410");
}

TEST(Stop, ADragAfterTheDesktopsMoveCounts) {
    const auto world = WorldBuilder().Setting("X", "12").Setting("Y", "34").Started();
    world->driver.Push(platform::MovedByDesktop{world->Window(), {200, 410}});
    world->windows.DoEvents();
    BeginDrag(5, 5);
    DragWindow(world->Window(), 15, 2);
    EndDrag();
    world->End();
    EXPECT_EQ(world->Setting("X"), "210");
    EXPECT_EQ(world->Setting("Y"), "407");
}

TEST(Stop, TheMenuGoesWithTheWindow) {
    const auto world = WorldBuilder().Started();
    const std::weak_ptr<JPopupMenu> menu = world->Main().hMenu;
    EXPECT_FALSE(menu.expired());
    world->End();
    EXPECT_TRUE(menu.expired());
}

TEST(Stop, TheFormerProceduresAreBackBeforeTheWindowsGo) {
    World world;
    world.Create();
    world.Impulse(kImpulseAttach);
    std::vector<std::string> seen;
    const auto log = [&](const std::string& name) {
        return [&seen, name](const platform::Message& message) -> Long {
            if (message.id == platform::WM_DESTROY) {
                seen.push_back(name);
            }
            return 0;
        };
    };
    frmMAIN& main = world.Main();
    world.windows.SetWindowProc(main.HWnd(), log("main"));
    world.windows.SetWindowProc(main.lstPlaylist.HWnd(), log("playlist"));
    world.windows.SetWindowProc(main.lstFilesAndFolders->HWnd(), log("files"));
    world.windows.SetWindowProc(main.txtLyrics->HWnd(), log("lyrics"));
    world.Impulse(kImpulseControl, kControlLoad);
    const Long window = world.Window();
    world.host.inside[7] = [&] { EXPECT_FALSE(world.windows.IsWindow(window)); };
    world.End();
    EXPECT_EQ(std::set<std::string>(seen.begin(), seen.end()),
              (std::set<std::string>{"main", "playlist", "files", "lyrics"}));
    EXPECT_EQ(seen.size(), 4U);
}

TEST(SetMinimized, HidesNothingAndTheWayBackShowsRestoresAndRaises) {
    const auto world = WorldBuilder().Started();
    SetMinimized(true);
    EXPECT_TRUE(world->windows.IsIconic(world->Window()));
    EXPECT_TRUE(world->Main().Visible());
    world->windows.ShowWindow(world->Window(), platform::SW_HIDE);
    const platform::Rect all{0, 0, 1024, 768};
    world->windows.ShowWindow(world->windows.CreateWindow(0, all, {}), platform::SW_SHOW);
    SetMinimized(false);
    EXPECT_FALSE(world->windows.IsIconic(world->Window()));
    EXPECT_TRUE(world->Main().Visible());
    const platform::Rect rect = world->windows.GetWindowRect(world->Window());
    EXPECT_EQ(
        world->windows.GetTopLevel(world->windows.WindowFromPoint({rect.left + 1, rect.top + 1})),
        world->Window());
}

TEST(Startup, TheSystemMenuOffersNeitherToMoveNorToSizeNorToMaximise) {
    const auto world = WorldBuilder().Loaded();
    platform::Menus& menus = world->windows.PopupMenus();
    const Handle menu = menus.GetSystemMenu(world->Window());
    std::vector<Long> commands;
    for (Long i = 0; i < menus.GetMenuItemCount(menu); ++i) {
        commands.push_back(menus.GetMenuItemInfo(menu, i, platform::MF_BYPOSITION)->id);
    }
    EXPECT_EQ(commands,
              (std::vector<Long>{platform::SC_RESTORE, platform::SC_MINIMIZE, platform::SC_CLOSE}));
}

// The four below the list, at the lower edge of the window: there is room below them, too.
TEST(Startup, TheMenusOfTheFourListButtonsOpenUpwards) {
    const auto world = WorldBuilder().Started();
    platform::WindowSystem& windows = world->windows;
    int opened = 0;
    windows.PopupMenus().ObserveOpening([&](Handle) {
        const platform::Point pointer = windows.GetCursorPos();
        const auto top = [&](Long y) {
            return windows.GetTopLevel(windows.WindowFromPoint({pointer.x, pointer.y + y}));
        };
        EXPECT_NE(top(-2), world->Window());
        EXPECT_EQ(top(2), world->Window());
        ++opened;
    });
    for (const Long button : {8, 9, 10, 11}) {
        const platform::Rect rect = windows.GetWindowRect(world->Main().btnSkin(button).HWnd());
        world->driver.MovePointer({rect.left + rect.Width() / 2, rect.top + rect.Height() / 2});
        world->Do([&] { world->Main().btnSkin(button).onClick(); });
    }
    EXPECT_EQ(opened, 4);
}

}  // namespace
}  // namespace sarnel

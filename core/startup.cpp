// The order of start and stop. Steps that fail are skipped: nothing here keeps the window from
// coming up, or the playlist from being written.
#include <array>
#include <memory>

#include "core/base/failure.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/menukeys.h"
#include "core/state/modes.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "menus/commandmenu.h"
#include "platform/base/keys.h"
#include "playback/mPlayback.h"
#include "playlist/media.h"
#include "skin/panels.h"
#include "skin/skin.h"

namespace sarnel {

using namespace platform;

namespace {

struct GlobalKey {
    const char16_t* name;
    Long virtualKey;
};
constexpr Long kAltAndCtrl = 3;
constexpr std::array<GlobalKey, 10> kGlobalKeys{{{u"Exit", VK_F12},
                                                 {u"Next", VK_NEXT},
                                                 {u"Prev", VK_PRIOR},
                                                 {u"Stop", VK_END},
                                                 {u"Play", VK_INSERT},
                                                 {u"Pause", VK_HOME},
                                                 {u"StepBack", VK_LEFT},
                                                 {u"StepForw", VK_RIGHT},
                                                 {u"VolUp", VK_UP},
                                                 {u"VolDown", VK_DOWN}}};

void PlaceWindow() {
    frmMAIN& main = App().Main();
    const Size screen = App().windows.ScreenSize();
    Long x = 0;
    Long y = 0;
    const Long centredX = (screen.width - main.Width()) / 2;
    const Long centredY = (screen.height - main.Height()) / 2;
    const bool isKept = App().windows.PlacesWindows();
    Take(x, isKept ? settings::kX.Read(centredX) : centredX);
    Take(y, isKept ? settings::kY.Read(centredY) : centredY);
    const bool topMost = IsOn(settings::kTopMost);
    Step([&] { Mark(menukeys::kTopMost, topMost); });
    main.tglSkin(kTopMostToggle).Value(topMost);
    constexpr Long kNoSizeNoActivate = SWP_NOSIZE | SWP_NOACTIVATE;
    App().windows.SetWindowPos(main.HWnd(), topMost ? HWND_TOPMOST : HWND_NOTOPMOST, x, y, 0, 0,
                               kNoSizeNoActivate);
}

void LoadModes() {
    for (const Mode& mode : modes::kAll) {
        if (mode.state != nullptr) {
            Take(App().*mode.state, mode.setting.Read());
            Step([&] { Mark(mode.menuKey, App().*mode.state); });
        }
    }
}

}  // namespace

void InstallWindowHooks() {
    Program& app = App();
    frmMAIN& main = app.Main();
    WindowSystem& windows = app.windows;
    app.Hooks.main = windows.SetWindowProc(main.HWnd(), MainWindowProc);
    app.Hooks.playlist = windows.SetWindowProc(main.lstPlaylist.HWnd(), PlaylistWindowProc);
    app.Hooks.filesAndFolders =
        windows.SetWindowProc(main.lstFilesAndFolders->HWnd(), FilesAndFoldersWindowProc);
    app.Hooks.lyrics = windows.SetWindowProc(main.txtLyrics->HWnd(), LyricsWindowProc);
    windows.SetWindowLong(main.HWnd(), GWL_EXSTYLE,
                          windows.GetWindowLong(main.HWnd(), GWL_EXSTYLE) | WS_EX_ACCEPTFILES);
    ClearPlayedHistory();
    app.PulseLevel = 0;
}

void LoadSettings() {
    Program& app = App();
    Take(app.CurrentSkin, settings::kSkin.Read());
    SetWindowTitle(RestingTitle());
    SetScrollText(app.Main().Caption());
    Step(BuildMenu);
    Step(CreateHotKeys);
    Step(RemoveSystemMenuItems);
    Step([&] { LoadSkin(app.CurrentSkin); });
    Step(PlaceWindow);
    Step([] {
        if (const auto volume = settings::kMusicVolume.Read()) {
            SetVolume(*volume);
        }
    });
    Take(app.DisplayMode, settings::kDisplayMode.Read());
    app.Main().sldSkin(kPositionSlider).Enabled(false);
    Step(LoadModes);
    Take(app.SortFilesMode, settings::kSortFilesMode.Read());
    app.Main().picFrame(kLyricsPanel).FontName(app.Main().txtLyrics->FontName());
    Step(LoadEffects);
}

void CreateHotKeys() {
    frmMAIN& main = App().Main();
    main.hKeys = std::make_unique<JHotKeys>(App().windows);
    main.hKeys->hWndToCapture(main.HWnd());
    main.hKeys->onHotKeyPress = [](std::u16string_view sName, Long, Long) {
        hKeys_HotKeyPress(sName);
    };
    for (const GlobalKey& key : kGlobalKeys) {
        Step([&] { main.hKeys->RegisterKey(key.name, kAltAndCtrl, key.virtualKey); });
    }
}

void RemoveWindowHooks() {
    Step(StopScrollTimer);
    Step(StopPlayback);
    Step([] { static_cast<void>(Playlist().Serialize(PlaylistFile())); });
    Program& app = App();
    frmMAIN& main = app.Main();
    app.windows.SetWindowProc(main.txtLyrics->HWnd(), app.Hooks.lyrics);
    app.windows.SetWindowProc(main.lstFilesAndFolders->HWnd(), app.Hooks.filesAndFolders);
    app.windows.SetWindowProc(main.lstPlaylist.HWnd(), app.Hooks.playlist);
    app.windows.SetWindowProc(main.HWnd(), app.Hooks.main);
}

void SetMinimized(bool minimise) {
    WindowSystem& windows = App().windows;
    const Handle window = App().Main().HWnd();
    if (minimise) {
        windows.SetMinimised(window, true);
    } else {
        windows.ShowWindow(window, SW_SHOW);
        windows.SetMinimised(window, false);
        windows.SetForegroundWindow(window);
    }
}

void ReadWorkArea() {
    App().WorkArea = App().windows.WorkArea();
}

}  // namespace sarnel

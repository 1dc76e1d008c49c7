// The procedures in front of the main window and of three of its controls. The message is handled
// first and then, with the exceptions told below, goes on to the procedure that stood there before.
#include <optional>
#include <string>

#include "core/base/failure.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/frmtip.h"
#include "core/state/mainmenu.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "lyrics/lyrics.h"
#include "menus/commandmenu.h"
#include "platform/base/text.h"
#include "playback/mPlayback.h"
#include "playlist/media.h"
#include "shell/tray.h"

namespace sarnel {

using namespace platform;

namespace {

void OnSize(const Message& message) {
    const bool hides = IsOn(settings::kHideInSystray);
    WindowSystem& windows = App().windows;
    const frmMAIN& main = App().Main();
    if (message.wParam == SIZE_RESTORED) {
        StartScrollTimer();
        if (hides) {
            TrayDelete(windows, message.window, main.Icon());
        }
    } else if (message.wParam == SIZE_MINIMIZED) {
        if (hides) {
            TrayAdd(windows, message.window, main.Icon(), main.Caption());
            windows.ShowWindow(message.window, SW_HIDE);
        }
        windows.ShowWindow(App().Tip().HWnd(), SW_HIDE);
        StopScrollTimer();
    }
}

void OnCopyData(Long lParam) {
    const CopyDataRecord* record = App().windows.CopyData(lParam);
    if (record != nullptr && !record->bytes.empty()) {
        ProcessCommandLine(Widen(record->bytes), false);
    }
}

// Turns the volume, unless what is under the pointer uses the wheel itself.
void OnMouseWheel(const Message& message) {
    WindowSystem& windows = App().windows;
    const Handle under = windows.WindowFromPoint(PointOf(message.lParam));
    if (under == Playlist().HWnd() ||
        (under != message.window && windows.GetParent(under) != message.window)) {
        return;
    }
    SetVolume(App().Main().sldSkin(kVolumeSlider).Value() +
              (message.wParam < 1 ? -kVolumeStep : kVolumeStep));
}

// Raises an error while there are no hot keys, as Menu does without a menu.
JHotKeys& Keys() {
    return *Needed(App().Main().hKeys);
}

// An answer ends the message here.
std::optional<Long> HandleMain(const Message& message) {
    switch (message.id) {
        case WM_DESTROY:
            Keys().WM_DESTROY();
            break;
        case WM_SIZE:
            OnSize(message);
            break;
        case WM_CLOSE:
            RequestClose();
            break;
        case WM_SETTINGCHANGE:
            if (message.wParam == SPI_SETWORKAREA) {
                ReadWorkArea();
            }
            break;
        case WM_DRAWITEM:
            if (Menu()->WM_DRAWITEM_Msg(message.lParam)) {
                return 1;
            }
            break;
        case WM_MEASUREITEM:
            if (Menu()->WM_MEASUREITEM_Msg(message.lParam)) {
                return 1;
            }
            break;
        case WM_COPYDATA:
            OnCopyData(message.lParam);
            break;
        case WM_SYSCOMMAND:
            if (message.wParam == SC_CLOSE) {
                App().windows.SendMessage(message.window, WM_CLOSE, 0, 0);
            }
            break;
        case WM_MOUSEWHEEL:
            OnMouseWheel(message);
            break;
        case WM_DROPFILES:
            AddDroppedFiles(message.wParam);
            break;
        case WM_HOTKEY:
            Keys().WM_HOTKEY(message.wParam, message.lParam);
            break;
        case WM_TRAY:
            OnTray(message.lParam);
            break;
        default:
            break;
    }
    return std::nullopt;
}

Long ListWindowProc(JList& list, const WindowProc& former, const Message& message) {
    const Long result = WindowSystem::CallWindowProc(former, message);
    if (message.id == WM_MOUSEMOVE) {
        list.WM_MOUSEMOVE_Process(message.window);
    } else if (message.id == WM_MOUSEWHEEL) {
        list.WM_MOUSEWHEEL_Process(message.wParam);
    } else if (message.id == WM_MOUSELEAVE) {
        list.WM_MOUSELEAVE_Process();
    }
    return result;
}

}  // namespace

Long MainWindowProc(const Message& message) {
    // Read before the message is handled: a close unloads the window and forgets its hooks.
    const WindowProc former = App().Hooks.main;
    std::optional<Long> result;
    Step([&] { result = HandleMain(message); });
    return result ? *result : WindowSystem::CallWindowProc(former, message);
}

Long PlaylistWindowProc(const Message& message) {
    return ListWindowProc(App().Main().lstPlaylist, App().Hooks.playlist, message);
}

Long FilesAndFoldersWindowProc(const Message& message) {
    return ListWindowProc(*App().Main().lstFilesAndFolders, App().Hooks.filesAndFolders, message);
}

Long LyricsWindowProc(const Message& message) {
    if (message.id == WM_MOUSEWHEEL &&
        App().windows.WindowFromPoint(PointOf(message.lParam)) == message.window) {
        ScrollLyricsBy(message.wParam < 1 ? kLyricsStep : -kLyricsStep);
    }
    // Swallowed, so that the text box shows no menu of its own.
    return message.id == WM_CONTEXTMENU ? 0
                                        : WindowSystem::CallWindowProc(App().Hooks.lyrics, message);
}

}  // namespace sarnel

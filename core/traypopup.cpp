// What the tray icon does with the mouse.
#include <array>
#include <string>

#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/menukeys.h"
#include "core/state/program.h"
#include "menus/temporarypopup.h"
#include "playback/mPlayback.h"
#include "shell/tray.h"

namespace sarnel {

using namespace platform;

namespace {

void ShowTrayPopup() {
    static constexpr std::u16string_view kShow = u"kSsSh";
    static constexpr std::u16string_view kExit = u"kSsEx";
    const std::u16string title = RestingTitle();
    const std::array<TemporaryItem, 4> items{{
        {title, u"kSsTr", TemporaryItem::kHeader},
        {u"Show application", kShow},
        {u"-", u""},
        {u"Exit application", kExit},
    }};
    TemporaryPopup popup(menukeys::kExit, items);
    const std::u16string key = popup.Choose();
    if (key == kShow) {
        SetMinimized(false);
    } else if (key == kExit) {
        // The icon goes with WM_SIZE, which a window that is only hidden does not get.
        WindowSystem& windows = App().windows;
        const Handle window = App().Main().HWnd();
        TrayDelete(windows, window, App().Main().Icon());
        windows.SendMessage(window, WM_CLOSE, 0, 0);
    }
}

}  // namespace

void OnTray(Long mouseMessage) {
    if (mouseMessage == WM_LBUTTONDBLCLK) {
        SetMinimized(false);
    } else if (mouseMessage == WM_RBUTTONUP) {
        ShowTrayPopup();
    }
}

}  // namespace sarnel

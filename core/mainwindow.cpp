// What the main window does: the handlers of its controls, its load and its unload event. Its
// layout is core/state/frmmain.h.
#include <utility>

#include "core/base/failure.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "playlist/media.h"
#include "skin/panels.h"

namespace sarnel {

void frmMAIN::AttachHandlers() {
    AttachButtonHandlers(*this);
    AttachSurfaceHandlers(*this);
    AttachAssociationHandlers(*this);
    AttachLyricsHandlers(*this);
    AttachBrowserHandlers(*this);
    AttachSearchHandlers(*this);
    lstPlaylist.onKeyDown = [](Long KeyCode, Long Shift) { lstPlaylist_KeyDown(KeyCode, Shift); };
    lstPlaylist.onKeyUp = [](Long KeyCode, Long Shift) { lstPlaylist_KeyUp(KeyCode, Shift); };
    lstPlaylist.onOLEDragDrop = [](const std::vector<std::string>& paths) {
        lstPlaylist_OLEDragDrop(paths);
    };
}

void frmMAIN::Load() {
    if (loaded_) {
        return;
    }
    loaded_ = true;
    InstallWindowHooks();
    LoadSettings();
}

void frmMAIN::Unload() {
    if (!loaded_) {
        return;
    }
    RemoveWindowHooks();
    if (windows_.WasMovedByDesktop(HWnd())) {
        Step(EndDrag);  // nobody told the end of what the desktop did
    }
    windows_.DeferDelete(
        std::exchange(hMenu, nullptr));  // a command of it may be what ends the run
    // Not earlier: stopping asks the host, and if that loads the window from there, Load must find
    // it loaded, or the hooks would be installed twice.
    loaded_ = false;
}

}  // namespace sarnel

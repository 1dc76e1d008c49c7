// What the surfaces of the main window do with the mouse: its background, the scrolling title, the
// display and the playlist.
#include "core/base/failure.h"
#include "core/mAmbrisor.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/menukeys.h"
#include "core/state/program.h"
#include "menus/commandmenu.h"
#include "platform/base/keys.h"
#include "platform/base/rounding.h"
#include "playback/mPlayback.h"
#include "playlist/listcommands.h"
#include "skin/panels.h"

namespace sarnel {

using platform::kLeftButton;
using platform::kRightButton;
using platform::MouseEvent;
using platform::RoundHalfEven;

namespace {

// The window is moved by its background and by the scrolling title.
void MakeDraggable(platform::Widget& surface) {
    surface.onMouseDown = [](const MouseEvent& event) {
        if (event.Button == kLeftButton) {
            BeginDrag(RoundHalfEven(event.X), RoundHalfEven(event.Y));
        } else {
            ShowMenu(u"", kCentred);
        }
    };
    surface.onMouseMove = [](const MouseEvent& event) {
        if (event.Button == kLeftButton) {
            DragWindow(App().Main().HWnd(), RoundHalfEven(event.X), RoundHalfEven(event.Y));
        }
    };
    surface.onMouseUp = [](const MouseEvent&) { EndDrag(); };
}

void lstPlaylist_MouseDown(const MouseEvent& event) {
    const Long row = Playlist().MouseOverIndex(event.Y);
    if (event.Button == kRightButton && row != -1) {
        Playlist().ListIndex(row);
        ShowMenu(menukeys::kPlaylistHeader, kCentred);
    }
}

}  // namespace

void ShowMenu(std::u16string_view key, Long align) {
    Step([&] {
        const auto menu = Menu();
        const Long item = key.empty() ? 0 : menu->IndexForKey(key);
        menu->ShowPopup(-1, -1, item, align, platform::TPM_RIGHTBUTTON, true);
    });
}

void AttachSurfaceHandlers(frmMAIN& main) {
    MakeDraggable(main);
    MakeDraggable(main.picScrollText);
    main.picInfoDisplay.onMouseDown = [](const MouseEvent& event) {
        if (event.Button == kLeftButton) {
            NextDisplayMode();
        }
    };
    main.lstPlaylist.onDblClick = PlayListIndex;
    main.lstPlaylist.onMouseDown = lstPlaylist_MouseDown;
}

}  // namespace sarnel

// What the surfaces of the main window do with the mouse: its background, the scrolling title, the
// display, the buttons that open menus and the toggles.
#include "core/failure.h"
#include "core/frmmain.h"
#include "core/mAmbrisor.h"
#include "core/program.h"
#include "menus/commandmenu.h"
#include "platform/rounding.h"
#include "playback/mPlayback.h"
#include "playlist/listcommands.h"
#include "skin/panels.h"

namespace sarnel {

using platform::MouseEvent;
using platform::RoundHalfEven;

namespace {

constexpr Long kLeftButton = 1;
constexpr Long kRightButton = 2;

// Alignment of popups, and the buttons that choose in them.
constexpr Long kCentred = platform::TPM_CENTERALIGN;
constexpr Long kCentredAbove = platform::TPM_CENTERALIGN | platform::TPM_BOTTOMALIGN;
constexpr Long kRightButtonToo = platform::TPM_RIGHTBUTTON;

// At the pointer. Item 0 is the whole menu; a key names an item whose submenu opens by itself.
void ShowMenu(std::u16string_view key, Long align) {
    Step([&] {
        const auto menu = Menu();
        const Long item = key.empty() ? 0 : menu->IndexForKey(key);
        menu->ShowPopup(-1, -1, item, align, kRightButtonToo, true);
    });
}

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
        ShowMenu(u"kMMH", kCentred);
    }
}

}  // namespace

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
    main.btnSkin(2).onClick = [] { ShowMenu(u"", kCentred); };
    main.btnSkin(8).onClick = [] { ShowMenu(u"kAHe", kCentredAbove); };
    main.btnSkin(9).onClick = [] { ShowMenu(u"kRHe", kCentredAbove); };
    main.btnSkin(10).onClick = [] { ShowMenu(u"kSHe", kCentredAbove); };
    main.btnSkin(11).onClick = [] { ShowMenu(u"kLHD", kCentredAbove); };
    main.tglSkin(0).onClick = [] { SetTopMost(App().Main().tglSkin(0).Value()); };
    main.tglSkin(1).onClick = [] { RunMenuCommand(u"kPkLy"); };
    main.tglSkin(2).onClick = [] { RunMenuCommand(u"kPkEFX"); };
    main.tglSkin(3).onClick = [] { RunMenuCommand(u"kPkNFO"); };
    main.lblFrameFileAssocOK->onClick = [] { RunMenuCommand(u"kAsF"); };
}

}  // namespace sarnel

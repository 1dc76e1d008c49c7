#include "skin/panels.h"

#include <algorithm>
#include <string>

#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/mainmenu.h"
#include "core/state/menukeys.h"
#include "core/state/program.h"
#include "core/state/settings.h"
#include "platform/menus/menu.h"

namespace sarnel {

using namespace platform;

namespace {

constexpr Long SnapMargin = 12;  // pixels; at exactly so many it does not stick

// One coordinate of the window: `wanted` is its near edge, the work area reaches from `low` to
// `high`.
Long Snapped(Long wanted, Long length, Long low, Long high) {
    const auto sticks = [](Long edge, Long to) {
        return edge > to - SnapMargin && edge < to + SnapMargin;
    };
    Long place = wanted;
    if (sticks(wanted, low)) {
        place = low;
    } else if (sticks(wanted + length, high)) {
        place = high - length;
    }
    // The screen's 0 and not the work area's edge: beside a panel on the left the window may lie
    // under it. That is meant.
    return std::min(std::max(place, 0), high - length);
}

}  // namespace

void ShowPanel(Long panel, bool show) {
    frmMAIN& main = App().Main();
    Step([&] { Mark(main.picFrame(panel).Tag(), show); });
    Step([&] { main.picFrame(panel).Visible(show); });
    if (show) {
        Step([&] { App().windows.BringToFront(main.picFrame(panel).HWnd()); });
    }
    main.lstPlaylist.Visible(!show);
    if (!show) {
        App().windows.SetFocus(main.lstPlaylist.HWnd());
    }
}

void ApplyTopMost(Widget& form, bool on) {
    App().windows.SetWindowPos(form.HWnd(), on ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                               SWP_NOSIZE | SWP_NOMOVE);
}

void SetTopMost(bool on) {
    frmMAIN& main = App().Main();
    ApplyTopMost(main, on);
    Step([&] { Mark(menukeys::kTopMost, on); });
    main.tglSkin(kTopMostToggle).Value(on);
    settings::kTopMost.Write(on);
}

void BeginDrag(Long X, Long Y) {
    App().DragOrigin = {X, Y};
}

void DragWindow(Handle window, Long X, Long Y) {
    const Rect rect = App().windows.GetWindowRect(App().Main().HWnd());
    const Rect& area = App().WorkArea;
    const Point origin = App().DragOrigin;
    App().windows.SetWindowPos(
        window, HWND_TOP, Snapped(rect.left + X - origin.x, rect.Width(), area.left, area.right),
        Snapped(rect.top + Y - origin.y, rect.Height(), area.top, area.bottom), 0, 0,
        SWP_NOSIZE | SWP_NOZORDER);
}

// What a desktop that places its windows itself makes us believe is no place to come back to.
void EndDrag() {
    if (!App().windows.PlacesWindows()) {
        return;
    }
    const Rect rect = App().windows.GetWindowRect(App().Main().HWnd());
    settings::kX.Write(rect.left);
    settings::kY.Write(rect.top);
}

void RemoveSystemMenuItems() {
    platform::Menus& menus = App().windows.PopupMenus();
    const Handle menu = menus.GetSystemMenu(App().Main().HWnd());
    for (const Long command : {SC_MAXIMIZE, SC_SIZE, SC_MOVE}) {
        menus.RemoveMenu(menu, command, MF_BYCOMMAND);
    }
}

}  // namespace sarnel

// The six panels that can lie over the playlist, and the geometry of the window: dragging it by its
// surface, keeping it on top.
#pragma once

#include "platform/windows/widget.h"

namespace sarnel {

using platform::Handle;
using platform::Long;

/// Opens or closes a panel, by its place in picFrame: its menu item's mark, the panel, and the
/// playlist below it. Panels do not know of each other: closing one of two shows the playlist, with
/// the other one still open in front of it. That is meant.
void ShowPanel(Long panel, bool show);

/// A top-level window above all others, or among them.
void ApplyTopMost(platform::Widget& form, bool on);

/// The main window above all others, or among them: window, menu item, toggle and setting.
void SetTopMost(bool on);

/// A press on the window's surface, at X, Y of the surface that was pressed: a drag may begin here.
void BeginDrag(Long X, Long Y);
/// The window follows the pointer, which is at X, Y of that surface now. It sticks to the edges of
/// the work area from 11 pixels on and never leaves it at the right and the bottom, nor the screen
/// at the left and the top.
void DragWindow(Handle window, Long X, Long Y);
/// The press has ended: the window's place goes to the settings. A place that the desktop gave goes
/// there when the run ends.
void EndDrag();

/// Takes maximise, size and move from the main window's system menu.
void RemoveSystemMenuItems();

}  // namespace sarnel

// Numbers that the system's rules give for messages, styles and flags, kept as they are named so
// that the rules can be read in the code.
#pragma once

#include "platform/base/types.h"

namespace platform {

inline constexpr Long WM_DESTROY = 2;
inline constexpr Long WM_MOVE = 3;       ///< to a child; lParam: left, top << 16, in its parent
inline constexpr Long WM_SIZE = 5;       ///< wParam: SIZE_...; lParam: width, height << 16
inline constexpr Long WM_SETFOCUS = 7;   ///< wParam: the window that lost it
inline constexpr Long WM_KILLFOCUS = 8;  ///< wParam: the window that gets it
inline constexpr Long WM_CLOSE = 16;     ///< a request; nothing is destroyed by itself
inline constexpr Long WM_SETTINGCHANGE = 26;  ///< wParam: SPI_SETWORKAREA after a change of it
inline constexpr Long WM_DISPLAYCHANGE =
    126;                                   ///< wParam: the new density of surfaces; to every window
inline constexpr Long WM_SHOWWINDOW = 24;  ///< wParam: 1 shown, 0 hidden; to the window itself
inline constexpr Long WM_DRAWITEM = 43;    ///< lParam: a record for Menus::DrawRecord
inline constexpr Long WM_MEASUREITEM = 44;   ///< lParam: a record for Menus::MeasureRecord
inline constexpr Long WM_COPYDATA = 74;      ///< lParam: a record for WindowSystem::CopyData
inline constexpr Long WM_CONTEXTMENU = 123;  ///< wParam: the window; lParam: x, y << 16, screen
// Of a text box that is a page; see TextBox.
inline constexpr Long EM_LINESCROLL = 182;    ///< lParam: lines, positive to the text's end
inline constexpr Long EM_GETLINECOUNT = 186;  ///< answers the number of lines as wrapped
inline constexpr Long WM_KEYDOWN = 256;       ///< wParam: virtual key; lParam: modifiers, of keys.h
inline constexpr Long WM_KEYUP = 257;         ///< the same
inline constexpr Long WM_CHAR = 258;          ///< wParam: a code unit
inline constexpr Long WM_IME_COMPOSITION = 271;  ///< WindowSystem::Composition has changed
inline constexpr Long WM_SYSCOMMAND = 274;       ///< wParam: SC_...
// Mouse messages: wParam: MK_...; lParam: x, y << 16, of the client area, each signed. While a
// button is held they go to the window that it was pressed on.
inline constexpr Long WM_MOUSEMOVE = 512;
inline constexpr Long WM_LBUTTONDOWN = 513;
inline constexpr Long WM_LBUTTONUP = 514;
inline constexpr Long WM_LBUTTONDBLCLK = 515;  ///< in place of the second press
inline constexpr Long WM_RBUTTONDOWN = 516;
inline constexpr Long WM_RBUTTONUP = 517;
inline constexpr Long WM_RBUTTONDBLCLK = 518;
inline constexpr Long WM_MBUTTONDOWN = 519;
inline constexpr Long WM_MBUTTONUP = 520;
inline constexpr Long WM_MBUTTONDBLCLK = 521;
/// wParam: delta << 16, and below it MK_...; lParam: x, y << 16, of the screen.
inline constexpr Long WM_MOUSEWHEEL = 522;
inline constexpr Long WM_ENTERMENULOOP = 529;  ///< a popup menu is about to open
inline constexpr Long WM_EXITMENULOOP = 530;   ///< it has gone, and the choice has been acted on
inline constexpr Long WM_DROPFILES = 563;      ///< wParam: a drop for WindowSystem::DragQueryFile
inline constexpr Long WM_MOUSELEAVE = 675;     ///< once, after WindowSystem::TrackMouseLeave
inline constexpr Long WM_HOTKEY = 786;         ///< wParam: id; lParam: modifiers, key << 16
inline constexpr Long WM_TRAY = 1024;          ///< lParam: the mouse message on the tray icon

// What is held down during a mouse message.
inline constexpr Long MK_LBUTTON = 1;
inline constexpr Long MK_RBUTTON = 2;
inline constexpr Long MK_SHIFT = 4;
inline constexpr Long MK_CONTROL = 8;
inline constexpr Long MK_MBUTTON = 16;
inline constexpr Long MK_ALT = 32;

/// One notch of the wheel, away from the user.
inline constexpr Long WHEEL_DELTA = 120;

/// The two halves of a message word, each signed, as a point, and the way back.
inline constexpr Point PointOf(Long word) {
    return {static_cast<std::int16_t>(word & 0xFFFF), static_cast<std::int16_t>(word >> 16)};
}
inline constexpr Long WordOf(Point point) {
    return (point.x & 0xFFFF) | static_cast<Long>(static_cast<std::uint32_t>(point.y) << 16);
}

inline constexpr Long SIZE_RESTORED = 0;
inline constexpr Long SIZE_MINIMIZED = 1;

// Commands of a window's system menu.
inline constexpr Long SC_SIZE = 61440;
inline constexpr Long SC_MOVE = 61456;
inline constexpr Long SC_MINIMIZE = 61472;
inline constexpr Long SC_MAXIMIZE = 61488;
inline constexpr Long SC_CLOSE = 61536;
inline constexpr Long SC_RESTORE = 61728;

inline constexpr Long SPI_SETWORKAREA = 47;

// ShowWindow.
inline constexpr Long SW_HIDE = 0;
inline constexpr Long SW_SHOWNORMAL = 1;
inline constexpr Long SW_SHOWNOACTIVATE = 4;
inline constexpr Long SW_SHOW = 5;
inline constexpr Long SW_MINIMIZE = 6;
inline constexpr Long SW_RESTORE = 9;

// SetWindowPos: second argument and flags.
inline constexpr Handle HWND_TOP = 0;
inline constexpr Handle HWND_TOPMOST = -1;
inline constexpr Handle HWND_NOTOPMOST = -2;
inline constexpr Long SWP_NOSIZE = 1;
inline constexpr Long SWP_NOMOVE = 2;
inline constexpr Long SWP_NOZORDER = 4;
inline constexpr Long SWP_NOACTIVATE = 16;

// RegisterHotKey.
inline constexpr Long MOD_ALT = 1;
inline constexpr Long MOD_CONTROL = 2;
inline constexpr Long MOD_SHIFT = 4;
inline constexpr Long MOD_WIN = 8;

// SHChangeNotify.
inline constexpr Long SHCNE_ASSOCCHANGED = 0x8000000;

// SetWindowLong and GetWindowLong.
inline constexpr Long GWL_STYLE = -16;
inline constexpr Long GWL_EXSTYLE = -20;
inline constexpr Long WS_EX_ACCEPTFILES = 16;
/// System menu (524288) and minimise box (131072).
inline constexpr Long kSystemMenuAndMinimise = 655360;

}  // namespace platform

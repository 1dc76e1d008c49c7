// Numbers that the system's rules give for messages, styles and flags, kept as they are named so
// that the rules can be read in the code.
#pragma once

#include "platform/types.h"

namespace platform {

inline constexpr Long WM_DESTROY = 2;
inline constexpr Long WM_SIZE = 5;            ///< wParam: SIZE_...; lParam: width, height << 16
inline constexpr Long WM_SETFOCUS = 7;        ///< wParam: the window that lost it
inline constexpr Long WM_KILLFOCUS = 8;       ///< wParam: the window that gets it
inline constexpr Long WM_CLOSE = 16;          ///< a request; nothing is destroyed by itself
inline constexpr Long WM_SETTINGCHANGE = 26;  ///< wParam: SPI_SETWORKAREA after a change of it
inline constexpr Long WM_DRAWITEM = 43;
inline constexpr Long WM_MEASUREITEM = 44;
inline constexpr Long WM_COPYDATA = 74;  ///< lParam: a record for WindowSystem::CopyData
inline constexpr Long WM_CONTEXTMENU = 123;
inline constexpr Long WM_KEYDOWN = 256;     ///< wParam: virtual key; lParam: modifiers 1, 2, 4
inline constexpr Long WM_KEYUP = 257;       ///< the same
inline constexpr Long WM_SYSCOMMAND = 274;  ///< wParam: SC_...
inline constexpr Long WM_MOUSEMOVE = 512;
inline constexpr Long WM_MOUSEWHEEL = 522;  ///< wParam: delta << 16; lParam: x, y << 16, screen
inline constexpr Long WM_DROPFILES = 563;   ///< wParam: a drop for WindowSystem::DragQueryFile
inline constexpr Long WM_MOUSELEAVE = 675;
inline constexpr Long WM_HOTKEY = 786;  ///< wParam: id; lParam: modifiers, key << 16
inline constexpr Long WM_TRAY = 1024;   ///< lParam: the mouse message on the tray icon

inline constexpr Long WM_RBUTTONUP = 517;
inline constexpr Long WM_LBUTTONDBLCLK = 515;

inline constexpr Long SIZE_RESTORED = 0;
inline constexpr Long SIZE_MINIMIZED = 1;

inline constexpr Long SC_CLOSE = 61536;

inline constexpr Long SPI_SETWORKAREA = 47;
inline constexpr Long SPI_GETWORKAREA = 48;

// ShowWindow.
inline constexpr Long SW_HIDE = 0;
inline constexpr Long SW_SHOWNORMAL = 1;
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
inline constexpr Long SWP_NOREDRAW = 8;
inline constexpr Long SWP_NOACTIVATE = 16;

// SetWindowLong and GetWindowLong.
inline constexpr Long GWL_STYLE = -16;
inline constexpr Long GWL_EXSTYLE = -20;
inline constexpr Long WS_EX_ACCEPTFILES = 16;
/// System menu (524288) and minimise box (131072).
inline constexpr Long kSystemMenuAndMinimise = 655360;

}  // namespace platform

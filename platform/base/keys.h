// Keys and the mouse's buttons, as the system's rules number them. A virtual-key code of a letter
// or a digit is its capital ASCII code.
#pragma once

#include "platform/base/types.h"

namespace platform {

inline constexpr Long VK_BACK = 8;  ///< Backspace
inline constexpr Long VK_TAB = 9;
inline constexpr Long VK_CLEAR = 12;  ///< 5 of the numeric pad while it moves the caret
inline constexpr Long VK_RETURN = 13;
inline constexpr Long VK_SHIFT = 16;
inline constexpr Long VK_CONTROL = 17;
inline constexpr Long VK_MENU = 18;  ///< Alt
inline constexpr Long VK_PAUSE = 19;
inline constexpr Long VK_CAPITAL = 20;  ///< Caps Lock
inline constexpr Long VK_ESCAPE = 27;
inline constexpr Long VK_SPACE = 32;
inline constexpr Long VK_PRIOR = 33;  ///< Page Up
inline constexpr Long VK_NEXT = 34;   ///< Page Down
inline constexpr Long VK_END = 35;
inline constexpr Long VK_HOME = 36;
inline constexpr Long VK_LEFT = 37;
inline constexpr Long VK_UP = 38;
inline constexpr Long VK_RIGHT = 39;
inline constexpr Long VK_DOWN = 40;
inline constexpr Long VK_SNAPSHOT = 44;  ///< Print Screen
inline constexpr Long VK_INSERT = 45;
inline constexpr Long VK_DELETE = 46;
inline constexpr Long VK_HELP = 47;
inline constexpr Long VK_LWIN = 91;
inline constexpr Long VK_RWIN = 92;
inline constexpr Long VK_APPS = 93;  ///< the menu key
// The numeric pad; its other digits follow.
inline constexpr Long VK_NUMPAD0 = 96;
inline constexpr Long VK_MULTIPLY = 106;
inline constexpr Long VK_ADD = 107;
inline constexpr Long VK_SUBTRACT = 109;
inline constexpr Long VK_DECIMAL = 110;
inline constexpr Long VK_DIVIDE = 111;
inline constexpr Long VK_F1 = 112;  ///< up to F24 at 135
inline constexpr Long VK_F5 = 116;
inline constexpr Long VK_F12 = 123;
inline constexpr Long VK_NUMLOCK = 144;
inline constexpr Long VK_SCROLL = 145;
// Signs, by what they are on the plainest keyboard.
inline constexpr Long VK_OEM_1 = 186;  ///< ;
inline constexpr Long VK_OEM_PLUS = 187;
inline constexpr Long VK_OEM_COMMA = 188;
inline constexpr Long VK_OEM_MINUS = 189;
inline constexpr Long VK_OEM_PERIOD = 190;
inline constexpr Long VK_OEM_2 = 191;    ///< /
inline constexpr Long VK_OEM_3 = 192;    ///< `
inline constexpr Long VK_OEM_4 = 219;    ///< [
inline constexpr Long VK_OEM_5 = 220;    ///< backslash
inline constexpr Long VK_OEM_6 = 221;    ///< ]
inline constexpr Long VK_OEM_7 = 222;    ///< '
inline constexpr Long VK_OEM_102 = 226;  ///< beside the left Shift, on keyboards that have it

// Modifiers that are held, added up. What goes with a mouse message in its wParam are other
// numbers: MK_... in messages.h.
inline constexpr Long kShiftBit = 1;
inline constexpr Long kCtrlBit = 2;
inline constexpr Long kAltBit = 4;

// A button of the mouse, or, added up, all that are held; again not MK_...
inline constexpr Long kLeftButton = 1;
inline constexpr Long kRightButton = 2;
inline constexpr Long kMiddleButton = 4;

/// Whether the key with these modifiers is one to write with: a character without Ctrl and Alt,
/// Backspace, Del, Home, End and the arrows with and without Shift and Ctrl, and Ctrl with A, C, V,
/// X and Z.
bool IsWritingKey(Long code, Long modifiers);

}  // namespace platform

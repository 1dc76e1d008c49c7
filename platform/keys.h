// Virtual-key codes, as the system's rules give them. Letters and digits are their capital ASCII
// codes.
#pragma once

#include "platform/types.h"

namespace platform {

inline constexpr Long VK_BACK = 8;  ///< Backspace
inline constexpr Long VK_RETURN = 13;
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
inline constexpr Long VK_INSERT = 45;
inline constexpr Long VK_DELETE = 46;
inline constexpr Long VK_ADD = 107;       ///< plus of the numeric pad
inline constexpr Long VK_SUBTRACT = 109;  ///< minus of the numeric pad
inline constexpr Long VK_F12 = 123;

// Modifiers of a key message.
inline constexpr Long kShiftBit = 1;
inline constexpr Long kCtrlBit = 2;
inline constexpr Long kAltBit = 4;

}  // namespace platform

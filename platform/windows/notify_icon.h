// The record by which a program speaks to the tray, field by field as the rules lay it out.
#pragma once

#include <array>
#include <cstddef>

#include "platform/base/types.h"

namespace platform {

// Messages of Shell_NotifyIcon.
inline constexpr Long NIM_ADD = 0;
inline constexpr Long NIM_MODIFY = 1;
inline constexpr Long NIM_DELETE = 2;
/// Message, icon and tip of the record are to be taken.
inline constexpr Long kNotifyMessageIconTip = 7;

struct NotifyIconData {
    static constexpr std::size_t kTipBytes = 100;

    Long cbSize = 124;
    Handle hWnd = 0;
    Long uID = 0;
    Long uFlags = kNotifyMessageIconTip;
    Long uCallbackMessage = 0;  ///< sent to hWnd; lParam: the mouse message on the icon
    Handle hIcon = 0;
    /// Narrow code page; ends at the first NUL, or at its end if there is none.
    std::array<char, kTipBytes> szTip{};
};
static_assert(sizeof(NotifyIconData) == 124);

}  // namespace platform

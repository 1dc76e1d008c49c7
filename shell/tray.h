// The program's icon in the notification area: three thin wrappers of Shell_NotifyIcon. None looks
// at what that answers.
#pragma once

#include <string_view>

#include "platform/windows/window_system.h"

namespace sarnel {

using platform::Handle;

/// What the calls below hand over: the tip and a NUL, filled up with blanks, or as much of it as
/// there is room for.
platform::NotifyIconData TrayRecord(Handle window, Handle icon, std::u16string_view tip);

/// Adds the icon of a window. `tip`: what is shown beside the pointer, the first 100 bytes of it.
void TrayAdd(platform::WindowSystem& windows, Handle window, Handle icon, std::u16string_view tip);
void TrayModify(platform::WindowSystem& windows, Handle window, Handle icon,
                std::u16string_view tip);
void TrayDelete(platform::WindowSystem& windows, Handle window, Handle icon);

}  // namespace sarnel

// The open seams: calls into what is not built yet, all of them in one place. Each does nothing and
// is called where, and in the order in which, its owner will stand; the owner takes its seam out of
// here.
#pragma once

#include <string_view>

#include "platform/base/types.h"

namespace sarnel::seams {

using platform::Long;

// The tooltip at the pointer, hidden by itself after so many milliseconds.
inline void ShowTooltip(std::u16string_view /*text*/, Long /*timeOut*/) {}

// The tray icon, its tip and its menu.
inline void TrayAdd(std::u16string_view /*tip*/) {}
inline void TrayModify(std::u16string_view /*tip*/) {}
inline void TrayDelete() {}
inline void TrayMenu() {}

}  // namespace sarnel::seams

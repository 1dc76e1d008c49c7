// The open seams: calls into what is not built yet, all of them in one place. Each does nothing and
// is called where, and in the order in which, its owner will stand; the owner takes its seam out of
// here.
#pragma once

#include <string_view>

namespace sarnel::seams {

// The lyrics panel, filled for the current item.
inline void ShowLyrics(bool /*refresh*/) {}

// The lyrics slider has been moved by the wheel.
inline void ScrollLyrics() {}

// The surfaces of picScrollText and picInfoDisplay, and the pulse of the selection colours.
inline void DrawScrollText() {}
inline void DrawInfoDisplay() {}

// The tray icon, its tip and its menu.
inline void TrayAdd(std::u16string_view /*tip*/) {}
inline void TrayModify(std::u16string_view /*tip*/) {}
inline void TrayDelete() {}
inline void TrayMenu() {}

// The pictures of a slider and its stick.
inline void DrawSlider() {}

// The table and the pictures of a skin, and their application to the controls: until then these
// have a place in the static layout and no looks.
inline void ApplySkin() {}

// The system menu of the main window loses size, move and maximise.
inline void RemoveSystemMenuItems() {}

// The commands of the menu, of key combinations and of the toggles (hMenu_Click) have no callers
// yet.

}  // namespace sarnel::seams

// The order in which the system comes up and goes down, and the procedures that see the messages of
// the main window and of three of its controls before these do.
#pragma once

#include "platform/menus/menu.h"
#include "platform/windows/window_system.h"

namespace sarnel {

using platform::Long;

class frmMAIN;

// Start (startup.cpp), from the main window's load event.

/// Puts our procedures in front of four windows; the main window accepts dropped files from here
/// on.
void InstallWindowHooks();
/// Settings in their order: skin, menu, hot keys, place, volume, modes, effects. The host gets the
/// volume and the seven effects before the load returns.
void LoadSettings();
/// Registers the ten system-wide keys, all with Ctrl and Alt.
void CreateHotKeys();

// Stop (startup.cpp), from its unload event.

/// Scroll timer, playback, playlist file, then the former procedures, in this order.
void RemoveWindowHooks();

/// Minimises, or shows, restores and brings to the front.
void SetMinimized(bool minimise);
/// Reads the desktop's work area into the program's state.
void ReadWorkArea();

// Window procedures (windowprocs.cpp).

Long MainWindowProc(const platform::Message& message);
Long PlaylistWindowProc(const platform::Message& message);
Long FilesAndFoldersWindowProc(const platform::Message& message);
Long LyricsWindowProc(const platform::Message& message);

/// A mouse message on the tray icon (traypopup.cpp).
void OnTray(Long mouseMessage);

/// Closes as the close button, the hot key "Exit" and the close message do.
void RequestClose();

// Event handlers of the main window. They are attached once, when it is made.

/// Buttons, toggles and sliders (buttons.cpp).
void AttachButtonHandlers(frmMAIN& main);
void btnSkin_Click(Long Index);
void tglSkin_Click(Long Index);
/// The user has moved the slider.
void sldSkin_Scroll(Long Index);

/// Background, title, display and playlist (surfaces.cpp).
void AttachSurfaceHandlers(frmMAIN& main);
// Alignments of popups.
inline constexpr Long kCentred = platform::TPM_CENTERALIGN;
inline constexpr Long kCentredAbove = platform::TPM_CENTERALIGN | platform::TPM_BOTTOMALIGN;
/// Opens the command menu at the pointer; either button chooses in it. An empty key is the whole
/// menu; else it names an item whose submenu opens by itself.
void ShowMenu(std::u16string_view key, Long align);

/// The panels that have handlers of their own: associationpanel.cpp, lyricspanel.cpp,
/// browserpanel.cpp, searchpanel.cpp.
void AttachAssociationHandlers(frmMAIN& main);
void AttachLyricsHandlers(frmMAIN& main);
void AttachBrowserHandlers(frmMAIN& main);
void AttachSearchHandlers(frmMAIN& main);

// Keys (keys.cpp).

void hKeys_HotKeyPress(std::u16string_view sName);
void lstPlaylist_KeyDown(Long KeyCode, Long Shift);
void lstPlaylist_KeyUp(Long KeyCode, Long Shift);

}  // namespace sarnel

// What a desktop reports: what its user does, and what it does by itself. A driver queues these as
// they happen, and the window system takes them one by one (Driver::NextEvent). docs/drivers.md
// tells which of them answer which calls.
//
// Points are pixels of the component's screen, which goes on beyond 0 on both sides: a screen at
// the left of the first one has negative columns. `window` is a handle given to CreateTopLevel;
// once DestroyTopLevel has been called for it nothing more is reported of it, and what still waits
// in the queue is passed over. `shift` holds the modifiers at that moment, kShiftBit and so on,
// added up.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/base/keys.h"
#include "platform/base/types.h"

namespace platform {

// Windows and the screen. A driver reports what the desktop has done, and never what a call of its
// own members brought about. Where the window system follows with a call that says the same, as
// after the first two of these, that call finds the window as it is and changes nothing.

/// Somebody wants the window closed: the task bar, Alt+F4. It stays as it is until DestroyTopLevel
/// or SetTopLevelVisible, if these come at all.
struct CloseRequested {
    Handle window;
};
/// The desktop has minimised the window. SetTopLevelMinimised(window, true) follows.
struct MinimisedByDesktop {
    Handle window;
};
/// The desktop has brought a minimised window back, or does not minimise windows at all. The window
/// is shown if it was hidden, and SetTopLevelMinimised(window, false) follows if it is known as
/// minimised.
struct RestoredByDesktop {
    Handle window;
};
/// Driver::WorkArea or Driver::WorkAreaAt may answer something else from now on.
struct WorkAreaChanged {};
/// Driver::Density answers something else from now on.
struct DensityChanged {};
/// A window that nobody saw (Driver::IsSeen) is to be seen again, or is about to be: its picture
/// is wanted, by ShowPicture, even if nothing has changed. IsSeen must answer True by then.
struct SeenAgain {
    Handle window;
};
/// Files dropped at a point of a window; paths are raw bytes in the order that the source gave.
struct FilesDropped {
    Handle window;
    Point ptScreen;
    std::vector<std::string> paths;
};
/// The desktop has put a window, or a popup, somewhere: `ptScreen` is its left top corner. It is
/// there already, so no SetTopLevelRect follows. Its size is never the desktop's to change.
struct MovedByDesktop {
    Handle window;
    Point ptScreen;
};

// The pointer. Reported while it is over one of our windows, everywhere while a button is held that
// went down over one of them, and everywhere while GrabInput is in force.

/// The pointer has moved. Of several moves that nobody has taken yet the last one will do.
struct PointerMoved {
    Point ptScreen;
    Long shift = 0;
};
/// The pointer is over none of our windows any more.
struct PointerLeft {};
/// A button went down or up. Each press is followed by one release, wherever the pointer is by
/// then: a driver that can miss it has to find out and report it. A second press that makes a
/// double click is a press like others: the window system finds that out itself.
struct ButtonChanged {
    Point ptScreen;
    Long button = kLeftButton;
    bool down = true;
    Long shift = 0;
};
/// Whole notches of the wheel, positive away from the user. A driver of a finer wheel adds its
/// steps up.
struct WheelTurned {
    Point ptScreen;
    Long notches = 0;
    Long shift = 0;
};

// The keyboard. Reported while one of our windows is the active one, and while GrabInput is in
// force; which control it is for the window system knows. One press is a KeyChanged and then, if
// the key types something, a TextTyped right behind it: whoever eats the key eats that text.

/// A key went down (again and again while it is held) or up: a virtual-key code (keys.h), letters
/// and digits by what the key types without modifiers. A modifier counts in `shift` from its own
/// press on, and no more from its own release on. Keys that are down when the window ceases to be
/// the active one are reported as going up.
struct KeyChanged {
    Long code = 0;
    Long shift = 0;
    bool down = true;
};
/// Text that keys or an input method have put together. Backspace, Tab, Enter and Esc come as 8, 9,
/// 13 and 27; Ctrl with a letter as 1 to 26.
struct TextTyped {
    std::u16string text;
};
/// Text that an input method is still putting together: shown at the caret of the window that has
/// the focus, and no part of its text. Only where the user writes (Driver::SetTextInput). Empty:
/// there is none any more; what came of it, if anything, is reported as typed. `caret`: where in it
/// the caret stands, in code units; none: it is not shown.
struct TextComposed {
    std::u16string text;
    std::optional<std::size_t> caret;
};

/// A combination of keys that GrabHotKey has taken was pressed. `key` is the id given there.
struct HotKeyPressed {
    Handle key;
};
/// The user has done something to a window's tray icon.
struct TrayIconUsed {
    enum class Action {
        kOpen,  ///< a double click, or whatever the desktop has for it
        kMenu   ///< asks for a menu at the pointer
    };
    Handle window;
    Action action;
};

/// The desktop has ended what GrabInput began: somebody else has taken the pointer or the keyboard,
/// or a button went down where it could not be told. Never after ReleaseInput. The window system
/// closes its menus then, which calls ReleaseInput all the same.
struct InputLost {};

using DriverEvent =
    std::variant<CloseRequested, MinimisedByDesktop, RestoredByDesktop, WorkAreaChanged,
                 DensityChanged, SeenAgain, FilesDropped, MovedByDesktop, PointerMoved, PointerLeft,
                 ButtonChanged, WheelTurned, KeyChanged, TextTyped, TextComposed, InputLost,
                 HotKeyPressed, TrayIconUsed>;

}  // namespace platform

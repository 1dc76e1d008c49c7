// The one thin face that any desktop must offer. A driver shows finished pictures in top-level
// windows, hands in raw input, waits, measures and renders text. It knows nothing of lists, skins
// or menus, and never calls into the window system: what happens is queued as a DriverEvent and
// pulled from there. Coordinates are pixels of the component's own, unscaled, screen; a driver that
// magnifies converts at its edge.
//
// Pure members must be implemented. The others describe surroundings that a desktop may lack; their
// defaults do nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/base/keys.h"
#include "platform/base/types.h"
#include "platform/drawing/surface.h"
#include "platform/files/files.h"

namespace platform {

/// A font as the rules name it; size in points, 96 pixels an inch.
struct Font {
    std::u16string name = u"Tahoma";
    double size = 8.25;
    bool bold = false;
    bool italic = false;
    bool operator==(const Font&) const = default;
};

// What a desktop reports. `window` is the handle given to CreateTopLevel.
struct CloseRequested {
    Handle window;
};
struct MinimisedByDesktop {
    Handle window;
};
struct RestoredByDesktop {
    Handle window;
};
struct WorkAreaChanged {};
/// Driver::Density answers something else from now on.
struct DensityChanged {};
/// A window that nobody saw (Driver::IsSeen) is to be seen again, or is about to be: its picture
/// is wanted, by ShowPicture, even if nothing has changed.
struct SeenAgain {
    Handle window;
};
/// Files dropped at a point of a window; paths are raw bytes in the order that the source gave.
struct FilesDropped {
    Handle window;
    Point ptScreen;
    std::vector<std::string> paths;
};
/// The window manager has put a window somewhere; it is there already.
struct MovedByDesktop {
    Handle window;
    Point ptScreen;
};

// Input. `shift` holds the modifiers (kShiftBit ...) at that moment.

/// The pointer has moved over one of our windows, or anywhere while a button is held.
struct PointerMoved {
    Point ptScreen;
    Long shift = 0;
};
/// The pointer is over none of our windows any more.
struct PointerLeft {};
/// Double clicks are found out by the window system.
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
/// A key went down (again and again while it is held) or up: a virtual-key code, letters and digits
/// by what the key types. It goes to the window that has the focus.
struct KeyChanged {
    Long code = 0;
    Long shift = 0;
    bool down = true;
};
/// Text that keys or an input method have put together, for the window that has the focus.
/// Backspace, Tab, Enter and Esc come as 8, 9, 13 and 27; Ctrl with a letter as 1 to 26.
struct TextTyped {
    std::u16string text;
};
/// Text that an input method is still putting together, for the window that has the focus: shown
/// at its caret, and no part of its text. Empty: there is none any more; what came of it, if
/// anything, is reported as typed. `caret`: where in it the caret stands, in code units; none: it
/// is not shown.
struct TextComposed {
    std::u16string text;
    std::optional<std::size_t> caret;
};

/// A combination of keys that GrabHotKey has taken was pressed.
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
/// or a button went down where it could not be told.
struct InputLost {};

using DriverEvent =
    std::variant<CloseRequested, MinimisedByDesktop, RestoredByDesktop, WorkAreaChanged,
                 DensityChanged, SeenAgain, FilesDropped, MovedByDesktop, PointerMoved, PointerLeft,
                 ButtonChanged, WheelTurned, KeyChanged, TextTyped, TextComposed, InputLost,
                 HotKeyPressed, TrayIconUsed>;

/// What a popup is for.
enum class PopupKind {
    kTip,  ///< it shows something, and takes no input
    kMenu  ///< it, or a popup that it is a popup of, has the input (GrabInput) while it is there
};

/// Where the user writes: a top-level window, and the caret's place in it.
struct TextInput {
    Handle window = 0;
    Rect caret;
    bool operator==(const TextInput&) const = default;
};

/// A place that folders begin at: the root folder, the user's own, a mounted volume.
struct Drive {
    std::u16string root;   ///< with a separator at its end
    std::u16string label;  ///< of the volume; empty if it has none
    bool operator==(const Drive&) const = default;
};

/// A combination of keys that is to work wherever the focus is.
struct KeyCombination {
    std::u16string name;  ///< what it does, for desktops that show it
    Long modifiers = 0;   ///< MOD_ALT ...
    Long key = 0;         ///< virtual-key code
    bool operator==(const KeyCombination&) const = default;
};

/// The default value of a key of the shell's registry.
struct RegistryValue {
    std::u16string key;  ///< path, its parts joined by a backslash
    std::u16string text;
    bool operator==(const RegistryValue&) const = default;
};

class Driver {
  public:
    virtual ~Driver() = default;

    // Time and waiting.

    /// Milliseconds since some start; never goes back.
    virtual Millis Now() const = 0;

    /// Waits until `deadline` (for ever if none), or returns sooner when there is an event, or when
    /// a watched descriptor had something to do. A virtual clock moves to the deadline at once.
    virtual void WaitUntil(std::optional<Millis> deadline) = 0;

    /// How many milliseconds a timer of this period may be late, so as to be called together with
    /// another one: each waking of a process costs more than what most timers do.
    virtual Millis Lateness(Long /*period*/) const { return 0; }

    /// The oldest event not yet taken.
    virtual std::optional<DriverEvent> NextEvent() = 0;

    /// Calls `onReadable` from WaitUntil whenever the descriptor can be read. Not owned; an empty
    /// function ends the watch.
    virtual void Watch(int descriptor, std::function<void()> onReadable) = 0;

    /// Whether anything can still be reported by itself. Where nobody is, as on a virtual desktop
    /// without queued events, a menu would wait for its user for ever.
    virtual bool ExpectsInput() const { return true; }

    /// A fresh seed at each call, for random picks.
    virtual std::uint64_t RandomSeed() = 0;

    // The screen.

    virtual Size ScreenSize() const = 0;

    /// How fine pictures and texts are wanted (Surface::Density), from 1 on. Another one is
    /// reported as DensityChanged; pictures that were composed before it may still come then.
    virtual Long Density() const { return 1; }

    /// The smallest rectangle around what panels and docks leave of all screens.
    virtual Rect WorkArea() const = 0;

    /// The same of the screen that a point is on.
    virtual Rect WorkAreaAt(Point /*ptScreen*/) const { return WorkArea(); }

    /// Where the pointer is.
    virtual Point Pointer() const = 0;

    // Top-level windows. The window system calls these once its own record has changed.

    /// Whether windows stand where SetTopLevelRect puts them. Where they do not, places tell how
    /// popups lie to their owners, and nothing else: they are not worth keeping. A window that is
    /// moved while a button is held is dragged by the desktop from then on: MovedByDesktop tells
    /// that it is where it was, as far as anybody knows, and the button's release is reported.
    virtual bool PlacesWindows() const { return true; }

    virtual void CreateTopLevel(Handle /*window*/) {}
    virtual void DestroyTopLevel(Handle /*window*/) {}
    virtual void SetTopLevelVisible(Handle /*window*/, bool /*visible*/) {}
    virtual void SetTopLevelRect(Handle /*window*/, const Rect& /*rect*/) {}
    virtual void SetTopLevelTitle(Handle /*window*/, std::u16string_view /*title*/) {}
    virtual void SetTopLevelTopMost(Handle /*window*/, bool /*topMost*/) {}
    virtual void SetTopLevelMinimised(Handle /*window*/, bool /*minimised*/) {}
    virtual void ActivateTopLevel(Handle /*window*/) {}

    /// Says of a window, before it is shown, that it is a popup of another one, which may be a
    /// popup itself: above all others, in no task bar, and never activated. A desktop that cannot
    /// show all of it where it is wanted may put it elsewhere, and tells by MovedByDesktop.
    virtual void SetTopLevelPopup(Handle /*window*/, Handle /*owner*/, PopupKind /*kind*/) {}
    /// From now on all input of pointer and keyboard is reported, wherever the pointer is and
    /// whichever window is active; presses and keys reach nobody else. The popup is visible. Should
    /// the grab end by itself, InputLost is reported.
    virtual void GrabInput(Handle /*popup*/) {}
    virtual void ReleaseInput() {}

    /// Whether pictures are to be composed at all; a driver without a screen saves the work.
    virtual bool ShowsPictures() const { return false; }
    /// Whether anybody can see a visible window, as far as the desktop says so. The picture of one
    /// that nobody sees need not be composed; SeenAgain tells when it is wanted.
    virtual bool IsSeen(Handle /*window*/) const { return true; }
    /// The picture of a visible window, in its size, and where it differs from the last one. The
    /// picture lives until the window changes its size or goes; its pixels change only between two
    /// calls, always within the rectangles of the next one.
    virtual void ShowPicture(Handle /*window*/, const Surface& /*picture*/,
                             std::span<const Rect> /*changed*/) {}

    // Writing.

    /// Where the user writes from now on; none: keys are nothing but commands. Input methods are to
    /// take part only while he writes.
    virtual void SetTextInput(const std::optional<TextInput>& /*input*/) {}
    /// What was last reported as TextComposed has been taken as it stands: an input method is to
    /// forget it, and nothing more comes of it.
    virtual void EndComposing() {}

    // Text. One line each; what is no printable character has some harmless width.

    /// Width of one line in pixels, and the height of a line of that font.
    virtual Size MeasureText(const Font& font, std::u16string_view text) const = 0;
    /// The columns `left` to `left + width` of the picture of a line, fewer where the line ends, as
    /// high as MeasureText says, for surfaces of that density: its glyphs are those of a font so
    /// many times as large, and it is no wider than what MeasureText says, whatever the density.
    virtual TextPicture RenderText(const Font& font, std::u16string_view text, Long left,
                                   Long width, Long density) const = 0;
    /// How far from the line's left edge the caret stands in front of the unit `index`, 0 to the
    /// text's length.
    virtual Long TextOffset(const Font& font, std::u16string_view text, std::size_t index) const {
        return MeasureText(font, text.substr(0, index)).width;
    }

    // Surroundings.

    /// Whether files can be written; the system's own disk answers for itself, file by file.
    virtual Disk GetDisk() const { return Disk::kWritable; }
    virtual std::u16string ClipboardText() const { return {}; }
    virtual void SetClipboardText(std::u16string_view /*text*/) {}
    /// Shows a document, by path or address, with what the desktop has for it.
    virtual void OpenDocument(std::u16string_view /*pathOrAddress*/) {}
    /// Where folders begin, in the order in which users are to see them.
    virtual std::vector<Drive> Drives() const { return {}; }

    // The shell.

    /// Takes a combination of keys from the desktop; `id` names it in HotKeyPressed. False if
    /// somebody else has it. A driver that still waits for its desktop answers True, and a
    /// combination that turns out to be taken then never comes.
    virtual bool GrabHotKey(Handle /*id*/, const KeyCombination& /*key*/) { return true; }
    virtual void ReleaseHotKey(Handle /*id*/) {}
    /// Why the last operation that failed did so, for people; empty if nobody knows.
    virtual std::u16string LastErrorText() const { return {}; }

    /// Shows a window's icon in the tray, or changes its tip. Where there is no tray, and while it
    /// is away, the window stays in the task bar instead: hiding it while it is minimised leaves
    /// its entry there.
    virtual void ShowTrayIcon(Handle /*window*/, std::u16string_view /*tip*/) {}
    virtual void HideTrayIcon(Handle /*window*/) {}

    /// A value has been written into the shell's registry.
    virtual void RegistryWritten(const RegistryValue& /*value*/) {}
    /// Makes true on the desktop what the registry's values, in order of their keys, say of file
    /// types, folders and who opens them. Does not wait for it.
    virtual void PublishAssociations(const std::vector<RegistryValue>& /*registry*/) {}

    // Pages of the network. Addresses are http or https, with any character as it stands; a driver
    // escapes what cannot be sent.

    /// Whether there is any way to where the address leads: always to this machine itself.
    virtual bool IsOnline(std::u16string_view /*address*/) const { return false; }
    /// Forgets the copy that was kept of a page, and asks for none at the next download.
    virtual void ForgetDownload(std::u16string_view /*address*/) {}
    /// The bytes of a page, or of the copy that was kept of it; none if there is no such page, or
    /// not in time. Waits; what the desktop reports meanwhile is queued, and windows stay whole.
    virtual std::optional<std::string> Download(std::u16string_view /*address*/) { return {}; }

    /// Called now and then in work that lets no events run: what the desktop reports is queued, and
    /// what has been covered and uncovered of the windows is shown again.
    virtual void KeepShown() {}

    /// Two presses within so many milliseconds are a double click.
    virtual Millis DoubleClickTime() const { return 500; }
};

}  // namespace platform

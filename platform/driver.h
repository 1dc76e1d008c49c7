// The one thin face that any desktop must offer. A driver shows finished pictures in top-level
// windows, hands in raw input, waits, measures and renders text. It knows nothing of lists, skins
// or menus, and never calls into the window system: what happens is queued as a DriverEvent and
// pulled from there. docs/drivers.md is the guide: a first driver, the order of calls, and a test
// that any driver can be put to.
//
// Threads: there is one, that which makes the driver. Every member is called on it, and every
// function that a driver is given is called on it.
//
// Units: coordinates are pixels of the component's own, unscaled, screen; a driver that magnifies
// converts at its edge. Rectangles are half-open. A place may be any number, also a negative one or
// one on no screen, since it may come from a settings file; a size is 0 or more.
//
// Windows: borderless, without title bar or frame. A handle that CreateTopLevel has not given, or
// that DestroyTopLevel has taken back, makes a member do nothing; 0 is none. What one of these
// members brings about is not reported as an event.
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
#include <vector>

#include "platform/base/types.h"
#include "platform/drawing/surface.h"
#include "platform/driver_events.h"
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
    /// a watched descriptor had something to do; now and then it may return for nothing. Returns at
    /// once while an event waits to be taken, and when the deadline is past, but not before it has
    /// looked what there is. A virtual clock moves to the deadline at once. Entered again from
    /// within a watch's function, as by a menu that opens there.
    virtual void WaitUntil(std::optional<Millis> deadline) = 0;

    /// By how many milliseconds the calls of a timer of this period may come late. Timers that fall
    /// due within that time of each other are called in one waking of the process, which costs more
    /// than most of what they do. 0: each is called on time.
    virtual Millis Lateness(Long /*period*/) const { return 0; }

    /// The oldest event not yet taken; none if there is none. Does not wait.
    virtual std::optional<DriverEvent> NextEvent() = 0;

    /// Calls `onReadable` from WaitUntil, and from nowhere else, whenever the descriptor can be
    /// read. Not owned. A new function takes the place of the former one; an empty one ends the
    /// watch. The function may call any member: end its own watch, end or begin others, wait. While
    /// it waits without having read, it is called within itself.
    virtual void Watch(int descriptor, std::function<void()> onReadable) = 0;

    /// Whether an event may still come that nobody has asked for: a key, a press. On a desktop with
    /// a user always. One without answers whether events are queued; when there are none an open
    /// menu closes, since nobody could ever choose from it.
    virtual bool ExpectsInput() const { return true; }

    /// A fresh seed at each call, for random picks.
    virtual std::uint64_t RandomSeed() = 0;

    // The screen.

    /// Of the first screen.
    virtual Size ScreenSize() const = 0;

    /// How fine pictures and texts are wanted (Surface::Density), from 1 on. Another one is
    /// reported as DensityChanged; until that has been taken, pictures of the former density come,
    /// and are shown as they are: Surface::AtDensity.
    virtual Long Density() const { return 1; }

    /// The smallest rectangle around what panels and docks leave of all screens. Never empty.
    virtual Rect WorkArea() const = 0;

    /// The same of the screen that a point is on; where none is, that of all.
    virtual Rect WorkAreaAt(Point /*ptScreen*/) const { return WorkArea(); }

    /// Where the pointer is, or was last known to be.
    virtual Point Pointer() const = 0;

    // Top-level windows. The window system calls these once its own record has changed.

    /// Whether windows stand where SetTopLevelRect puts them. Where they do not, places tell how
    /// popups lie to their owners, and nothing else: they are not worth keeping. A window that is
    /// moved while a button is held is dragged by the desktop from then on: MovedByDesktop tells
    /// that it is where it was, as far as anybody knows, and the button's release is reported.
    virtual bool PlacesWindows() const { return true; }

    /// A hidden window without place, title or picture. SetTopLevelRect follows at once.
    virtual void CreateTopLevel(Handle /*window*/) {}
    /// The window and its picture go, whether it is shown or not. Popups whose owner it is stay,
    /// and go by themselves.
    virtual void DestroyTopLevel(Handle /*window*/) {}
    virtual void SetTopLevelVisible(Handle /*window*/, bool /*visible*/) {}
    /// May be empty, as that of a popup is at first: nothing of it is seen then.
    virtual void SetTopLevelRect(Handle /*window*/, const Rect& /*rect*/) {}
    /// For the task bar. May hold any unit, a lone surrogate among them, and be of any length.
    virtual void SetTopLevelTitle(Handle /*window*/, std::u16string_view /*title*/) {}
    /// Whether it lies above the windows of others that are not so.
    virtual void SetTopLevelTopMost(Handle /*window*/, bool /*topMost*/) {}
    /// Also of a window that is hidden, which is minimised when it is shown. A desktop that does
    /// not minimise reports RestoredByDesktop.
    virtual void SetTopLevelMinimised(Handle /*window*/, bool /*minimised*/) {}
    /// Brings a visible window to the front and gives it the keyboard, as far as the desktop lets
    /// it.
    virtual void ActivateTopLevel(Handle /*window*/) {}

    /// Says of a window, before it is shown, that it is a popup of another one, which may be a
    /// popup itself, or no window: above all others, in no task bar, and never activated. A desktop
    /// that cannot show all of it where it is wanted may put it elsewhere, and tells by
    /// MovedByDesktop.
    virtual void SetTopLevelPopup(Handle /*window*/, Handle /*owner*/, PopupKind /*kind*/) {}
    /// From now on all input of pointer and keyboard is reported, wherever the pointer is and
    /// whichever window is active; presses and keys reach nobody else. The popup is visible; popups
    /// of it that open meanwhile need no grab of their own. Should the grab end by itself, or not
    /// be had at all, InputLost is reported.
    virtual void GrabInput(Handle /*popup*/) {}
    /// Called before the popup goes; also when there was no grab, or it is lost.
    virtual void ReleaseInput() {}

    /// Whether pictures are to be composed at all; a driver without a screen saves the work. The
    /// same answer for as long as it lives.
    virtual bool ShowsPictures() const { return false; }
    /// Whether anybody can see a visible window, as far as the desktop says so. The picture of one
    /// that nobody sees need not be composed; SeenAgain tells when it is wanted. True of a window
    /// that has just been shown, whose first picture is composed before the desktop says anything.
    virtual bool IsSeen(Handle /*window*/) const { return true; }
    /// The picture of a visible window, in its size, and where it differs from the last one: all of
    /// it the first time, and perhaps nothing of it after SeenAgain. There are no frames: pictures
    /// come when something has changed and not at a beat, the last one stays on the screen. The
    /// driver keeps what it needs to show the window anew when the desktop has covered it or
    /// forgotten it, if only the address: the picture lives until the window changes its size or
    /// goes, and its pixels change only between two calls, always within the rectangles of the
    /// next one.
    virtual void ShowPicture(Handle /*window*/, const Surface& /*picture*/,
                             std::span<const Rect> /*changed*/) {}

    // Writing.

    /// Where the user writes from now on; none: keys are nothing but commands. Input methods are to
    /// take part only while he writes. Keys are reported alike in both cases.
    virtual void SetTextInput(const std::optional<TextInput>& /*input*/) {}
    /// What was last reported as TextComposed has been taken as it stands: an input method is to
    /// forget it, and nothing more comes of it.
    virtual void EndComposing() {}

    // Text. One line each; what is no printable character has some harmless width. A text may hold
    // any unit, a lone surrogate among them. Answers depend on nothing but the arguments: lines are
    // measured, drawn and pointed into at different times, and what was rendered is kept.

    /// Width of one line in pixels, and the height of a line of that font, which is more than 0 and
    /// the same for each text. Blanks count, at the end as well. The empty text has the width 0.
    /// The widths of two texts need not add up to that of both together.
    virtual Size MeasureText(const Font& font, std::u16string_view text) const = 0;
    /// The columns `left` to `left + width` (units; 0 or more) of the picture of a line, fewer
    /// where the line ends, as high as MeasureText says, for surfaces of that density: its glyphs
    /// are those of a font so many times as large, and it is no wider than what MeasureText says,
    /// whatever the density. Long lines are asked for in pieces, which together are the whole.
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
    /// not in time. Waits; what the desktop reports meanwhile is queued, windows stay whole, and
    /// no watch is called.
    virtual std::optional<std::string> Download(std::u16string_view /*address*/) { return {}; }

    /// Called now and then in work that lets no events run: what the desktop reports is queued, and
    /// what has been covered and uncovered of the windows is shown again. Calls no watch.
    virtual void KeepShown() {}

    /// Two presses within so many milliseconds are a double click.
    virtual Millis DoubleClickTime() const { return 500; }
};

}  // namespace platform

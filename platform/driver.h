// The one thin face that any desktop must offer. A driver shows top-level windows, hands in raw
// input, waits, and measures text. It knows nothing of lists, skins or menus, and never calls into
// the window system: what happens is queued as a DriverEvent and pulled from there. Coordinates are
// screen pixels.
//
// Pure members must be implemented. The others describe surroundings that a desktop may lack; their
// defaults do nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/types.h"

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
/// Files dropped at a point of a window; paths are raw bytes in the order that the source gave.
struct FilesDropped {
    Handle window;
    Point ptScreen;
    std::vector<std::string> paths;
};
/// A key went down and up: a virtual-key code (letters and digits are their ASCII codes), and the
/// modifiers 1 Shift, 2 Ctrl, 4 Alt. It goes to the window that has the focus.
struct KeyPressed {
    Long code;
    Long shift = 0;
};
using DriverEvent = std::variant<CloseRequested, MinimisedByDesktop, RestoredByDesktop,
                                 WorkAreaChanged, FilesDropped, KeyPressed>;

class Driver {
  public:
    virtual ~Driver() = default;

    // Time and waiting.

    /// Milliseconds since some start; never goes back.
    virtual Millis Now() const = 0;

    /// Waits until `deadline` (for ever if none), or returns sooner when there is an event, or when
    /// a watched descriptor had something to do. A virtual clock moves to the deadline at once.
    virtual void WaitUntil(std::optional<Millis> deadline) = 0;

    /// The oldest event not yet taken.
    virtual std::optional<DriverEvent> NextEvent() = 0;

    /// Calls `onReadable` from WaitUntil whenever the descriptor can be read. Not owned; an empty
    /// function ends the watch.
    virtual void Watch(int descriptor, std::function<void()> onReadable) = 0;

    /// A fresh seed at each call, for random picks.
    virtual std::uint64_t RandomSeed() = 0;

    // The screen.

    virtual Size ScreenSize() const = 0;

    /// The screen less what panels and docks take.
    virtual Rect WorkArea() const = 0;

    /// Where the pointer is.
    virtual Point Pointer() const = 0;

    // Top-level windows. The window system calls these once its own record has changed.

    virtual void CreateTopLevel(Handle /*window*/) {}
    virtual void DestroyTopLevel(Handle /*window*/) {}
    virtual void SetTopLevelVisible(Handle /*window*/, bool /*visible*/) {}
    virtual void SetTopLevelRect(Handle /*window*/, const Rect& /*rect*/) {}
    virtual void SetTopLevelTitle(Handle /*window*/, std::u16string_view /*title*/) {}
    virtual void SetTopLevelTopMost(Handle /*window*/, bool /*topMost*/) {}
    virtual void SetTopLevelMinimised(Handle /*window*/, bool /*minimised*/) {}
    virtual void ActivateTopLevel(Handle /*window*/) {}

    // Text.

    /// Width of one line in pixels, and the height of a line of that font.
    virtual Size MeasureText(const Font& font, std::u16string_view text) const = 0;
};

}  // namespace platform

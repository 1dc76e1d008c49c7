// The records behind WindowSystem, shared by its parts: windows (window_system.cpp), what happens
// in time (window_events.cpp), pointer and keys (window_input.cpp), writing (window_writing.cpp),
// the screen (window_screen.cpp).
#pragma once

#include "platform/windows/window_system.h"

namespace platform {

struct WindowSystem::Window {
    Handle handle = 0;
    Handle parent = 0;
    std::vector<Handle> children;  // bottom to top
    Rect rect;
    WindowProc proc;
    DropTarget dropTarget;
    std::u16string text;
    Long style = 0;
    Long exStyle = 0;
    bool visible = false;
    bool enabled = true;
    bool iconic = false;
    bool topMost = false;
    bool shownBefore = false;
    bool movedByDesktop = false;  // ever
    bool dying = false;           // from WM_DESTROY to its end

    const Surface* face = nullptr;
    std::shared_ptr<const Mask> mask;
    bool windowless = false;
    std::optional<Rect> caret;  // of a window to write in

    // Of a top-level window.
    Surface shown;             // what the driver has been given
    std::vector<Rect> damage;  // where it may be old
    bool wanted = false;       // by the driver, though it may have it already

    bool Covers(const Rect& area) const;
    /// The procedure with a guard that answers 0 where it calls itself without end.
    static WindowProc Guarded(WindowProc proc);
};

// Something that falls due: a timer (window is not 0, and it comes again) or a scheduled call.
struct WindowSystem::Due {
    Millis when = 0;
    std::uint64_t order = 0;
    Handle window = 0;
    Long id = 0;
    Long period = 0;
    TimerProc timer;
    std::function<void()> call;
    Millis lateness = 0;  ///< how long it may wait for another

    bool Before(const Due& other) const {
        return when != other.when ? when < other.when : order < other.order;
    }
};

}  // namespace platform

// The records behind WindowSystem, shared by its two halves: windows (window_system.cpp) and what
// happens in time (window_events.cpp).
#pragma once

#include "platform/window_system.h"

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
    bool dying = false;  // from WM_DESTROY to its end
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

    bool Before(const Due& other) const {
        return when != other.when ? when < other.when : order < other.order;
    }
};

}  // namespace platform

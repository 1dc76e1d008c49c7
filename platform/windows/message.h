// A message, and what is called with messages, timers and keys.
#pragma once

#include <functional>
#include <string>

#include "platform/base/types.h"

namespace platform {

struct Message {
    Handle window = 0;
    Long id = 0;
    Long wParam = 0;
    Long lParam = 0;
};

using WindowProc = std::function<Long(const Message&)>;

/// A timer's callback: the window and the id it was set with.
using TimerProc = std::function<void(Handle window, Long id)>;

/// Sees a key before the focus does: a virtual-key code, the modifiers (kShiftBit ...), and whether
/// it goes down. True eats it. Keys that the focus writes with are not shown to it.
using KeyboardProc = std::function<bool(Long code, Long modifiers, bool down)>;

/// What WM_COPYDATA hands over: a second start's command line, in the narrow code page.
struct CopyDataRecord {
    Long data = 0;
    std::string bytes;
};

}  // namespace platform

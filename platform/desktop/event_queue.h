// What the desktop has reported and nobody has taken yet, oldest first. A run of moves is one move.
#pragma once

#include <deque>
#include <optional>

#include "platform/driver.h"

namespace platform::desktop {

class EventQueue {
  public:
    void Push(DriverEvent event);
    std::optional<DriverEvent> Take();
    bool IsEmpty() const { return events_.empty(); }

  private:
    std::deque<DriverEvent> events_;
};

}  // namespace platform::desktop

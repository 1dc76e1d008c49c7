// What the desktop has reported and nobody has taken yet, oldest first. A run of moves is one move,
// and keys that start something long can be made to count once while they wait.
#pragma once

#include <deque>
#include <optional>
#include <vector>

#include "platform/driver.h"

namespace platform::desktop {

class EventQueue {
  public:
    /// Presses of these keys, without modifiers, count once for as long as nothing waits behind
    /// them but the like of them: whoever takes them may need longer than whoever presses. What
    /// they type stays.
    void CountOnce(std::vector<Long> codes) { countOnce_ = std::move(codes); }

    void Push(DriverEvent event);
    std::optional<DriverEvent> Take();
    bool IsEmpty() const { return events_.empty(); }

  private:
    bool IsPressThatCountsOnce(const DriverEvent& event) const;
    bool Waits(Long code) const;

    std::deque<DriverEvent> events_;
    std::vector<Long> countOnce_;
};

}  // namespace platform::desktop

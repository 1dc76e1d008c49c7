#include "platform/desktop/event_queue.h"

#include <utility>

namespace platform::desktop {

void EventQueue::Push(DriverEvent event) {
    // Only neighbours, so that a press keeps its place between two moves.
    const bool joins = !events_.empty() && event.index() == events_.back().index() &&
                       (std::holds_alternative<PointerMoved>(event) ||
                        (std::holds_alternative<MovedByDesktop>(event) &&
                         std::get<MovedByDesktop>(event).window ==
                             std::get<MovedByDesktop>(events_.back()).window));
    if (joins) {
        events_.back() = std::move(event);
    } else {
        events_.push_back(std::move(event));
    }
}

std::optional<DriverEvent> EventQueue::Take() {
    if (events_.empty()) {
        return std::nullopt;
    }
    DriverEvent event = std::move(events_.front());
    events_.pop_front();
    return event;
}

}  // namespace platform::desktop

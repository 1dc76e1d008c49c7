#include "platform/desktop/event_queue.h"

#include <algorithm>
#include <utility>

namespace platform::desktop {

namespace {

// What comes with a press, or tells of no wish of the user's.
bool IsBeside(const DriverEvent& event) {
    const auto* const key = std::get_if<KeyChanged>(&event);
    return (key != nullptr && !key->down) || std::holds_alternative<TextTyped>(event) ||
           std::holds_alternative<PointerMoved>(event) ||
           std::holds_alternative<PointerLeft>(event);
}

}  // namespace

bool EventQueue::IsPressThatCountsOnce(const DriverEvent& event) const {
    const auto* const key = std::get_if<KeyChanged>(&event);
    return key != nullptr && key->down && key->shift == 0 &&
           std::find(countOnce_.begin(), countOnce_.end(), key->code) != countOnce_.end();
}

bool EventQueue::Waits(Long code) const {
    for (auto event = events_.rbegin(); event != events_.rend(); ++event) {
        if (IsPressThatCountsOnce(*event)) {
            if (std::get<KeyChanged>(*event).code == code) {
                return true;
            }
        } else if (!IsBeside(*event)) {
            return false;
        }
    }
    return false;
}

void EventQueue::Push(DriverEvent event) {
    if (IsPressThatCountsOnce(event) && Waits(std::get<KeyChanged>(event).code)) {
        return;
    }
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

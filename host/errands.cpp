#include "host/errands.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace veldrin {

bool Errands::Add(Errand errand) {
    const bool isRepeated = holds_ > 0 && !errand.name.empty() &&
                            std::any_of(waiting_.begin(), waiting_.end(), [&](const Errand& other) {
                                return other.name == errand.name;
                            });
    if (hasStopped_ || isRepeated) {
        return false;
    }
    waiting_.push_back(std::move(errand));
    return true;
}

void Errands::WorkOff() {
    constexpr platform::Millis kLongest = 20;
    const platform::Millis start = windows_.Now();
    while (!waiting_.empty() && holds_ == 0 && !hasStopped_) {
        if (inSlices_ && !isInHurry_ && windows_.Now() - start >= kLongest) {
            WorkOffSoon();
            return;
        }
        const Errand next = std::move(waiting_.front());
        waiting_.pop_front();
        if (next.isForList || !isInHurry_) {
            next.work();
        }
    }
}

void Errands::WorkOffSoon() {
    if (!waiting_.empty() && !std::exchange(isScheduled_, true)) {
        windows_.Schedule(0, [this] {
            isScheduled_ = false;
            WorkOff();
        });
    }
}

void Errands::LetGo() {
    --holds_;
    WorkOffSoon();
}

void Errands::DoForList() {
    std::deque<Errand> others;
    while (!waiting_.empty() && holds_ == 0 && !hasStopped_) {
        Errand next = std::move(waiting_.front());
        waiting_.pop_front();
        if (next.isForList) {
            next.work();
        } else {
            others.push_back(std::move(next));
        }
    }
    waiting_.insert(waiting_.begin(), std::make_move_iterator(others.begin()),
                    std::make_move_iterator(others.end()));
}

void Errands::Hurry() {
    isInHurry_ = true;
    WorkOff();
}

}  // namespace veldrin

#include "host/engine/disposal.h"

#include <utility>

namespace veldrin {

namespace {

// A thread that needs this long for one is left to it.
constexpr std::chrono::seconds kPatience(1);

}  // namespace

std::shared_ptr<Item> Disposal::Share(std::unique_ptr<Item> item) {
    return {item.release(),
            [self = shared_from_this()](Item* gone) { self->Take(std::unique_ptr<Item>(gone)); }};
}

void Disposal::Take(std::unique_ptr<Item> item) {
    const std::lock_guard lock(mutex_);
    bool isBeingCleared = false;
    {
        const std::lock_guard pileLock(pile_->mutex);
        pile_->items.push_back(std::move(item));
        isBeingCleared = std::exchange(pile_->isBeingCleared, true);
    }
    const auto now = std::chrono::steady_clock::now();
    if (!isBeingCleared || now - began_ > kPatience) {
        began_ = now;
        worker_.Begin([pile = pile_] { Clear(pile); });
    }
}

void Disposal::Clear(const std::shared_ptr<Pile>& pile) {
    while (true) {
        std::unique_ptr<Item> item;
        {
            const std::lock_guard lock(pile->mutex);
            if (pile->items.empty()) {
                pile->isBeingCleared = false;
                return;
            }
            item = std::move(pile->items.back());
            pile->items.pop_back();
        }
    }
}

}  // namespace veldrin

#include "platform/desktop/hotkeys/hot_keys.h"

namespace platform::desktop {

HotKeys::HotKeys(WaitLoop& loop, EventQueue& events) : loop_(loop), events_(events) {}

HotKeys::~HotKeys() = default;

void HotKeys::Begin() {
    hasBegun_ = true;
}

bool HotKeys::Grab(Handle id, const KeyCombination& key) {
    keys_[id] = key;
    return true;
}

void HotKeys::Release(Handle id) {
    keys_.erase(id);
}

}  // namespace platform::desktop

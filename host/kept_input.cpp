#include "host/kept_input.h"

#include <variant>

#include "host/transport_keys.h"

namespace veldrin {

using platform::CloseRequested;
using platform::DriverEvent;
using platform::HotKeyPressed;
using platform::KeyChanged;
using platform::TextTyped;

bool KeptInput::Keeps(const DriverEvent& event) {
    if (const auto* key = std::get_if<KeyChanged>(&event)) {
        return KeepsKey(*key);
    }
    if (std::holds_alternative<TextTyped>(event)) {
        return !textIsDropped_;
    }
    if (const auto* key = std::get_if<HotKeyPressed>(&event)) {
        return systemWide_.insert(key->key).second;
    }
    askedToClose_ = askedToClose_ || std::holds_alternative<CloseRequested>(event);
    return true;
}

bool KeptInput::KeepsKey(const KeyChanged& key) {
    if (key.shift != 0 || !IsTransportKey(key.code)) {
        textIsDropped_ = false;
        return true;
    }
    if (key.down) {
        const bool isFirst = pressed_.insert(key.code).second;
        textIsDropped_ = !isFirst;
        if (isFirst) {
            released_.erase(key.code);
        }
        return isFirst;
    }
    return released_.insert(key.code).second;
}

}  // namespace veldrin

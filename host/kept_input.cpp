#include "host/kept_input.h"

#include <string_view>
#include <variant>

namespace veldrin {
namespace {

using namespace platform;

/// Previous, play, pause, stop, next.
constexpr std::u16string_view kTransportKeys = u"ZXCVB";

bool IsTransportKey(const KeyChanged& key) {
    return key.shift == 0 &&
           kTransportKeys.find(static_cast<char16_t>(key.code)) != std::u16string_view::npos;
}

}  // namespace

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
    if (!IsTransportKey(key)) {
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

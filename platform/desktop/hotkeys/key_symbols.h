// From virtual-key codes to the key symbols that window servers and portals go by.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/driver.h"

namespace platform::desktop {

struct KeySymbol {
    std::uint32_t symbol = 0;  ///< of the X server
    std::uint32_t pad = 0;  ///< of the same key on the numeric pad while NumLock is off; 0 if none
    std::string name;       ///< of `symbol`
};

/// Nothing for a key that is none of letters, digits, function keys, and named keys of the main
/// block.
std::optional<KeySymbol> SymbolOf(Long virtualKey);

/// The combination as portals write it: "CTRL+ALT+Page_Down". Empty if it has no symbol.
std::string TriggerOf(const KeyCombination& key);

}  // namespace platform::desktop

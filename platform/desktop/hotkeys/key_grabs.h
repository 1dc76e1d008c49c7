// What has to be grabbed of an X server for a combination of keys: it knows keys by their numbers
// and takes each state of the lock keys for a combination of its own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/driver.h"

namespace platform::desktop {

/// What the keys of a keyboard mean.
struct KeyboardMap {
    std::uint8_t firstCode = 0;  ///< the number of the first key
    std::size_t perCode = 1;     ///< symbols of each key, 0 where it has none
    std::vector<std::uint32_t> symbols;
    /// Keys that are modifiers: eight rows of equal length, for Shift, Lock, Control, Mod1 to Mod5.
    /// 0 is no key.
    std::vector<std::uint8_t> modifierKeys;

    std::size_t Count() const { return symbols.size() / perCode; }
    /// The symbols of a key by its place, from 0 on.
    std::span<const std::uint32_t> SymbolsAt(std::size_t place) const {
        return std::span(symbols).subspan(place * perCode, perCode);
    }
};

struct KeyGrab {
    std::uint8_t code = 0;
    std::uint16_t modifiers = 0;
    bool operator==(const KeyGrab&) const = default;
};

/// All that make up the combination; none if the keyboard does not have it. Keys count by what they
/// are without Shift; those of the numeric pad only while NumLock is off.
std::vector<KeyGrab> GrabsOf(const KeyCombination& key, const KeyboardMap& map);

}  // namespace platform::desktop

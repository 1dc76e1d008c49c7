#include "platform/desktop/hotkeys/key_grabs.h"

#include <X11/keysym.h>
#include <xcb/xproto.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>

#include "platform/base/messages.h"
#include "platform/desktop/hotkeys/key_symbols.h"

namespace platform::desktop {

namespace {

using Symbols = std::initializer_list<std::uint32_t>;

bool HasAny(std::span<const std::uint32_t> symbols, Symbols wanted) {
    return std::find_first_of(symbols.begin(), symbols.end(), wanted.begin(), wanted.end()) !=
           symbols.end();
}

// The first modifier beyond the three fixed ones that a key with such a symbol is; 0 if none.
std::uint16_t ModifierOf(const KeyboardMap& map, Symbols wanted) {
    constexpr std::size_t kModifiers = 8;
    constexpr std::size_t kFixed = 3;
    const std::size_t length = map.modifierKeys.size() / kModifiers;
    for (std::size_t i = kFixed * length; i < kModifiers * length; ++i) {
        const std::uint8_t code = map.modifierKeys[i];
        const auto place = static_cast<std::size_t>(code - map.firstCode);
        if (code >= map.firstCode && place < map.Count() && HasAny(map.SymbolsAt(place), wanted)) {
            return static_cast<std::uint16_t>(1U << (i / length));
        }
    }
    return 0;
}

// Nothing if the keyboard lacks one of them.
std::optional<std::uint16_t> Modifiers(const KeyboardMap& map, Long wanted) {
    struct Modifier {
        Long bit;
        std::uint16_t mask;
    };
    const std::array modifiers = {Modifier{MOD_ALT, ModifierOf(map, {XK_Alt_L, XK_Alt_R})},
                                  Modifier{MOD_CONTROL, XCB_MOD_MASK_CONTROL},
                                  Modifier{MOD_SHIFT, XCB_MOD_MASK_SHIFT},
                                  Modifier{MOD_WIN, ModifierOf(map, {XK_Super_L, XK_Super_R})}};
    std::uint16_t all = 0;
    for (const Modifier& modifier : modifiers) {
        if ((wanted & modifier.bit) != 0) {
            if (modifier.mask == 0) {
                return std::nullopt;
            }
            all |= modifier.mask;
        }
    }
    return all;
}

// A key's symbols go in pairs, without and with Shift, the second pair for the other group of a
// keyboard of two; those behind take further modifiers, and some keyboards have arrows there.
bool Means(std::span<const std::uint32_t> symbols, std::uint32_t wanted) {
    constexpr std::size_t kOtherGroup = 2;
    return wanted != 0 && (symbols[0] == wanted ||
                           (symbols.size() > kOtherGroup && symbols[kOtherGroup] == wanted));
}

}  // namespace

std::vector<KeyGrab> GrabsOf(const KeyCombination& key, const KeyboardMap& map) {
    const auto symbol = SymbolOf(key.key);
    const auto modifiers = Modifiers(map, key.modifiers);
    if (!symbol || !modifiers) {
        return {};
    }
    const std::uint16_t numLock = ModifierOf(map, {XK_Num_Lock});
    const unsigned onMain = XCB_MOD_MASK_LOCK | numLock | ModifierOf(map, {XK_Scroll_Lock});
    const unsigned onPad = onMain & ~unsigned{numLock};
    std::vector<KeyGrab> grabs;
    const auto add = [&](std::size_t place, unsigned locks) {
        const unsigned free = locks & ~unsigned{*modifiers};
        const auto code = static_cast<std::uint8_t>(map.firstCode + place);
        for (unsigned held = free;; held = (held - 1) & free) {  // every subset, the empty one last
            grabs.push_back({code, static_cast<std::uint16_t>(*modifiers | held)});
            if (held == 0) {
                return;
            }
        }
    };
    for (std::size_t place = 0; place < map.Count(); ++place) {
        const auto symbols = map.SymbolsAt(place);
        if (Means(symbols, symbol->symbol)) {
            add(place, onMain);
        } else if (Means(symbols, symbol->pad)) {
            add(place, onPad);
        }
    }
    return grabs;
}

}  // namespace platform::desktop

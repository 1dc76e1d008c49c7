#include "platform/desktop/hotkeys/key_symbols.h"

#include <X11/keysym.h>

#include <algorithm>
#include <array>

#include "platform/base/keys.h"
#include "platform/base/messages.h"

namespace platform::desktop {

namespace {

struct NamedSymbol {
    Long code;
    std::uint32_t symbol;
    std::uint32_t pad;
    const char* name;
};

constexpr std::array kNamedSymbols = {
    NamedSymbol{VK_BACK, XK_BackSpace, 0, "BackSpace"},
    NamedSymbol{VK_TAB, XK_Tab, 0, "Tab"},
    NamedSymbol{VK_RETURN, XK_Return, 0, "Return"},
    NamedSymbol{VK_PAUSE, XK_Pause, 0, "Pause"},
    NamedSymbol{VK_ESCAPE, XK_Escape, 0, "Escape"},
    NamedSymbol{VK_SPACE, XK_space, 0, "space"},
    NamedSymbol{VK_PRIOR, XK_Page_Up, XK_KP_Page_Up, "Page_Up"},
    NamedSymbol{VK_NEXT, XK_Page_Down, XK_KP_Page_Down, "Page_Down"},
    NamedSymbol{VK_END, XK_End, XK_KP_End, "End"},
    NamedSymbol{VK_HOME, XK_Home, XK_KP_Home, "Home"},
    NamedSymbol{VK_LEFT, XK_Left, XK_KP_Left, "Left"},
    NamedSymbol{VK_UP, XK_Up, XK_KP_Up, "Up"},
    NamedSymbol{VK_RIGHT, XK_Right, XK_KP_Right, "Right"},
    NamedSymbol{VK_DOWN, XK_Down, XK_KP_Down, "Down"},
    NamedSymbol{VK_SNAPSHOT, XK_Print, 0, "Print"},
    NamedSymbol{VK_INSERT, XK_Insert, XK_KP_Insert, "Insert"},
    NamedSymbol{VK_DELETE, XK_Delete, XK_KP_Delete, "Delete"},
    NamedSymbol{VK_APPS, XK_Menu, 0, "Menu"},
};

}  // namespace

std::optional<KeySymbol> SymbolOf(Long virtualKey) {
    constexpr Long kFunctionKeys = 24;
    if (virtualKey >= VK_F1 && virtualKey < VK_F1 + kFunctionKeys) {
        const Long number = virtualKey - VK_F1;
        return KeySymbol{XK_F1 + static_cast<std::uint32_t>(number), 0,
                         std::string(1, 'F').append(std::to_string(number + 1))};
    }
    // Letters and digits have the symbols of what they type without Shift.
    const bool isLetter = virtualKey >= 'A' && virtualKey <= 'Z';
    if (isLetter || (virtualKey >= '0' && virtualKey <= '9')) {
        const char typed = static_cast<char>(isLetter ? virtualKey - 'A' + 'a' : virtualKey);
        return KeySymbol{static_cast<std::uint32_t>(typed), 0, std::string(1, typed)};
    }
    const auto* found =
        std::find_if(kNamedSymbols.begin(), kNamedSymbols.end(),
                     [virtualKey](const NamedSymbol& named) { return named.code == virtualKey; });
    if (found == kNamedSymbols.end()) {
        return std::nullopt;
    }
    return KeySymbol{found->symbol, found->pad, found->name};
}

std::string TriggerOf(const KeyCombination& key) {
    const auto symbol = SymbolOf(key.key);
    if (!symbol) {
        return {};
    }
    struct Modifier {
        Long bit;
        const char* name;
    };
    static constexpr std::array kModifiers = {
        Modifier{MOD_CONTROL, "CTRL+"}, Modifier{MOD_ALT, "ALT+"}, Modifier{MOD_SHIFT, "SHIFT+"},
        Modifier{MOD_WIN, "LOGO+"}};
    std::string trigger;
    for (const Modifier& modifier : kModifiers) {
        trigger += (key.modifiers & modifier.bit) != 0 ? modifier.name : "";
    }
    return trigger + symbol->name;
}

}  // namespace platform::desktop

#include "shell/jhotkeys.h"

#include <algorithm>

namespace sarnel {

void JHotKeys::RegisterKey(std::u16string_view sName, Long eModifiers, Long eKey) {
    keys_.push_back({std::u16string(sName), ++lastId_, eModifiers, eKey});
}

void JHotKeys::WM_HOTKEY(Long id, Long /*lParam*/) {
    const auto key =
        std::find_if(keys_.begin(), keys_.end(), [id](const Key& k) { return k.id == id; });
    if (key != keys_.end() && onHotKeyPress) {
        const std::u16string name = key->name;  // a copy: the handler may end the run
        onHotKeyPress(name);
    }
}

Long JHotKeys::IdOf(std::u16string_view sName) const {
    const auto key =
        std::find_if(keys_.begin(), keys_.end(), [&](const Key& k) { return k.name == sName; });
    return key == keys_.end() ? 0 : key->id;
}

}  // namespace sarnel

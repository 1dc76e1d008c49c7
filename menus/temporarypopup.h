// A popup of its own, for the right click on a panel: its items stand in the command menu only
// while it is open, since the menu's looks and its loop are used.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace sarnel {

struct TemporaryItem {
    enum Kind { kPlain, kHeader };
    std::u16string_view caption;  ///< as of JPopupMenu::AddItem
    std::u16string_view key;
    Kind kind = kPlain;
    bool checked = false;
    bool enabled = true;
    bool radio = false;  ///< marked as the one of its group
};

/// Shows the items at the pointer and answers the key of the one that was chosen, empty for none.
/// They are added beside the item with the key `beside`; the first one must have a key.
std::u16string ShowTemporaryPopup(std::u16string_view beside, std::span<const TemporaryItem> items);

}  // namespace sarnel

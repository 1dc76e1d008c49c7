// A popup of its own, for the right click on a panel: its items stand in the command menu, whose
// looks and loop it uses, until what was chosen has been done.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "menus/jpopupmenu.h"

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

class TemporaryPopup {
  public:
    /// Adds the items beside the item with the key `beside`; the first one must have a key. Fails
    /// where there is no menu.
    TemporaryPopup(std::u16string_view beside, std::span<const TemporaryItem> items);
    /// Removes them.
    ~TemporaryPopup();
    TemporaryPopup(const TemporaryPopup&) = delete;
    TemporaryPopup& operator=(const TemporaryPopup&) = delete;

    /// Shows the items at the pointer and answers the key of the one that was chosen, empty for
    /// none.
    std::u16string Choose();

  private:
    std::shared_ptr<JPopupMenu> menu_;  // held, since the run may end meanwhile
    Long popup_;
    std::u16string first_;
};

}  // namespace sarnel

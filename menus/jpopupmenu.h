// JPopupMenu is a tree of commands in one flat table, addressed by index (from 1) or by key. The
// table stands; showing it, drawing it and its key combinations are not built yet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace sarnel {

using platform::Long;

class JPopupMenu {
  public:
    /// Adds an item under a parent (0 for the top level) and answers its index. What stands behind
    /// "#" in the caption is the text of its key combination.
    Long AddItem(std::u16string_view sCaption, Long lParentIndex, std::u16string_view sKey,
                 bool bChecked, bool bEnabled);
    Long Count() const { return static_cast<Long>(items_.size()); }
    /// The first item with that key, 0 if none.
    Long IndexForKey(std::u16string_view vKey) const;

    // Of the item at an index from 1 to Count(); elsewhere a read is empty and a write does
    // nothing.
    std::u16string Caption(Long lIndex) const { return Get(lIndex).caption; }
    std::u16string KeyText(Long lIndex) const { return Get(lIndex).keyText; }
    std::u16string ItemKey(Long lIndex) const { return Get(lIndex).key; }
    Long ItemParentIndex(Long lIndex) const { return Get(lIndex).parent; }
    bool Checked(Long lIndex) const { return Get(lIndex).checked; }
    void Checked(Long lIndex, bool value) { Set(lIndex, &Item::checked, value); }
    bool RadioCheck(Long lIndex) const { return Get(lIndex).radio; }
    void RadioCheck(Long lIndex, bool value) { Set(lIndex, &Item::radio, value); }
    bool Enabled(Long lIndex) const { return Get(lIndex).enabled; }
    void Enabled(Long lIndex, bool value) { Set(lIndex, &Item::enabled, value); }
    bool Header(Long lIndex) const { return Get(lIndex).header; }
    void Header(Long lIndex, bool value) { Set(lIndex, &Item::header, value); }

  private:
    struct Item {
        std::u16string caption;
        std::u16string keyText;
        std::u16string key;
        Long parent = 0;
        bool checked = false;
        bool radio = false;
        bool enabled = false;
        bool header = false;
    };
    bool Has(Long index) const { return index >= 1 && index <= Count(); }
    Item Get(Long index) const;
    void Set(Long index, bool Item::*field, bool value);

    std::vector<Item> items_;
};

}  // namespace sarnel

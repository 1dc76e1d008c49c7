#include "menus/jpopupmenu.h"

namespace sarnel {

void JPopupMenu::BackgroundPicture(platform::PictureRef sPic) {
    background_ = sPic != nullptr && !sPic->IsEmpty() ? std::move(sPic) : nullptr;
}

Long JPopupMenu::AddItem(std::u16string_view sCaption, Long lParentIndex, std::u16string_view sKey,
                         bool bChecked, bool bEnabled) {
    Item item;
    const std::size_t hash = sCaption.find(u'#');
    item.caption = sCaption.substr(0, hash);
    if (hash != std::u16string_view::npos) {
        item.keyText = sCaption.substr(hash + 1);
    }
    item.key = sKey;
    item.parent = lParentIndex;
    item.checked = bChecked;
    item.enabled = bEnabled;
    items_.push_back(std::move(item));
    return Count();
}

Long JPopupMenu::IndexForKey(std::u16string_view vKey) const {
    for (Long i = 1; i <= Count(); ++i) {
        if (items_[static_cast<std::size_t>(i) - 1].key == vKey) {
            return i;
        }
    }
    return 0;
}

JPopupMenu::Item JPopupMenu::Get(Long index) const {
    return Has(index) ? items_[static_cast<std::size_t>(index) - 1] : Item{};
}

void JPopupMenu::Set(Long index, bool Item::*field, bool value) {
    if (Has(index)) {
        items_[static_cast<std::size_t>(index) - 1].*field = value;
    }
}

}  // namespace sarnel

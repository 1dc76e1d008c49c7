#include "menus/temporarypopup.h"

#include "core/base/failure.h"
#include "core/state/mainmenu.h"
#include "platform/menus/menu.h"

namespace sarnel {

TemporaryPopup::TemporaryPopup(std::u16string_view beside, std::span<const TemporaryItem> items)
    : menu_(Menu()),
      popup_(menu_->AddItem(u"Popup", menu_->ItemParentIndex(menu_->IndexForKey(beside)), u"",
                            false, true)),
      first_(items.front().key) {
    for (const TemporaryItem& item : items) {
        const Long index =
            menu_->AddItem(item.caption, popup_, item.key, item.checked, item.enabled);
        if (item.kind == TemporaryItem::kHeader) {
            menu_->Header(index, true);
        }
        if (item.radio) {
            menu_->RadioCheck(index, true);
        }
    }
}

TemporaryPopup::~TemporaryPopup() {
    Step([this] { menu_->RemoveItemByIndex(popup_); });
}

std::u16string TemporaryPopup::Choose() {
    std::u16string key;
    Step([&] {
        key = menu_->ItemKey(menu_->ShowPopup(-1, -1, menu_->IndexForKey(first_),
                                              platform::TPM_CENTERALIGN, platform::TPM_RIGHTBUTTON,
                                              true));
    });
    return key;
}

}  // namespace sarnel

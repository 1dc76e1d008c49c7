#include "menus/temporarypopup.h"

#include "core/base/failure.h"
#include "core/state/mainmenu.h"
#include "menus/jpopupmenu.h"
#include "platform/menus/menu.h"

namespace sarnel {

std::u16string ShowTemporaryPopup(std::u16string_view beside,
                                  std::span<const TemporaryItem> items) {
    // Held here, since the run may end while the popup is open.
    const auto menu = Menu();
    const Long parent = menu->ItemParentIndex(menu->IndexForKey(beside));
    const Long popup = menu->AddItem(u"Popup", parent, u"", false, true);
    for (const TemporaryItem& item : items) {
        const Long index = menu->AddItem(item.caption, popup, item.key, item.checked, item.enabled);
        if (item.kind == TemporaryItem::kHeader) {
            menu->Header(index, true);
        }
        if (item.radio) {
            menu->RadioCheck(index, true);
        }
    }
    std::u16string key;
    Step([&] {
        key = menu->ItemKey(menu->ShowPopup(-1, -1, menu->IndexForKey(items.front().key),
                                            platform::TPM_CENTERALIGN, platform::TPM_RIGHTBUTTON,
                                            true));
    });
    menu->RemoveItemByIndex(popup);
    return key;
}

}  // namespace sarnel

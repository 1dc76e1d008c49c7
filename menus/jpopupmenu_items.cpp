// The flat table of items, and the platform's menus that are kept behind it.
#include <algorithm>
#include <utility>

#include "core/base/impulsevalue.h"
#include "menus/jpopupmenu.h"
#include "platform/base/text.h"

namespace sarnel {

using namespace platform;

namespace {

constexpr Long kLastIdBefore = 2048;

// The letter that the first "&" stands in front of, unless it is the last character.
std::u16string MnemonicOf(std::u16string_view caption) {
    const std::size_t at = caption.find(u'&');
    if (at == std::u16string_view::npos || at + 1 >= caption.size()) {
        return {};
    }
    return {UpperAscii(caption[at + 1])};
}

}  // namespace

const JPopupMenu::Item& JPopupMenu::Get(Long index) const {
    static const Item kNone;
    return Has(index) ? At(index) : kNone;
}

// Ids and the handles of submenus lie in one number space.
Long JPopupMenu::NewId() {
    nextId_ = std::max(nextId_, Count());
    const auto isTaken = [this](Long id) {
        return std::any_of(items_.begin(), items_.end(),
                           [id](const Item& item) { return item.menuId == id || item.id == id; });
    };
    do {
        ++nextId_;
    } while (isTaken(nextId_));
    return nextId_;
}

Long JPopupMenu::AddItem(std::u16string_view sCaption, Long lParentIndex, std::u16string_view sKey,
                         bool bChecked, bool bEnabled) {
    items_.emplace_back();
    const Long index = Count();
    Item& item = At(index);
    item.id = NewId();
    item.menuId = item.id;
    ParseCaption(item, sCaption);
    item.mnemonic = MnemonicOf(sCaption);
    if (lParentIndex != 0) {
        item.parentMenu = Get(lParentIndex).menuId;
    }
    item.parentIndex = lParentIndex;
    item.checked = bChecked;
    item.enabled = bEnabled;
    item.key = sKey;
    EnterInMenus(index);
    item.height = item.IsLine() ? itemHeight_ / 6 : item.header ? itemHeight_ - 8 : itemHeight_;
    if (item.header) {
        Header(index, true);
    }
    return index;
}

void JPopupMenu::ParseCaption(Item& item, std::u16string_view text) {
    if (text == u"-") {
        item.caption = text;
        return;
    }
    if (text.starts_with(u'-')) {
        item.header = true;
        text.remove_prefix(1);
    }
    const std::size_t hash = text.find(u'#');
    item.caption = text.substr(0, hash);
    if (hash != std::u16string_view::npos) {
        item.keyText = text.substr(hash + 1);
        item.combination = ParseKeyText(item.keyText);
    }
    item.mnemonic = MnemonicOf(item.caption);
}

Long JPopupMenu::Item::Flags() const {
    const bool isSeparator = header || caption.starts_with(u'-');
    return (checked ? MF_CHECKED : 0) | (enabled ? 0 : MF_GRAYED) |
           (isSeparator ? MF_SEPARATOR : 0);
}

void JPopupMenu::EnterInMenus(Long index) {
    Item& item = At(index);
    Handle menu = 0;
    if (item.parentMenu != 0) {
        menu = SubmenuOfParent(item);
        if (menu == 0) {
            return;
        }
    } else if (index == 1) {
        PlatformMenus().DestroyMenu(root_);  // what was left when the last item was removed
        root_ = menu = PlatformMenus().CreatePopupMenu();
    } else {
        menu = At(1).containingMenu;
    }
    PlatformMenus().AppendMenu(menu, item.Flags() | MF_OWNERDRAW, item.menuId, item.caption);
    item.containingMenu = menu;
}

// The submenu of the item's parent, made for its first child; 0 if that cannot be.
Handle JPopupMenu::SubmenuOfParent(Item& item) {
    const Long parent = ItemForID(item.parentMenu);
    if (parent == 0) {
        return 0;
    }
    Handle submenu = Submenu(parent);
    if (submenu == 0) {
        submenu = CreateSubmenu();
        if (submenu == 0) {
            return 0;
        }
        submenus_.push_back(submenu);
        Item& above = At(parent);
        PlatformMenus().ModifyMenu(above.containingMenu, above.menuId,
                                   above.Flags() | MF_OWNERDRAW | MF_POPUP, submenu, above.caption);
        above.menuId = submenu;
    }
    item.parentMenu = submenu;
    return submenu;
}

// A menu whose handle is no item's id.
Handle JPopupMenu::CreateSubmenu() {
    constexpr int kAttempts = 100;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const Handle menu = PlatformMenus().CreatePopupMenu();
        const bool collides = std::any_of(items_.begin(), items_.end(), [menu](const Item& item) {
            return item.id == menu || item.menuId == menu;
        });
        if (!collides) {
            return menu;
        }
        PlatformMenus().DestroyMenu(menu);
    }
    return 0;
}

std::optional<MenuItemInfo> JPopupMenu::InfoOf(const Item& item) const {
    return PlatformMenus().GetMenuItemInfo(item.containingMenu, item.menuId, MF_BYCOMMAND);
}

Long JPopupMenu::PositionOf(const Item& item) const {
    const Menus& menus = PlatformMenus();
    const Long count = menus.GetMenuItemCount(item.containingMenu);
    Long position = 0;
    while (position < count &&
           menus.GetMenuItemInfo(item.containingMenu, position, MF_BYPOSITION)->id != item.menuId) {
        ++position;
    }
    return position;
}

Handle JPopupMenu::Submenu(Long lIndex) const {
    const auto info = InfoOf(Get(lIndex));
    return info ? info->submenu : 0;
}

void JPopupMenu::SetFlags(Long index, Long set, Long clear) {
    const Item& item = At(index);
    Long flags = item.Flags() | MF_OWNERDRAW;
    if (Submenu(index) != 0) {
        flags |= MF_POPUP;
    }
    flags = ((flags & ~MF_BYPOSITION) | set) & ~clear;
    PlatformMenus().ModifyMenu(item.containingMenu, item.menuId, flags, item.menuId, item.caption);
}

// The platform asks for the size of an item when it is new.
void JPopupMenu::MeasureAgain(Long index) {
    const Item& item = At(index);
    Menus& menus = PlatformMenus();
    const auto info = InfoOf(item);
    if (!info) {
        return;
    }
    const Long position = PositionOf(item);
    const Long flags = (info->type & ~MF_SEPARATOR) | info->state | (item.Flags() & MF_SEPARATOR);
    menus.RemoveMenu(item.containingMenu, item.menuId, MF_BYCOMMAND);
    menus.InsertMenu(item.containingMenu, position, flags | MF_BYPOSITION, item.menuId,
                     item.caption);
    if (info->submenu != 0) {
        menus.ModifyMenu(item.containingMenu, item.menuId, flags | MF_POPUP, info->submenu,
                         item.caption);
    }
}

Long JPopupMenu::IndexForKey(std::u16string_view vKey) const {
    if (const auto number = TextToLong(vKey)) {
        return Has(*number) ? *number : 0;
    }
    for (Long i = 1; i <= Count(); ++i) {
        if (At(i).key == vKey) {
            return i;
        }
    }
    return 0;
}

Long JPopupMenu::ItemForID(Long wID) const {
    for (Long i = 1; i <= Count(); ++i) {
        if (At(i).menuId == wID) {
            return i;
        }
    }
    return 0;
}

void JPopupMenu::Caption(Long lIndex, std::u16string_view vNewValue) {
    if (Has(lIndex)) {
        ParseCaption(At(lIndex), vNewValue);
        MeasureAgain(lIndex);
    }
}

void JPopupMenu::ItemKey(Long lIndex, std::u16string_view sKey) {
    if (Has(lIndex)) {
        At(lIndex).key = sKey;
    }
}

bool JPopupMenu::Checked(Long lIndex) const {
    const auto info = InfoOf(Get(lIndex));
    return info && (info->state & MF_CHECKED) != 0;
}

void JPopupMenu::Checked(Long lIndex, bool bChecked) {
    if (Has(lIndex)) {
        At(lIndex).checked = bChecked;
        SetFlags(lIndex, bChecked ? MF_CHECKED : 0, bChecked ? 0 : MF_CHECKED);
    }
}

bool JPopupMenu::Enabled(Long lIndex) const {
    const auto info = InfoOf(Get(lIndex));
    return info && (info->state & (MF_GRAYED | MF_DISABLED)) == 0;
}

void JPopupMenu::Enabled(Long lIndex, bool bEnabled) {
    if (Has(lIndex)) {
        At(lIndex).enabled = bEnabled;
        SetFlags(lIndex, bEnabled ? 0 : MF_DISABLED, MF_GRAYED | (bEnabled ? MF_DISABLED : 0));
    }
}

void JPopupMenu::RadioCheck(Long lIndex, bool bRadioCheck) {
    if (!Has(lIndex)) {
        return;
    }
    if (bRadioCheck && Checked(lIndex)) {
        Checked(lIndex, false);
    }
    At(lIndex).radio = bRadioCheck;
    SetFlags(lIndex, bRadioCheck ? MFT_RADIOCHECK : 0, bRadioCheck ? 0 : MFT_RADIOCHECK);
}

void JPopupMenu::Header(Long lIndex, bool bState) {
    if (Has(lIndex)) {
        At(lIndex).header = bState;
        SetFlags(lIndex, bState ? MF_DISABLED : 0, bState ? MF_GRAYED : 0);
    }
}

void JPopupMenu::OwnerDraw(Long lIndex, bool bState) {
    if (Has(lIndex)) {
        At(lIndex).ownerDraw = bState;
    }
}

void JPopupMenu::GroupToggle(Long lIndex) {
    if (!Has(lIndex)) {
        return;
    }
    RadioCheck(lIndex, true);
    const Menus& menus = PlatformMenus();
    const Handle menu = hMenu(lIndex);
    const Long count = menus.GetMenuItemCount(menu);
    const Long own = PositionOf(At(lIndex));
    for (const Long step : {-1, 1}) {
        for (Long position = own + step; position >= 0 && position < count; position += step) {
            const auto info = menus.GetMenuItemInfo(menu, position, MF_BYPOSITION);
            if ((info->type & MF_SEPARATOR) != 0) {
                break;
            }
            RadioCheck(ItemForID(info->id), false);
        }
    }
}

// All items of a submenu, and of those that they have.
void JPopupMenu::MarkBelow(Handle submenu, std::vector<Handle>& submenus) {
    submenus.push_back(submenu);
    for (Item& item : items_) {
        if (item.parentMenu == submenu && !item.marked) {
            item.marked = true;
            if (item.menuId != item.id) {
                MarkBelow(item.menuId, submenus);
            }
        }
    }
}

void JPopupMenu::RemoveItemByIndex(Long lIndex) {
    if (!Has(lIndex)) {
        return;
    }
    Menus& menus = PlatformMenus();
    Item& item = At(lIndex);
    menus.RemoveMenu(item.containingMenu, item.menuId, MF_BYCOMMAND);
    item.marked = true;
    std::vector<Handle> below;
    if (item.menuId != item.id) {
        MarkBelow(item.menuId, below);
    }
    for (const Handle submenu : below) {
        menus.DestroyMenu(submenu);
        std::erase(submenus_, submenu);
    }
    for (Item& other : items_) {
        other.marked = other.marked || menus.GetMenuItemCount(other.containingMenu) == -1;
    }
    Compact();
}

void JPopupMenu::Compact() {
    std::vector<Long> newIndex(items_.size() + 1);
    Long kept = 0;
    for (Long i = 1; i <= Count(); ++i) {
        if (At(i).marked) {
            continue;
        }
        newIndex[static_cast<std::size_t>(i)] = ++kept;
        if (kept != i) {
            At(kept) = std::move(At(i));
        }
        const Long parent = At(kept).parentIndex;
        if (parent > 0 && parent < i) {  // parents stand in front of their items
            At(kept).parentIndex = newIndex[static_cast<std::size_t>(parent)];
        }
    }
    items_.resize(static_cast<std::size_t>(kept));
}

void JPopupMenu::ClearSubMenusOfItem(std::u16string_view vKey) {
    const Long index = IndexForKey(vKey);
    const Handle submenu = Submenu(index);
    for (Long i = Count(); submenu != 0 && i >= 1; --i) {
        // Removing an item takes those below it along.
        if (i <= Count() && At(i).parentMenu == submenu) {
            RemoveItemByIndex(i);
        }
    }
}

void JPopupMenu::Clear() {
    for (const Handle submenu : submenus_) {
        PlatformMenus().DestroyMenu(submenu);
    }
    submenus_.clear();
    PlatformMenus().DestroyMenu(root_);
    root_ = 0;
    items_.clear();
    nextId_ = kLastIdBefore;
}

}  // namespace sarnel

#include "platform/menus/menu.h"

#include <algorithm>
#include <utility>

#include "platform/menus/menu_tracking.h"
#include "platform/windows/window_system.h"

namespace platform {

namespace {

constexpr Long kTypeBits = MF_OWNERDRAW | MFT_RADIOCHECK | MF_SEPARATOR;
constexpr Long kStateBits = MF_GRAYED | MF_DISABLED | MF_CHECKED;

Menus::Item MakeItem(Long flags, Long id, std::u16string_view text) {
    Menus::Item item;
    item.type = flags & kTypeBits;
    item.state = flags & kStateBits;
    item.id = id;
    item.submenu = (flags & MF_POPUP) != 0 ? id : 0;
    item.text = text;
    return item;
}

}  // namespace

Menus& WindowSystem::PopupMenus() {
    if (menus_ == nullptr) {
        menus_ = std::make_shared<Menus>(*this);
    }
    return *menus_;
}

Menus::Menus(WindowSystem& windows) : windows_(windows) {
    windows.ObserveDestroyed([this](Handle window) { WindowGone(window); });
}

Menus::~Menus() = default;

const std::vector<Menus::Item>* Menus::Items(Handle menu) const {
    const auto found = menus_.find(menu);
    return found == menus_.end() ? nullptr : &found->second;
}

void Menus::ContentChanged(Handle menu) {
    if (tracking_ != nullptr && tracking_->Shows(menu)) {
        tracking_->End(0);
    }
}

Handle Menus::CreatePopupMenu() {
    const Handle menu = windows_.NewHandle();
    menus_[menu];
    return menu;
}

Handle Menus::GetSystemMenu(Handle window) {
    if (!windows_.IsWindow(window) || windows_.GetParent(window) != 0) {
        return 0;
    }
    const auto [found, fresh] = systemMenus_.try_emplace(window, 0);
    if (fresh) {
        found->second = CreatePopupMenu();
        for (const Long command :
             {SC_RESTORE, SC_MOVE, SC_SIZE, SC_MINIMIZE, SC_MAXIMIZE, SC_CLOSE}) {
            AppendMenu(found->second, 0, command, {});
        }
    }
    return found->second;
}

void Menus::WindowGone(Handle window) {
    const auto found = systemMenus_.find(window);
    if (found != systemMenus_.end()) {
        DestroyMenu(found->second);
        systemMenus_.erase(found);
    }
}

bool Menus::DestroyMenu(Handle menu) {
    const auto found = menus_.find(menu);
    if (found == menus_.end()) {
        return false;
    }
    ContentChanged(menu);
    const std::vector<Item> items = std::move(found->second);
    menus_.erase(found);
    for (const Item& item : items) {
        DestroyMenu(item.submenu);
    }
    return true;
}

bool Menus::AppendMenu(Handle menu, Long flags, Long newId, std::u16string_view text) {
    const Long end = GetMenuItemCount(menu);
    return InsertMenu(menu, end, flags | MF_BYPOSITION, newId, text);
}

bool Menus::InsertMenu(Handle menu, Long item, Long flags, Long newId, std::u16string_view text) {
    const auto place = FindItem(menu, item, flags);
    const auto found = menus_.find(place ? place->menu : menu);
    if (found == menus_.end()) {
        return false;
    }
    ContentChanged(found->first);
    const std::size_t index = place ? place->index : found->second.size();
    found->second.insert(found->second.begin() + static_cast<std::ptrdiff_t>(index),
                         MakeItem(flags, newId, text));
    return true;
}

bool Menus::ModifyMenu(Handle menu, Long item, Long flags, Long newId, std::u16string_view text) {
    const auto place = FindItem(menu, item, flags);
    if (!place) {
        return false;
    }
    Item& changed = menus_[place->menu][place->index];
    Item fresh = MakeItem(flags, newId, text);
    fresh.size = changed.size;
    const Handle lost = changed.submenu != fresh.submenu ? changed.submenu : 0;
    changed = std::move(fresh);
    DestroyMenu(lost);
    if (tracking_ != nullptr) {
        tracking_->ItemChanged(place->menu, place->index);
    }
    return true;
}

bool Menus::RemoveMenu(Handle menu, Long item, Long flags) {
    const auto place = FindItem(menu, item, flags);
    if (!place) {
        return false;
    }
    ContentChanged(place->menu);
    std::vector<Item>& items = menus_[place->menu];
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(place->index));
    return true;
}

std::optional<Menus::Place> Menus::FindItem(Handle menu, Long item, Long flags) const {
    const std::vector<Item>* items = Items(menu);
    if (items == nullptr) {
        return std::nullopt;
    }
    if ((flags & MF_BYPOSITION) != 0) {
        const bool there = item >= 0 && item < static_cast<Long>(items->size());
        return there ? std::optional(Place{menu, static_cast<std::size_t>(item)}) : std::nullopt;
    }
    const auto found = std::find_if(items->begin(), items->end(),
                                    [item](const Item& known) { return known.id == item; });
    if (found != items->end()) {
        return Place{menu, static_cast<std::size_t>(found - items->begin())};
    }
    for (const Item& known : *items) {
        if (known.submenu != 0 && known.submenu != menu) {
            if (const auto below = FindItem(known.submenu, item, flags)) {
                return below;
            }
        }
    }
    return std::nullopt;
}

Long Menus::GetMenuItemCount(Handle menu) const {
    const std::vector<Item>* items = Items(menu);
    return items != nullptr ? static_cast<Long>(items->size()) : -1;
}

std::optional<MenuItemInfo> Menus::GetMenuItemInfo(Handle menu, Long item, Long flags) const {
    const auto place = FindItem(menu, item, flags);
    if (!place) {
        return std::nullopt;
    }
    const Item& found = (*Items(place->menu))[place->index];
    return MenuItemInfo{found.type, found.state, found.id, found.submenu};
}

Long Menus::TrackPopupMenu(Handle menu, Long flags, Point ptScreen, Handle owner,
                           const PopupColours& colours) {
    if (tracking_ != nullptr || !windows_.IsWindow(owner) || GetMenuItemCount(menu) < 1) {
        return 0;
    }
    std::vector<Handle> closing;
    Long chosen = 0;
    {
        const WindowSystem::Dispatching dispatching(windows_);
        MenuTracking tracking(windows_, *this, {owner, flags, colours});
        struct Running {
            Menus& menus;
            ~Running() {
                menus.windows_.TakeInput(nullptr);
                menus.tracking_ = nullptr;
            }
        } const running{*this};
        tracking_ = &tracking;
        windows_.TakeInput(&tracking);
        tracking.Open(menu, ptScreen);
        if (const auto observer = onOpening_) {
            observer(menu);
        }
        chosen = tracking.Run();
        closing = tracking.CloseRequests();
    }
    for (const Handle window : closing) {
        windows_.PostMessage(window, WM_CLOSE, 0, 0);
    }
    return chosen;
}

void Menus::EndMenu(Long id) {
    if (tracking_ != nullptr) {
        tracking_->End(id);
    }
}

void Menus::ObserveOpening(std::function<void(Handle menu)> observer) {
    onOpening_ = std::move(observer);
}

void Menus::ObserveSubmenus(std::function<void(Handle menu, std::size_t level)> observer) {
    onSubmenu_ = std::move(observer);
}

void Menus::SubmenuOpened(Handle menu, std::size_t level) const {
    if (const auto observer = onSubmenu_) {
        observer(menu, level);
    }
}

void Menus::Measure(Handle menu, Handle owner) {
    // By position, and looked up afresh each time: the owner may change the menu meanwhile.
    for (std::size_t i = 0; Items(menu) != nullptr && i < Items(menu)->size(); ++i) {
        const Item& item = (*Items(menu))[i];
        if (item.size) {
            continue;
        }
        const Long name = ++lastRecord_;
        measuring_[name].itemId = item.id;
        windows_.SendMessage(owner, WM_MEASUREITEM, 0, name);
        const MeasureItemRecord record = measuring_[name];
        measuring_.erase(name);
        if (Items(menu) != nullptr && i < Items(menu)->size()) {
            menus_[menu][i].size =
                Size{std::max(record.itemWidth, 0), std::max(record.itemHeight, 0)};
        }
    }
}

void Menus::Draw(Handle owner, DrawItemRecord record) {
    const Long name = ++lastRecord_;
    drawing_[name] = record;
    windows_.SendMessage(owner, WM_DRAWITEM, 0, name);
    drawing_.erase(name);
}

MeasureItemRecord* Menus::MeasureRecord(Long lParam) {
    const auto found = measuring_.find(lParam);
    return found == measuring_.end() ? nullptr : &found->second;
}

const DrawItemRecord* Menus::DrawRecord(Long lParam) const {
    const auto found = drawing_.find(lParam);
    return found == drawing_.end() ? nullptr : &found->second;
}

}  // namespace platform

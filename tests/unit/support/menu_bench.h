// A desktop with one window that owns menus: rows of 100 x 20 pixels, lines of 6. What the user
// does is set down beforehand by time; a menu that nobody ends is cancelled after it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/base/keys.h"
#include "platform/headless/headless_driver.h"
#include "platform/menus/menu.h"
#include "platform/windows/window_system.h"

namespace support {

using platform::Handle;
using platform::Long;
using platform::Point;
using platform::Rect;

/// Knows what popups are on the screen, and who has the input.
class PopupDriver : public platform::HeadlessDriver {
  public:
    PopupDriver() : HeadlessDriver(Clock::kVirtual) {}
    void SetTopLevelPopup(Handle window, Handle owner, platform::PopupKind /*kind*/) override {
        owners[window] = owner;
    }
    void SetTopLevelRect(Handle window, const Rect& rect) override { rects_[window] = rect; }
    void SetTopLevelVisible(Handle window, bool visible) override {
        if (visible && owners.contains(window)) {
            popups.push_back(window);
        }
    }
    void DestroyTopLevel(Handle window) override { std::erase(popups, window); }
    void GrabInput(Handle popup) override { grabbed = popup; }
    void ReleaseInput() override { grabbed = 0; }
    Rect WorkAreaAt(Point ptScreen) const override {
        return ptScreen.x >= 1024 ? Rect{1024, 0, 2024, 700} : WorkArea();
    }

    /// Places of the open popups, the first one first.
    std::vector<Rect> Places() const {
        std::vector<Rect> places;
        for (const Handle popup : popups) {
            places.push_back(rects_.at(popup));
        }
        return places;
    }

    std::map<Handle, Handle> owners;
    std::vector<Handle> popups;
    Handle grabbed = 0;

  private:
    std::map<Handle, Rect> rects_;
};

class MenuBench {
  public:
    static constexpr Long kFirstLine = 900;  ///< ids from here on are lines

    PopupDriver driver;
    platform::WindowSystem windows{driver};
    platform::Menus& menus = windows.PopupMenus();
    Handle owner = windows.CreateWindow(
        0, {0, 0, 50, 50}, [this](const platform::Message& m) { return OwnerProc(m); });
    Handle menu = menus.CreatePopupMenu();
    Long selected = 0;  ///< id of the row that was drawn as selected last, 0 once it is not
    std::vector<std::string> drawn;     ///< "id action state"
    std::vector<Long> measured;         ///< ids
    Long width = 100;                   ///< of a row
    std::vector<std::string> messages;  ///< what else the owner got: "id wParam lParam"

    MenuBench() {
        windows.ShowWindow(owner, platform::SW_SHOW);
        windows.SetFocus(owner);
        messages.clear();
    }

    void Add(Long id, std::u16string_view text = u"", Long flags = 0) {
        Add(menu, id, text, flags);
    }
    void Add(Handle to, Long id, std::u16string_view text = u"", Long flags = 0) {
        const Long line =
            id >= kFirstLine && (flags & platform::MF_POPUP) == 0 ? platform::MF_SEPARATOR : 0;
        menus.AppendMenu(to, flags | line | platform::MF_OWNERDRAW, id, text);
    }
    /// Adds a row with a submenu, and answers the submenu.
    Handle AddSubmenu(Handle to, std::u16string_view text = u"") {
        const Handle submenu = menus.CreatePopupMenu();
        Add(to, submenu, text, platform::MF_POPUP);
        return submenu;
    }

    // What happens so many milliseconds after now.

    void At(platform::Millis when, std::function<void()> call) {
        windows.Schedule(when, std::move(call));
    }
    void KeyDown(platform::Millis when, Long code) {
        At(when, [=, this] { windows.Deliver(platform::KeyChanged{code, 0, true}); });
    }
    void Key(platform::Millis when, Long code) {
        KeyDown(when, code);
        At(when, [=, this] { windows.Deliver(platform::KeyChanged{code, 0, false}); });
    }
    void Type(platform::Millis when, std::u16string text) {
        At(when, [=, this] { windows.Deliver(platform::TextTyped{text}); });
    }
    void Move(platform::Millis when, Point to) {
        At(when, [=, this] {
            driver.MovePointer(to);
            windows.Deliver(platform::PointerMoved{to, 0});
        });
    }
    void Button(platform::Millis when, bool down, Long button = 1) {
        At(when, [=, this] {
            windows.Deliver(platform::ButtonChanged{driver.Pointer(), button, down, 0});
        });
    }
    void Click(platform::Millis when, Point at, Long button = 1) {
        Move(when, at);
        Button(when, true, button);
        Button(when, false, button);
    }
    /// Looks at something while the menu is open.
    void Look(platform::Millis when, std::function<void()> look) { At(when, std::move(look)); }

    Long Track(Long flags = platform::TPM_RIGHTBUTTON, Point at = {100, 100}) {
        return menus.TrackPopupMenu(menu, flags, at, owner);
    }

  private:
    Long OwnerProc(const platform::Message& message) {
        if (message.id == platform::WM_MEASUREITEM) {
            auto* record = menus.MeasureRecord(message.lParam);
            measured.push_back(record->itemId);
            record->itemWidth = width;
            record->itemHeight = Rows::IsLine(menus, record->itemId) ? 6 : 20;
            return 1;
        }
        if (message.id == platform::WM_DRAWITEM) {
            const auto* record = menus.DrawRecord(message.lParam);
            const bool isSelected = (record->itemState & platform::ODS_SELECTED) != 0;
            record->deviceContext->FillRect(record->rect, isSelected ? 0x0000FF : 0x00FF00);
            drawn.push_back(std::to_string(record->itemId) + " " +
                            std::to_string(record->itemAction) + " " +
                            std::to_string(record->itemState));
            selected = isSelected ? record->itemId : selected == record->itemId ? 0 : selected;
            return 1;
        }
        messages.push_back(std::to_string(message.id) + " " + std::to_string(message.wParam) + " " +
                           std::to_string(message.lParam));
        return 0;
    }

    struct Rows {
        static bool IsLine(const platform::Menus& menus, Long id) {
            return id >= kFirstLine && menus.GetMenuItemCount(id) == -1;
        }
    };
};

}  // namespace support

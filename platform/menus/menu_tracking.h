// The loop behind TrackPopupMenu: what keys and the pointer do to the popups that are open. Input
// reaches it from the window system, which keeps it from everybody else meanwhile.
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/menus/menu_popup.h"
#include "platform/windows/modal_input.h"

namespace platform {

class MenuTracking : public ModalInput {
  public:
    struct Session {
        Handle owner = 0;
        Long flags = 0;  ///< TPM_...
        PopupColours colours;
    };

    MenuTracking(WindowSystem& windows, Menus& menus, Session session);
    /// Nothing of it stays on the screen.
    ~MenuTracking() override;
    MenuTracking(const MenuTracking&) = delete;
    MenuTracking& operator=(const MenuTracking&) = delete;

    void Open(Handle menu, Point ptScreen);
    /// Answers the chosen id once the user is done.
    Long Run();
    /// Run will answer that id.
    void End(Long id);

    bool Shows(Handle menu) const;
    void ItemChanged(Handle menu, std::size_t index);
    /// The windows that were asked to close meanwhile.
    const std::vector<Handle>& CloseRequests() const { return closing_; }

    void PointerMoved(Point ptScreen) override;
    void ButtonChange(const ButtonChanged& event, bool isOlder) override;
    void Wheel(const WheelTurned& event) override;
    void KeyDown(Long code) override;
    void Text(std::u16string_view text) override;
    void CloseRequest(Handle window) override;
    void InputLost() override { End(0); }

  private:
    // A popup, and the row whose submenu is the next level.
    struct Level {
        std::unique_ptr<MenuPopup> popup;
        std::optional<std::size_t> openRow;
    };
    struct Hover {
        std::size_t level = 0;
        std::size_t row = 0;
        bool operator==(const Hover&) const = default;
    };

    bool OwnerIsThere() const;
    bool CanGoOn() const;
    MenuPopup& Active() { return *levels_[active_].popup; }
    std::optional<std::size_t> LevelAt(Point ptScreen) const;
    bool CanSelect(const MenuPopup& popup, std::size_t row) const;

    void PointAt(std::size_t level, std::size_t row);
    void HoverOver(Hover hover);
    void EndHover();
    void Settle();
    void ScrollUnderPointer(std::size_t level);
    void OpenSubmenu(std::size_t level, std::size_t row);
    void CloseBelow(std::size_t level);
    void ChooseRow(std::size_t level, std::size_t row);
    void SelectByKey(std::optional<std::size_t> row);
    void Step(Long direction, bool fromTheEnd);
    void EnterSubmenu();
    void LeaveSubmenu();
    void TakeSelected();
    void Letter(char16_t unit);

    WindowSystem& windows_;
    Menus& menus_;
    Session session_;
    bool ownerWasVisible_;
    bool ownerWasIconic_;
    std::vector<Level> levels_;
    std::size_t active_ = 0;  ///< the level that keys act on
    std::optional<Hover> hover_;
    Long scrolling_ = 0;
    Point opened_;  ///< where the pointer was
    Point pointer_;
    bool moved_ = false;  ///< the pointer has gone somewhere since
    bool done_ = false;
    Long chosen_ = 0;
    std::vector<Handle> closing_;
};

}  // namespace platform

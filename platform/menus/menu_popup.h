// One popup of a menu on the screen: a window of its own with a frame, the rows of one menu in it,
// and arrows above and below them where the menu is longer than the screen.
#pragma once

#include <optional>
#include <vector>

#include "platform/menus/menu.h"
#include "platform/windows/window_system.h"

namespace platform {

/// Where a popup of that size goes: at a point, aligned as TPM_... flags say, within `area`. One
/// that would end outside opens to the other side of the point if it fits there, else it is moved;
/// one that is too high is cut.
Rect PlacePopup(Size size, Long flags, Point ptScreen, const Rect& area);
/// Beside the row that it belongs to: to the right of the popup, else to its left.
Rect PlaceSubmenu(Size size, const Rect& rowOnScreen, const Rect& popup, const Rect& area);

class MenuPopup {
  public:
    /// Not shown yet. The rows have been measured (Menus::Measure); `owner` draws them. `opener` is
    /// the window that the popup belongs to: the owner, or the popup of the menu above.
    MenuPopup(WindowSystem& windows, Menus& menus, Handle menu, Handle owner, Handle opener,
              const PopupColours& colours);
    ~MenuPopup();
    MenuPopup(const MenuPopup&) = delete;
    MenuPopup& operator=(const MenuPopup&) = delete;

    Handle Menu() const { return menu_; }
    Handle Window() const { return window_; }
    /// What the rows and the frame take.
    Size WantedSize() const;
    /// Draws all rows and shows the popup at a rectangle of the screen.
    void Show(const Rect& place);

    /// Where it is; the desktop may have put it elsewhere than Show was told.
    Rect Place() const { return windows_.GetWindowRect(window_); }
    std::size_t Rows() const { return rows_.size(); }
    /// The item of a row; null once the menu has been changed.
    const Menus::Item* Item(std::size_t row) const;
    /// The row that shows at a point of the screen.
    std::optional<std::size_t> RowAt(Point ptScreen) const;
    Rect RowOnScreen(std::size_t row) const;

    std::optional<std::size_t> Selected() const { return selected_; }
    /// Draws the two rows that change. The selected row is brought into view if wanted.
    void Select(std::optional<std::size_t> row, bool bringIntoView = false);
    void Redraw(std::size_t row, Long action);

    // A menu that is longer than the screen.

    /// -1 on the arrow above the rows, 1 on the one below, else 0.
    Long ArrowAt(Point ptScreen) const;
    /// Pixels, positive towards the end.
    void ScrollBy(Long distance);

  private:
    bool Scrolls() const { return Place().Height() < WantedSize().height; }
    Rect View() const;
    void Draw();
    void DrawFrame();
    void DrawSubmenuArrow(std::size_t row);

    WindowSystem& windows_;
    Menus& menus_;
    Handle menu_;
    Handle owner_;
    PopupColours colours_;
    std::vector<Rect> rows_;  ///< within the content
    Long scrolled_ = 0;       ///< how much of the content lies above the view
    std::optional<std::size_t> selected_;
    // The popup, the part of it in which rows show, and the rows, which move in that part.
    Handle window_ = 0;
    Handle view_ = 0;
    Handle contentWindow_ = 0;
    Surface frame_;
    Surface content_;
};

}  // namespace platform

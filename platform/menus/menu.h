// Popup menus: lists of items behind handles, which their owner draws, and the loop that shows one
// and answers what was chosen. The menus know no looks: the size and the picture of a row come from
// the owner window, through WM_MEASUREITEM and WM_DRAWITEM.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/types.h"
#include "platform/drawing/surface.h"

namespace platform {

class MenuTracking;
class WindowSystem;

// Flags of an item.
inline constexpr Long MF_GRAYED = 1;
inline constexpr Long MF_DISABLED = 2;  ///< either of the two keeps the item from being chosen
inline constexpr Long MF_CHECKED = 8;
inline constexpr Long MF_POPUP = 16;  ///< the id is the handle of a submenu
inline constexpr Long MF_OWNERDRAW = 256;
inline constexpr Long MF_BYCOMMAND = 0;      ///< an item is named by its id, in submenus too
inline constexpr Long MF_BYPOSITION = 1024;  ///< an item is named by its place, from 0
inline constexpr Long MFT_RADIOCHECK = 512;
inline constexpr Long MF_SEPARATOR = 2048;  ///< cannot be selected: lines and headings

// Flags of TrackPopupMenu.
inline constexpr Long TPM_RIGHTBUTTON = 2;    ///< the right button chooses as well
inline constexpr Long TPM_CENTERALIGN = 4;    ///< centred on x
inline constexpr Long TPM_RIGHTALIGN = 8;     ///< ends at x
inline constexpr Long TPM_VCENTERALIGN = 16;  ///< centred on y
inline constexpr Long TPM_BOTTOMALIGN = 32;   ///< ends at y
inline constexpr Long TPM_VERTICAL = 64;      ///< no effect: nothing is kept free of the menu
inline constexpr Long TPM_NONOTIFY = 128;     ///< always so
inline constexpr Long TPM_RETURNCMD = 256;    ///< always so

/// Says of a measure or draw record that it is one of a menu.
inline constexpr Long ODT_MENU = 1;
// Why an item is drawn.
inline constexpr Long ODA_DRAWENTIRE = 1;
inline constexpr Long ODA_SELECT = 2;
// How it is to be drawn.
inline constexpr Long ODS_SELECTED = 1;
inline constexpr Long ODS_GRAYED = 2;
inline constexpr Long ODS_DISABLED = 4;
inline constexpr Long ODS_CHECKED = 8;

/// What WM_MEASUREITEM asks for: the owner writes width and height, in pixels.
struct MeasureItemRecord {
    Long controlType = ODT_MENU;
    Long controlId = 0;
    Long itemId = 0;
    Long itemWidth = 0;
    Long itemHeight = 0;
    Long itemData = 0;
};

/// What WM_DRAWITEM hands over: where to draw, and the item's rectangle there. The origin of the
/// surface is the corner of the popup's first row.
struct DrawItemRecord {
    Long controlType = ODT_MENU;
    Long controlId = 0;
    Long itemId = 0;
    Long itemAction = ODA_DRAWENTIRE;
    Long itemState = 0;
    Handle itemWindow = 0;
    Surface* deviceContext = nullptr;
    Rect rect;
    Long itemData = 0;
};

struct MenuItemInfo {
    Long type = 0;   ///< MF_SEPARATOR, MF_OWNERDRAW, MFT_RADIOCHECK
    Long state = 0;  ///< MF_GRAYED, MF_DISABLED, MF_CHECKED
    Long id = 0;
    Handle submenu = 0;
};

/// The colours of what the popups draw themselves.
struct PopupColours {
    Colour frame = 0x800000;
    Colour back = 0xFF0000;   ///< behind the arrows of a menu that is longer than the screen
    Colour arrow = 0xFFC0C0;  ///< of these, and of rows with a submenu
    Colour selectedArrow = 0xFFC0C0;
};

class Menus {
  public:
    explicit Menus(WindowSystem& windows);
    ~Menus();
    Menus(const Menus&) = delete;
    Menus& operator=(const Menus&) = delete;

    // Building. A handle that names no menu, or an item that is not there, answers False and
    // changes nothing. `text` is what the keyboard finds a row by, nothing else.

    Handle CreatePopupMenu();
    /// The menu and all submenus that its items have.
    bool DestroyMenu(Handle menu);
    bool AppendMenu(Handle menu, Long flags, Long newId, std::u16string_view text);
    /// In front of an item, or at the end if there is no such item.
    bool InsertMenu(Handle menu, Long item, Long flags, Long newId, std::u16string_view text);
    /// Other flags, id and text for an item, which keeps its size. A submenu that it loses is
    /// destroyed.
    bool ModifyMenu(Handle menu, Long item, Long flags, Long newId, std::u16string_view text);
    /// Takes the item out; its submenu lives on.
    bool RemoveMenu(Handle menu, Long item, Long flags);

    /// -1 if there is no such menu.
    Long GetMenuItemCount(Handle menu) const;
    std::optional<MenuItemInfo> GetMenuItemInfo(Handle menu, Long item, Long flags) const;

    /// The system menu of a top-level window: restore, move, size, minimise, maximise, close, by
    /// their SC_... commands. It lives as long as the window. 0 for what is no top-level window.
    Handle GetSystemMenu(Handle window);

    // Showing.

    /// Shows the menu at a point of the screen and answers the id of the item that the user chose,
    /// 0 for none. It pumps meanwhile: timers fire and messages flow, and the focus stays where it
    /// is, but keys and the pointer are the menu's. Answers 0 at once where there is no owner, no
    /// item, or another menu is open already. Ends with 0 when the owner goes, hides or is
    /// minimised, when an open menu is changed, and when the desktop takes the input away. A window
    /// that is to be closed meanwhile gets its WM_CLOSE once the menu has gone.
    Long TrackPopupMenu(Handle menu, Long flags, Point ptScreen, Handle owner,
                        const PopupColours& colours = {});
    /// Ends the menu that is open, as if the item with that id had been chosen, or none (0).
    void EndMenu(Long id);

    /// Told of each popup that a TrackPopupMenu opens, once it is on the screen. One observer; an
    /// empty function ends it.
    void ObserveOpening(std::function<void(Handle menu)> observer);
    /// Likewise told of each submenu that opens below that popup: `level` is 1 where a row of the
    /// popup itself opens it, 2 where a row of such a submenu does, and so on. What was open at
    /// that level, and below it, has closed before.
    void ObserveSubmenus(std::function<void(Handle menu, std::size_t level)> observer);

    /// The record that lParam of WM_MEASUREITEM or WM_DRAWITEM names, while that message is
    /// handled; else null.
    MeasureItemRecord* MeasureRecord(Long lParam);
    const DrawItemRecord* DrawRecord(Long lParam) const;

    // For the loop alone.

    struct Item {
        Long type = 0;
        Long state = 0;
        Long id = 0;
        Handle submenu = 0;
        std::u16string text;
        std::optional<Size> size;  ///< once it has been measured
        bool CanBeSelected() const { return (type & MF_SEPARATOR) == 0; }
        bool CanBeChosen() const {
            return CanBeSelected() && (state & (MF_GRAYED | MF_DISABLED)) == 0;
        }
    };
    const std::vector<Item>* Items(Handle menu) const;
    /// Asks the owner for the sizes that are not known yet.
    void Measure(Handle menu, Handle owner);
    /// Has the owner draw an item.
    void Draw(Handle owner, DrawItemRecord record);
    /// Tells the observer.
    void SubmenuOpened(Handle menu, std::size_t level) const;

  private:
    struct Place {
        Handle menu = 0;
        std::size_t index = 0;
    };
    std::optional<Place> FindItem(Handle menu, Long item, Long flags) const;
    void ContentChanged(Handle menu);
    /// A window has been destroyed, and its system menu goes with it.
    void WindowGone(Handle window);

    WindowSystem& windows_;
    std::map<Handle, std::vector<Item>> menus_;
    std::map<Handle, Handle> systemMenus_;  ///< by their windows
    std::map<Long, MeasureItemRecord> measuring_;
    std::map<Long, DrawItemRecord> drawing_;
    Long lastRecord_ = 0;
    MenuTracking* tracking_ = nullptr;  ///< the loop that is running
    std::function<void(Handle menu)> onOpening_;
    std::function<void(Handle menu, std::size_t level)> onSubmenu_;
};

}  // namespace platform

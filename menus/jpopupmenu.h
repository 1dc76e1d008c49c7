// JPopupMenu is a tree of commands in one flat table, addressed by index (from 1) or by key. It
// keeps the platform's menus behind the table, measures and draws every row itself, and turns a
// choice or a key combination into one event, Click, with the index of the item.
//
// An index that names no item makes a write do nothing and a read answer nothing, 0 or False.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "menus/mJPopupMenu.h"
#include "platform/drawing/surface.h"
#include "platform/driver.h"
#include "platform/menus/menu.h"

namespace sarnel {

/// The colours of the rows; the values are those before a skin is in force.
struct MenuColours {
    Colour bkText = 0xFF0000;      ///< background where there is no picture
    Colour txtColor = 0x800000;    ///< text
    Colour cDisabled1 = 0xFFC0C0;  ///< lower layer of a disabled text
    Colour cDisabled2 = 0x800000;  ///< upper layer
    Colour selGrad1 = 0xFFC0C0;    ///< selection bar, left
    Colour selGrad2 = 0xD00000;    ///< right
    Colour selText = 0xFFC0C0;     ///< selected text, and the bar's dotted border
    Colour headGrad1 = 0xFFC0C0;   ///< header row, top
    Colour headGrad2 = 0x800000;   ///< bottom; also the frame around a popup
    Colour headText = 0xFFC0C0;    ///< its text
    Colour cSep1 = 0xFFC0C0;       ///< separator, left
    Colour cSep2 = 0x800000;       ///< right
    bool operator==(const MenuColours&) const = default;
};

struct MenuFont {
    std::u16string fName = u"Tahoma";
    Long fSize = 8;  ///< points
    bool fItalic = false;
    Long fWeight = 400;  ///< 700 is bold
    Long fCharset = 1;
    bool operator==(const MenuFont&) const = default;
};

/// What a key text such as "Ctrl+Del" stands for.
struct KeyCombination {
    Long modifiers = 0;  ///< 1 Shift, 2 Ctrl, 4 Alt
    Long code = 0;       ///< a virtual key, 0 for none
    bool operator==(const KeyCombination&) const = default;
};
/// Pieces between plus signs; case matters, and a piece that is not known means nothing.
KeyCombination ParseKeyText(std::u16string_view keyText);

class JPopupMenu {
  public:
    /// Key combinations are live from the start. Nothing can be measured or shown before hWndOwner
    /// has been written.
    explicit JPopupMenu(std::shared_ptr<mJPopupMenu> shared);
    ~JPopupMenu();
    JPopupMenu(const JPopupMenu&) = delete;
    JPopupMenu& operator=(const JPopupMenu&) = delete;

    // Items.

    /// Adds an item under a parent (0 for the top level) and answers its index. What stands behind
    /// "#" in the caption is the text of its key combination; "-" alone is a separator, "-" in
    /// front of a text makes it a header.
    Long AddItem(std::u16string_view sCaption, Long lParentIndex, std::u16string_view sKey,
                 bool bChecked, bool bEnabled);
    void RemoveItem(std::u16string_view vKey) { RemoveItemByIndex(IndexForKey(vKey)); }
    /// With all items below it. The indices of later items fall.
    void RemoveItemByIndex(Long lIndex);
    /// Removes all items below an item; its submenu stays, to be filled again.
    void ClearSubMenusOfItem(std::u16string_view vKey);
    void Clear();
    Long Count() const { return static_cast<Long>(items_.size()); }
    /// The first item with that key, 0 if none. A number stands for itself, if it is an index.
    Long IndexForKey(std::u16string_view vKey) const;
    /// The first item with that id in the platform's menus, 0 if none.
    Long ItemForID(Long wID) const;

    /// Without the key text. A write is read as in AddItem; one without "#" leaves the combination.
    std::u16string Caption(Long lIndex) const { return Get(lIndex).caption; }
    void Caption(Long lIndex, std::u16string_view vNewValue);
    std::u16string KeyText(Long lIndex) const { return Get(lIndex).keyText; }
    const KeyCombination& Keys(Long lIndex) const { return Get(lIndex).combination; }
    std::u16string ItemKey(Long lIndex) const { return Get(lIndex).key; }
    void ItemKey(Long lIndex, std::u16string_view sKey);
    Long ItemParentIndex(Long lIndex) const { return Get(lIndex).parentIndex; }
    bool Checked(Long lIndex) const;
    void Checked(Long lIndex, bool bChecked);
    bool Enabled(Long lIndex) const;
    void Enabled(Long lIndex, bool bEnabled);
    /// A write of True takes the check mark away.
    bool RadioCheck(Long lIndex) const { return Get(lIndex).radio; }
    void RadioCheck(Long lIndex, bool bRadioCheck);
    /// Marks the item, and unmarks the others of its group: those up to the next separators or
    /// headers of the same menu.
    void GroupToggle(Long lIndex);
    /// A coloured title row that cannot be chosen.
    bool Header(Long lIndex) const { return Get(lIndex).header; }
    void Header(Long lIndex, bool bState);
    /// Whether MeasureItem and DrawItem are raised for the item.
    bool OwnerDraw(Long lIndex) const { return Get(lIndex).ownerDraw; }
    void OwnerDraw(Long lIndex, bool bState);

    /// The platform's menu in which the item stands, and the one that it opens; 0 if none.
    Handle hMenu(Long lIndex) const { return Get(lIndex).containingMenu; }
    Handle Submenu(Long lIndex) const;
    /// What the platform knows the item by.
    Long MenuId(Long lIndex) const { return Get(lIndex).menuId; }
    /// Pixels, as last measured.
    Long MenuItemHeight(Long lIndex) const { return Get(lIndex).height; }
    Long MenuItemWidth(Long lIndex) const { return Get(lIndex).width; }

    // Looks.

    /// The window that the popups belong to, which passes WM_MEASUREITEM and WM_DRAWITEM on.
    Handle hWndOwner() const { return owner_; }
    void hWndOwner(Handle hWndA);
    /// Tiled behind the items. A null or empty picture leaves none.
    platform::PictureRef BackgroundPicture() const { return background_; }
    void BackgroundPicture(platform::PictureRef sPic);
    void ClearBackgroundPicture() { background_ = nullptr; }
    const MenuFont& FontData() const { return fontData_; }
    /// Refreshes.
    void SetFontData(MenuFont font);
    const MenuColours& Colors() const { return colours_; }
    /// The next drawing uses them.
    void SetColors(const MenuColours& colours) { colours_ = colours; }
    /// Makes the font anew and has all items measured again.
    void Refresh();

    // Showing.

    /// Shows the menu in which an item stands (below 1: the whole menu), and answers the index of
    /// the item that was chosen, 0 if none, once Click has been raised. -1 for left or top is the
    /// pointer's. Align and button are TPM_... flags. Pumps meanwhile.
    Long ShowPopup(Long lLeftPixel, Long lTopPixel, Long lIndex, Long bAlign, Long bMButton,
                   bool bTryToKeepLeft);
    /// The two messages of the owner window; False if they are not about menus. Of an item that is
    /// not in the table the size is not answered either, but its row gets the tiles.
    bool WM_MEASUREITEM_Msg(Long lParam);
    bool WM_DRAWITEM_Msg(Long lParam);

    // Events.

    std::function<void(Long& ItemNumber)> onClick;
    /// Of an item with OwnerDraw: the size that it will get.
    std::function<void(Long lMenuIndex, Long& lWidth, Long& lHeight)> onMeasureItem;
    struct Drawing {
        platform::Surface& hdc;
        Long lMenuIndex;
        platform::Rect rect;
        bool bSelected;
        bool bChecked;
        bool bDisabled;
    };
    /// Of an item with OwnerDraw. If bDoDefault stays False, the handler has drawn it.
    std::function<void(const Drawing& drawing, bool& bDoDefault)> onDrawItem;

    /// For the keyboard filter: raises Click for the first enabled item with exactly this
    /// combination, and answers whether there is one.
    bool AcceleratorPress(Long key, Long modifiers);

  private:
    struct Item {
        std::u16string caption;
        std::u16string mnemonic;  ///< upper-case letter behind "&"; nothing reads it
        std::u16string keyText;
        std::u16string key;
        KeyCombination combination;
        Long id = 0;
        Long menuId = 0;  ///< the id, or the submenu's handle once there is one
        Long parentIndex = 0;
        Handle parentMenu = 0;
        Handle containingMenu = 0;
        Long height = 0;
        Long width = 0;
        bool checked = false;
        bool radio = false;
        bool enabled = false;
        bool marked = false;  ///< to be removed
        bool header = false;
        bool ownerDraw = false;

        bool IsLine() const { return caption == u"-"; }
        /// Marks, the enabled state, and whether the platform is to treat it as a separator.
        Long Flags() const;
    };
    struct Row;

    bool Has(Long index) const { return index >= 1 && index <= Count(); }
    Item& At(Long index) { return items_[static_cast<std::size_t>(index) - 1]; }
    const Item& At(Long index) const { return items_[static_cast<std::size_t>(index) - 1]; }
    const Item& Get(Long index) const;

    Long NewId();
    void ParseCaption(Item& item, std::u16string_view text);
    void EnterInMenus(Long index);
    Handle SubmenuOfParent(Item& item);
    Handle CreateSubmenu();
    void SetFlags(Long index, Long set, Long clear);
    void MeasureAgain(Long index);
    /// What the platform knows of the item; nothing if it is in none of its menus.
    std::optional<platform::MenuItemInfo> InfoOf(const Item& item) const;
    /// Its row among those of its menu; their number if it is not among them.
    Long PositionOf(const Item& item) const;
    void MarkBelow(Handle submenu, std::vector<Handle>& submenus);
    void Compact();
    platform::Menus& PlatformMenus() const;

    Long WidthOf(std::u16string_view text) const;
    Long MeasureTexts(Long index);
    void DrawRow(const Row& row);
    void DrawDisabled(const Row& row);
    void DrawSeparator(platform::Surface& surface, const platform::Rect& rect);
    void DrawHeaderText(platform::Surface& surface, std::u16string_view text,
                        const platform::Rect& rect);
    void DrawItemBackground(const Row& row);
    void DrawItemText(const Row& row, const platform::Rect& rect, Colour colour);

    std::shared_ptr<mJPopupMenu> shared_;
    platform::WindowSystem& windows_;
    Handle owner_ = 0;
    bool canMeasure_ = false;
    std::vector<Item> items_;
    std::vector<Handle> submenus_;
    Handle root_ = 0;
    Long nextId_;
    MenuFont fontData_;
    platform::Font font_;
    MenuColours colours_;
    platform::PictureRef background_;
    Long itemHeight_ = 0;
    Long keyTextWidth_ = 0;  ///< of the menu measured last
};

}  // namespace sarnel

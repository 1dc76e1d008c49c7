// JPopupMenu is a tree of commands in one flat table, addressed by index (from 1) or by key. The
// table stands; showing it, drawing it and its key combinations are not built yet.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/surface.h"

namespace sarnel {

using platform::Colour;
using platform::Long;

/// The colours of the items; the values are those before a skin is in force.
struct MenuColours {
    Colour bkText = 0xFF0000;      ///< background where there is no picture
    Colour txtColor = 0x800000;    ///<
    Colour cDisabled1 = 0xFFC0C0;  ///< lower layer of a disabled text
    Colour cDisabled2 = 0x800000;  ///< upper layer
    Colour selGrad1 = 0xFFC0C0;    ///< selection bar, left
    Colour selGrad2 = 0xD00000;    ///< right
    Colour selText = 0xFFC0C0;     ///< selected text, and the bar's dotted border
    Colour headGrad1 = 0xFFC0C0;   ///< header row, top
    Colour headGrad2 = 0x800000;   ///< bottom
    Colour headText = 0xFFC0C0;    ///<
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

class JPopupMenu {
  public:
    // Looks.

    /// Tiled behind the items. A null or empty picture leaves none.
    platform::PictureRef BackgroundPicture() const { return background_; }
    void BackgroundPicture(platform::PictureRef sPic);
    void ClearBackgroundPicture() { background_ = nullptr; }
    const MenuFont& FontData() const { return font_; }
    void SetFontData(MenuFont font) { font_ = std::move(font); }
    const MenuColours& Colors() const { return colours_; }
    void SetColors(const MenuColours& colours) { colours_ = colours; }

    // Items.

    /// Adds an item under a parent (0 for the top level) and answers its index. What stands behind
    /// "#" in the caption is the text of its key combination.
    Long AddItem(std::u16string_view sCaption, Long lParentIndex, std::u16string_view sKey,
                 bool bChecked, bool bEnabled);
    Long Count() const { return static_cast<Long>(items_.size()); }
    /// The first item with that key, 0 if none.
    Long IndexForKey(std::u16string_view vKey) const;

    // Of the item at an index from 1 to Count(); elsewhere a read is empty and a write does
    // nothing.
    std::u16string Caption(Long lIndex) const { return Get(lIndex).caption; }
    std::u16string KeyText(Long lIndex) const { return Get(lIndex).keyText; }
    std::u16string ItemKey(Long lIndex) const { return Get(lIndex).key; }
    Long ItemParentIndex(Long lIndex) const { return Get(lIndex).parent; }
    bool Checked(Long lIndex) const { return Get(lIndex).checked; }
    void Checked(Long lIndex, bool value) { Set(lIndex, &Item::checked, value); }
    bool RadioCheck(Long lIndex) const { return Get(lIndex).radio; }
    void RadioCheck(Long lIndex, bool value) { Set(lIndex, &Item::radio, value); }
    bool Enabled(Long lIndex) const { return Get(lIndex).enabled; }
    void Enabled(Long lIndex, bool value) { Set(lIndex, &Item::enabled, value); }
    bool Header(Long lIndex) const { return Get(lIndex).header; }
    void Header(Long lIndex, bool value) { Set(lIndex, &Item::header, value); }

  private:
    struct Item {
        std::u16string caption;
        std::u16string keyText;
        std::u16string key;
        Long parent = 0;
        bool checked = false;
        bool radio = false;
        bool enabled = false;
        bool header = false;
    };
    bool Has(Long index) const { return index >= 1 && index <= Count(); }
    Item Get(Long index) const;
    void Set(Long index, bool Item::*field, bool value);

    std::vector<Item> items_;
    platform::PictureRef background_;
    MenuFont font_;
    MenuColours colours_;
};

}  // namespace sarnel

// How items are measured and how each kind of row is drawn.
#include <utility>

#include "core/base/failure.h"
#include "menus/jpopupmenu.h"
#include "platform/base/keys.h"

namespace sarnel {

using namespace platform;

namespace {

constexpr Long kCaptionFormat = DT_NOPREFIX | DT_NOCLIP | DT_SINGLELINE | DT_VCENTER;
constexpr Long kKeyTextFormat = kCaptionFormat | DT_RIGHT;
constexpr Long kHeaderFormat = DT_NOPREFIX | DT_SINGLELINE | DT_VCENTER | DT_CENTER;

}  // namespace

// A row as the platform wants it drawn.
struct JPopupMenu::Row {
    const Item& item;
    Surface& surface;
    Rect rect;
    bool selected;
    bool disabled;
    bool byKey;  // it was the Up or the Down key that moved the selection
};

bool JPopupMenu::WM_MEASUREITEM_Msg(Long lParam) {
    MeasureItemRecord* record = PlatformMenus().MeasureRecord(lParam);
    if (record == nullptr || record->controlType != ODT_MENU) {
        return false;
    }
    const Long index = ItemForID(record->itemId);
    if (index == 0) {
        return false;
    }
    constexpr Long kSmallWidth = 30;
    const Item& item = At(index);
    const bool isSeparator = item.IsLine();
    // A seventh, and not the sixth of AddItem: what is answered here counts on the screen.
    Long height = isSeparator ? itemHeight_ / 7 : item.header ? itemHeight_ - 5 : itemHeight_;
    Long width = isSeparator || item.header ? kSmallWidth : itemHeight_;
    if (!isSeparator) {
        width += MeasureTexts(index);
    }
    if (item.ownerDraw) {
        if (const auto handler = onMeasureItem) {
            Step([&] { handler(index, width, height); });
        }
    }
    if (Has(index)) {
        At(index).width = width;
        At(index).height = height;
    }
    record->itemWidth = width;
    record->itemHeight = height;
    return true;
}

// The longest caption and the longest key text of the item's menu, by number of characters; they
// need not be of one item.
Long JPopupMenu::MeasureTexts(Long index) {
    const Item* longest = nullptr;
    std::u16string_view keyText;
    for (const Item& item : items_) {
        if (item.containingMenu != At(index).containingMenu) {
            continue;
        }
        if (item.caption.size() > (longest != nullptr ? longest->caption.size() : 0)) {
            longest = &item;
        }
        if (item.keyText.size() > keyText.size()) {
            keyText = item.keyText;
        }
    }
    const Long captionWidth = longest != nullptr ? WidthOf(longest->caption) : 0;
    keyTextWidth_ = keyText.empty() ? 0 : WidthOf(keyText);
    const bool isHeader = longest != nullptr && longest->header;
    return captionWidth + (isHeader ? 0 : keyTextWidth_);
}

bool JPopupMenu::WM_DRAWITEM_Msg(Long lParam) {
    const DrawItemRecord* record = PlatformMenus().DrawRecord(lParam);
    if (record == nullptr || record->controlType != ODT_MENU) {
        return false;
    }
    const bool byKey = record->itemAction == ODA_SELECT &&
                       (windows_.GetAsyncKeyState(VK_UP) || windows_.GetAsyncKeyState(VK_DOWN));
    // An id that is in nobody's table has neither text nor kind: its place gets the tiles, and its
    // mark, as those of all others do.
    const Long index = ItemForID(record->itemId);
    const Item item = Get(index);  // a copy: a handler may change the table
    const bool disabled = (record->itemState & (ODS_DISABLED | ODS_GRAYED)) != 0;
    const bool selected = (record->itemState & ODS_SELECTED) != 0;
    const bool checked = (record->itemState & ODS_CHECKED) != 0;
    const Row row{item, *record->deviceContext, record->rect, selected, disabled, byKey};
    if (item.ownerDraw) {
        bool bDoDefault = false;
        if (const auto handler = onDrawItem) {
            Step([&] {
                handler({row.surface, index, row.rect, selected, checked || item.radio, disabled},
                        bDoDefault);
            });
        }
        if (!bDoDefault) {
            return true;
        }
    }
    if (background_ != nullptr && !selected) {
        TileArea(row.surface, row.rect, *background_);
    }
    if (index != 0) {
        DrawRow(row);
    }
    if (checked || item.radio) {
        Rect place = row.rect;
        place.right = place.left + itemHeight_;
        shared_->DrawCheckMark(checked, row.surface, place,
                               selected ? colours_.selText : colours_.txtColor);
    }
    return true;
}

void JPopupMenu::DrawRow(const Row& row) {
    if (row.disabled) {
        DrawDisabled(row);
    } else if (!row.item.IsLine()) {
        DrawItemBackground(row);
        DrawItemText(row, row.rect, row.selected ? colours_.selText : colours_.txtColor);
    }
}

void JPopupMenu::DrawDisabled(const Row& row) {
    if (row.item.IsLine()) {
        DrawSeparator(row.surface, row.rect);
        return;
    }
    if (row.item.header) {
        GradientFill(row.surface, row.rect, colours_.headGrad1, colours_.headGrad2, true);
        DrawHeaderText(row.surface, row.item.caption, row.rect);
        return;
    }
    // Under the pointer a disabled item looks as ever; the keys show where they are.
    if (row.byKey || !row.selected) {
        DrawItemBackground(row);
    }
    // Engraved: 1 to the right but 2 down.
    DrawItemText(row, Offset(row.rect, {1, 2}), colours_.cDisabled1);
    DrawItemText(row, row.rect, colours_.cDisabled2);
}

void JPopupMenu::DrawSeparator(Surface& surface, const Rect& rect) {
    GradientFill(surface, rect, colours_.cSep1, colours_.cSep2, false);
}

void JPopupMenu::DrawHeaderText(Surface& surface, std::u16string_view text, const Rect& rect) {
    windows_.Text().Draw(surface, font_, text, rect, kHeaderFormat, colours_.headText);
}

void JPopupMenu::DrawItemBackground(const Row& row) {
    if (row.selected) {
        GradientFill(row.surface, row.rect, colours_.selGrad1, colours_.selGrad2, false);
        row.surface.Outline(row.rect, colours_.selText, PS_DOT);
    } else if (background_ == nullptr) {
        row.surface.FillRect(row.rect, colours_.bkText);
    }
}

void JPopupMenu::DrawItemText(const Row& row, const Rect& rect, Colour colour) {
    Rect place = rect;
    place.left += itemHeight_ - 2;
    place.right -= 6;
    windows_.Text().Draw(row.surface, font_, row.item.keyText, place, kKeyTextFormat, colour);
    place.right -= keyTextWidth_;
    windows_.Text().Draw(row.surface, font_, row.item.caption, place, kCaptionFormat, colour);
}

}  // namespace sarnel

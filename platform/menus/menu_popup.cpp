#include "platform/menus/menu_popup.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr Long kFrame = 1;
constexpr Long kArrowRow = 12;
constexpr double kHalf = 0.5;  // from a pixel's edge to its middle
constexpr Long kOverlap = 2;   // of a submenu with the popup that it belongs to

// One dimension: a length from `start` on, moved into the range; what is longer begins where it
// does.
Long Within(Long start, Long length, Long first, Long end) {
    return std::max(std::min(start, end - length), first);
}

Rect MakeRect(Long left, Long top, Size size) {
    return {left, top, left + size.width, top + size.height};
}

}  // namespace

Rect PlacePopup(Size size, Long flags, Point ptScreen, const Rect& area) {
    size.height = std::min(size.height, area.Height());
    Long left = ptScreen.x;
    if ((flags & TPM_CENTERALIGN) != 0) {
        left -= size.width / 2;
    } else if ((flags & TPM_RIGHTALIGN) != 0) {
        left -= size.width;
    }
    Long top = ptScreen.y;
    if ((flags & TPM_VCENTERALIGN) != 0) {
        top -= size.height / 2;
    } else {
        const Long above = ptScreen.y - size.height;
        const bool fitsAbove = above >= area.top;
        const bool fitsBelow = ptScreen.y + size.height <= area.bottom;
        const bool wantsAbove = (flags & TPM_BOTTOMALIGN) != 0;
        if (wantsAbove ? fitsAbove || !fitsBelow : !fitsBelow && fitsAbove) {
            top = above;
        }
    }
    return MakeRect(Within(left, size.width, area.left, area.right),
                    Within(top, size.height, area.top, area.bottom), size);
}

Rect PlaceSubmenu(Size size, const Rect& rowOnScreen, const Rect& popup, const Rect& area) {
    size.height = std::min(size.height, area.Height());
    Long left = popup.right - kOverlap;
    const Long onTheLeft = popup.left + kOverlap - size.width;
    if (left + size.width > area.right && onTheLeft >= area.left) {
        left = onTheLeft;
    }
    // Its first row stands beside the row.
    return MakeRect(Within(left, size.width, area.left, area.right),
                    Within(rowOnScreen.top - kFrame, size.height, area.top, area.bottom), size);
}

MenuPopup::MenuPopup(WindowSystem& windows, Menus& menus, Handle menu, Handle owner, Handle opener,
                     const PopupColours& colours)
    : windows_(windows), menus_(menus), menu_(menu), owner_(owner), colours_(colours) {
    Size size;
    if (const auto* items = menus_.Items(menu)) {
        for (const Menus::Item& item : *items) {
            const Size row = item.size.value_or(Size{});
            size.width = std::max(size.width, row.width);
            rows_.push_back({0, size.height, 0, size.height + row.height});
            size.height += row.height;
        }
    }
    // A caption may be of any length, and a picture of it as wide as that would take all memory.
    size.width = std::min(size.width, windows_.GetDriver().WorkArea().Width() - 2 * kFrame);
    for (Rect& row : rows_) {
        row.right = size.width;
    }
    content_ = Surface(size);
    window_ = windows_.CreateWindow(0, {}, [this](const Message& message) {
        if (message.id == WM_DISPLAYCHANGE && !frame_.IsEmpty()) {
            Draw();
        }
        return 0;
    });
    windows_.MakePopup(window_, opener, PopupKind::kMenu);
    view_ = windows_.CreateWindow(window_, {}, {});
    contentWindow_ = windows_.CreateWindow(view_, content_.Bounds(), {});
}

MenuPopup::~MenuPopup() {
    windows_.SetFace(contentWindow_, nullptr);
    windows_.SetFace(window_, nullptr);
    windows_.DestroyWindow(window_);
}

Size MenuPopup::WantedSize() const {
    return {content_.Width() + 2 * kFrame, content_.Height() + 2 * kFrame};
}

Rect MenuPopup::View() const {
    const Long above = kFrame + (Scrolls() ? kArrowRow : 0);
    return {kFrame, above, std::max(Place().Width() - kFrame, kFrame),
            std::max(Place().Height() - above, above)};
}

void MenuPopup::Show(const Rect& place) {
    windows_.SetWindowPos(window_, HWND_TOP, place.left, place.top, place.Width(), place.Height(),
                          SWP_NOZORDER);
    const Rect view = View();
    windows_.SetWindowPos(view_, HWND_TOP, view.left, view.top, view.Width(), view.Height(),
                          SWP_NOZORDER);
    Draw();
    windows_.SetFace(contentWindow_, &content_);
    windows_.SetFace(window_, &frame_);
    windows_.ShowWindow(contentWindow_, SW_SHOW);
    windows_.ShowWindow(view_, SW_SHOW);
    windows_.ShowWindow(window_, SW_SHOW);
}

void MenuPopup::Draw() {
    content_ = Surface(content_.GetSize());
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        Redraw(row, ODA_DRAWENTIRE);
    }
    frame_ = Surface({Place().Width(), Place().Height()});
    DrawFrame();
}

void MenuPopup::DrawFrame() {
    frame_.FillRect(frame_.Bounds(), colours_.frame);
    if (!Scrolls()) {
        return;
    }
    const Rect view = View();
    const Rect above{view.left, kFrame, view.right, view.top};
    const Rect below{view.left, view.bottom, view.right, frame_.Height() - kFrame};
    const Long middle = frame_.Width() / 2;
    constexpr Long kArrowHeight = 4;
    for (const Rect& rect : {above, below}) {
        frame_.FillRect(rect, colours_.back);
        const Long first = rect.top + (kArrowRow - kArrowHeight) / 2;
        if (frame_.Density() > 1) {
            const Rect place{middle - kArrowHeight, first, middle + kArrowHeight + 1,
                             first + kArrowHeight};
            frame_.FillShape(place, colours_.arrow, [&](double x, double y) {
                const double fromTip = rect == above ? y - place.top : place.bottom - y;
                return std::abs(x - middle - kHalf) <= fromTip;
            });
            continue;
        }
        for (Long line = 0; line < kArrowHeight; ++line) {
            const Long y = rect == above ? first + line : first + kArrowHeight - 1 - line;
            frame_.FillRect({middle - line, y, middle + line + 1, y + 1}, colours_.arrow);
        }
    }
}

const Menus::Item* MenuPopup::Item(std::size_t row) const {
    const auto* items = menus_.Items(menu_);
    return items != nullptr && row < items->size() ? &(*items)[row] : nullptr;
}

std::optional<std::size_t> MenuPopup::RowAt(Point ptScreen) const {
    const Rect view = Offset(View(), {Place().left, Place().top});
    const Point inContent{ptScreen.x - view.left, ptScreen.y - view.top + scrolled_};
    for (std::size_t row = 0; view.Contains(ptScreen) && row < rows_.size(); ++row) {
        if (rows_[row].Contains(inContent)) {
            return row;
        }
    }
    return std::nullopt;
}

Rect MenuPopup::RowOnScreen(std::size_t row) const {
    const Rect view = View();
    return Offset(rows_.at(row), {Place().left + view.left, Place().top + view.top - scrolled_});
}

void MenuPopup::Select(std::optional<std::size_t> row, bool bringIntoView) {
    if (row != selected_) {
        const auto former = selected_;
        selected_ = row;
        for (const auto& changed : {former, row}) {
            if (changed) {
                Redraw(*changed, ODA_SELECT);
            }
        }
    }
    if (row && bringIntoView) {
        const Rect view = View();
        const Rect place = rows_[*row];
        ScrollBy(std::max(place.bottom - scrolled_ - view.Height(), 0));
        ScrollBy(std::min(place.top - scrolled_, 0));
    }
}

void MenuPopup::Redraw(std::size_t row, Long action) {
    const Menus::Item* item = Item(row);
    if (item == nullptr) {
        return;
    }
    const auto state = [](bool has, Long bit) { return has ? bit : 0; };
    DrawItemRecord record;
    record.itemId = item->id;
    record.itemAction = action;
    record.itemState =
        state(selected_ == row, ODS_SELECTED) | state((item->state & MF_GRAYED) != 0, ODS_GRAYED) |
        state((item->state & MF_DISABLED) != 0 || !item->CanBeSelected(), ODS_DISABLED) |
        state((item->state & MF_CHECKED) != 0, ODS_CHECKED);
    record.itemWindow = menu_;
    record.deviceContext = &content_;
    record.rect = rows_.at(row);
    const bool opens = item->submenu != 0;
    menus_.Draw(owner_, record);
    if (opens) {
        DrawSubmenuArrow(row);
    }
    windows_.InvalidateRect(contentWindow_, rows_.at(row));
}

// At the right edge, whatever the owner has drawn there.
void MenuPopup::DrawSubmenuArrow(std::size_t row) {
    constexpr Long kWidth = 4;
    constexpr Long kFromEdge = 7;
    const Rect place = rows_.at(row);
    const Long middle = (place.top + place.bottom) / 2;
    const Colour ink = selected_ == row ? colours_.selectedArrow : colours_.arrow;
    if (content_.Density() > 1) {
        const Rect arrow{place.right - kFromEdge, middle - kWidth, place.right - kFromEdge + kWidth,
                         middle + kWidth + 1};
        content_.FillShape(arrow, ink, [&](double x, double y) {
            return std::abs(y - middle - kHalf) <= arrow.right - x;
        });
        return;
    }
    for (Long column = 0; column < kWidth; ++column) {
        const Long x = place.right - kFromEdge + column;
        const Long half = kWidth - 1 - column;
        content_.FillRect({x, middle - half, x + 1, middle + half + 1}, ink);
    }
}

Long MenuPopup::ArrowAt(Point ptScreen) const {
    if (!Scrolls() || !Place().Contains(ptScreen)) {
        return 0;
    }
    const Rect view = Offset(View(), {Place().left, Place().top});
    return ptScreen.y < view.top ? -1 : ptScreen.y >= view.bottom ? 1 : 0;
}

void MenuPopup::ScrollBy(Long distance) {
    const Long most = std::max(content_.Height() - View().Height(), 0);
    const Long wanted = std::clamp(scrolled_ + distance, 0, most);
    if (wanted != scrolled_) {
        scrolled_ = wanted;
        windows_.SetWindowPos(contentWindow_, HWND_TOP, 0, -scrolled_, 0, 0,
                              SWP_NOSIZE | SWP_NOZORDER);
    }
}

}  // namespace platform

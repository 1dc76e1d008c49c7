// Which rows are on show: metrics, the displayed range and what moves it.
#include <algorithm>

#include "controls/list/jlist.h"
#include "controls/list/moved.h"
#include "platform/base/rounding.h"

namespace sarnel {

Long JList::ImageSide() const {
    // The property takes any number; no surface is larger.
    constexpr Long kMost = 32767;
    return std::clamp(itemImageSize_, -kMost, kMost);
}

Long JList::RowPitch() const {
    return IsImageTaller() ? ImageSide() : rowHeight_;
}

void JList::ComputeRows() {
    const Long pitch = RowPitch();
    visibleRows_ = pitch > 0 ? ScaleHeight() / pitch : 0;
    textLeft_ = 3 + (showItemImages_ ? ImageWidth() + 2 : 0);
    rowTop_[0] = 0;
    for (Long row = 1; row < std::min(visibleRows_, kMostRows); ++row) {
        const auto at = static_cast<std::size_t>(row);
        rowTop_[at] = rowTop_[at - 1] + pitch;
    }
    ++looks_;
}

Long JList::RowTop(Long row) const {
    return row >= 0 && row < kMostRows ? rowTop_[static_cast<std::size_t>(row)] : 0;
}

void JList::RedrawFlag(bool value) {
    redrawFlag_ = value;
    if (value) {
        RepaintIfAllowed();
    }
}

// Which rows a repaint has to show.
void JList::SettleRange() {
    if (!scrollBarShown_) {
        displayFirst_ = 0;
        displayLast_ = listCount_ - 1;
    } else if (IsRowVisible(listCount_ - 1)) {
        displayLast_ = listCount_ - 1;
        displayFirst_ = listCount_ - visibleRows_;
    } else {
        displayLast_ = Moved(displayFirst_, visibleRows_ - 1);
    }
    topIndex_ = displayFirst_;
}

void JList::DisplayFrom(Long ItemIndex) {
    if (listCount_ <= visibleRows_) {
        return;
    }
    const Long index = std::clamp(ItemIndex, 0, listCount_ - 1);
    displayLast_ = index + visibleRows_ - 1;
    if (displayLast_ <= listCount_ - 1) {
        displayFirst_ = index;
    } else {
        displayLast_ = listCount_ - 1;
        displayFirst_ = displayLast_ - visibleRows_ + 1;
    }
    DisplayList();
}

void JList::HighlightCurrent() {
    if (listCurrent_ != -1) {
        DisplayFrom(platform::RoundHalfEven(listCurrent_ - visibleRows_ / 2.0));
    }
}

void JList::AdjustDisplayRange() {
    if (focusIndex_ < displayFirst_) {
        displayFirst_ = focusIndex_;
        const Long last = Moved(displayFirst_, visibleRows_ - 1);
        displayLast_ = last > listCount_ ? listCount_ - 1 : last;
    } else if (focusIndex_ > displayLast_) {
        displayLast_ = focusIndex_;
        displayFirst_ = std::max(Moved(displayLast_, 1 - visibleRows_), 0);
    } else {
        return;
    }
    DisplayList();
}

void JList::Refresh() {
    if (displayLast_ > listCount_ - 1) {
        displayLast_ = listCount_ - 1;
        displayFirst_ = std::max(displayLast_ - visibleRows_ + 1, 0);
    }
    RebuildGradients();
    RepaintIfAllowed();
    Raised("Resize");
}

}  // namespace sarnel

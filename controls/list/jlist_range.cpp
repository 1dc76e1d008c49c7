// Which rows are on show: metrics, the displayed range and what moves it.
#include <algorithm>
#include <limits>

#include "controls/list/jlist.h"
#include "core/seams.h"
#include "platform/rounding.h"

namespace sarnel {

namespace {

// `row` moved by so many rows. FocusIndex is not range checked, so a view may be asked for that
// lies at the end of all numbers: it stops there.
Long Moved(Long row, Long by) {
    return static_cast<Long>(std::clamp<std::int64_t>(std::int64_t{row} + by,
                                                      std::numeric_limits<Long>::min(),
                                                      std::numeric_limits<Long>::max()));
}

}  // namespace

void JList::SetupMetrics() {
    constexpr Long kRowMargin = 2;
    rowHeight_ = windows_.MeasureText(GetFont(), u"^j").height + kRowMargin;
    ComputeRows();
}

void JList::ComputeRows() {
    visibleRows_ = rowHeight_ > 0 ? Height() / rowHeight_ : 0;
    rowTop_[0] = 0;
    for (Long row = 1; row < std::min(visibleRows_, kMostRows); ++row) {
        const auto at = static_cast<std::size_t>(row);
        rowTop_[at] = rowTop_[at - 1] + rowHeight_;
    }
}

Long JList::RowTop(Long row) const {
    return row >= 0 && row < kMostRows ? rowTop_[static_cast<std::size_t>(row)] : 0;
}

void JList::ListFont(const platform::Font& font) {
    SetFont(font);
    // Without the two pixels of SetupMetrics: they come back with its next run.
    rowHeight_ = windows_.MeasureText(font, u"^j").height;
    ComputeRows();
}

void JList::Enabled(bool value) {
    Widget::Enabled(value);
    SetupMetrics();
}

void JList::ShowItemImages(bool value) {
    showItemImages_ = value;
    SetupMetrics();
    RepaintIfAllowed();
}

void JList::RedrawFlag(bool value) {
    redrawFlag_ = value;
    if (value) {
        RepaintIfAllowed();
    }
}

void JList::RepaintIfAllowed() {
    if (redrawFlag_) {
        DisplayList();
    }
}

void JList::DisplayList(float /*vThumbYPos*/) {
    scrollBarShown_ = listCount_ > visibleRows_;
    if (displayFirst_ == -1) {
        return;
    }
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
    seams::DrawRows();
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
    RepaintIfAllowed();
    Raised("Resize");
}

}  // namespace sarnel

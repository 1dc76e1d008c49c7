// Painting: the full repaint. It is asked for 33 times a second, so it first finds out what the
// face shows already: nothing, single rows or the whole is drawn, always with the pixels that a
// repaint from a blank face gives.
#include <algorithm>

#include "controls/list/jlist.h"

namespace sarnel {

using platform::Rect;
using platform::Surface;

// The face, for whoever draws on it: what the last repaint left is no longer what it shows.
Surface& JList::Paint() {
    painted_.valid = false;
    return Canvas();
}

void JList::ClearFace() {
    Surface& face = Paint();
    face.FillRect(face.Bounds(), backBrush_);
}

void JList::RepaintIfAllowed() {
    if (redrawFlag_) {
        DisplayList();
    }
}

void JList::DisplayList(float vThumbYPos) {
    scrollBarShown_ = listCount_ > visibleRows_;
    rightReserve_ = scrollBarShown_ ? ListThumb::kWidth : 0;
    if (displayFirst_ != -1) {
        SettleRange();
        if (scrollBarShown_) {
            PlaceThumb(vThumbYPos);
        }
    }
    Repaint();
}

void JList::Repaint() {
    const bool any = displayFirst_ != -1;
    const PaintedFrame frame{looks_,
                             {ScaleWidth(), ScaleHeight()},
                             displayFirst_,
                             displayLast_,
                             any && scrollBarShown_ ? thumb_.rect : Rect{}};
    const bool known = painted_.valid && painted_.frame == frame;
    const Long rows = any ? std::max(displayLast_ - displayFirst_ + 1, 0) : 0;
    painted_.rows.resize(static_cast<std::size_t>(rows));
    painted_.changed.clear();
    for (Long row = 0; row < rows; ++row) {
        PaintedRow& former = painted_.rows[static_cast<std::size_t>(row)];
        Describe(displayFirst_ + row, painted_.described);
        if (!(painted_.described == former)) {
            std::swap(painted_.described, former);
            painted_.changed.push_back(row);
        }
    }
    if (known && painted_.changed.empty()) {
        return;
    }
    // Rows without images do not overlap, as far as they have a place of their own.
    if (known && !showItemImages_ && rows <= kMostRows) {
        RepaintRows();
        painted_.valid = true;
    } else {
        // A strip that was elsewhere is cleared with all that lies right of it, rows included: they
        // are back with the next repaint.
        const bool stays = !scrollBarShown_ || thumb_.stripRect.left == ScaleWidth() - 13;
        RepaintAll();
        painted_.valid = stays;
    }
    painted_.frame = frame;
}

void JList::Describe(Long index, PaintedRow& row) const {
    row.text.clear();
    AppendRowString(index, row.text);
    row.selected = Selected(index);
    row.current = index == listCurrent_;
    row.twice = index == focusIndex_;
    row.ink = InkOf(index, row.selected);
    row.rectColour = row.current && showSelectRect_ ? colours_.focusRect : 0;
    row.image = showItemImages_ && itemImage_.Has(index) ? itemImage_[index] : -1;
}

void JList::RepaintAll() {
    ClearFace();
    if (displayFirst_ != -1) {
        for (Long row = 0; row < static_cast<Long>(painted_.rows.size()); ++row) {
            DrawRow(displayFirst_ + row);
        }
        DrawRow(focusIndex_);
        if (scrollBarShown_) {
            PaintScrollBar();
        }
    }
    ShowFace();
}

void JList::RepaintRows() {
    for (const Long row : painted_.changed) {
        const Long index = displayFirst_ + row;
        const Rect place{0, RowTop(row), ScaleWidth() - rightReserve_, RowTop(row) + rowHeight_};
        Paint().FillRect(place, backBrush_);
        DrawRow(index);
        if (index == focusIndex_) {
            DrawRow(index);
        }
        ShowFace(place);
    }
}

}  // namespace sarnel

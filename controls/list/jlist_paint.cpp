// Painting: the full repaint. It is asked for 33 times a second, so it first finds out what the
// face shows already: nothing, single rows or the whole is drawn, always with the pixels that a
// repaint from a blank face gives.
#include <algorithm>

#include "controls/list/jlist.h"

namespace sarnel {

using platform::Rect;
using platform::Surface;

// The face, to be drawn on. Whoever does so makes the record of the last repaint wrong: it is
// dropped.
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
    thumb_.shown = ListCount() > VisibleRows();
    layout_.rightReserve = thumb_.shown ? ListThumb::kWidth : 0;
    if (range_.first != -1) {
        range_.Settle(ListCount(), VisibleRows(), !thumb_.shown);
        if (thumb_.shown) {
            PlaceThumb(vThumbYPos);
        }
    }
    Repaint();
}

void JList::Repaint() {
    const bool any = range_.first != -1;
    const PaintedFrame frame{painted_.looks,
                             {ScaleWidth(), ScaleHeight()},
                             range_.first,
                             range_.last,
                             any && thumb_.shown ? thumb_.rect : Rect{}};
    const bool known = painted_.valid && painted_.frame == frame;
    const Long rows = any ? std::max(range_.last - range_.first + 1, 0) : 0;
    painted_.rows.resize(static_cast<std::size_t>(rows));
    painted_.changed.clear();
    for (Long row = 0; row < rows; ++row) {
        PaintedRow& former = painted_.rows[static_cast<std::size_t>(row)];
        Describe(range_.first + row, painted_.described);
        if (!(painted_.described == former)) {
            std::swap(painted_.described, former);
            painted_.changed.push_back(row);
        }
    }
    if (known && painted_.changed.empty()) {
        return;
    }
    // Rows without images do not overlap, except those that share the last place of the table.
    if (known && !ShowItemImages() && rows <= ListLayout::kMostRows) {
        RepaintRows();
        painted_.valid = true;
    } else {
        // A strip that was elsewhere is cleared with all that lies right of it, rows included: they
        // are back with the next repaint.
        const bool stays = !thumb_.shown || thumb_.stripRect.left == ScaleWidth() - 13;
        RepaintAll();
        painted_.valid = stays;
    }
    painted_.frame = frame;
}

void JList::RepaintAll() {
    ClearFace();
    if (range_.first != -1) {
        for (Long row = 0; row < static_cast<Long>(painted_.rows.size()); ++row) {
            DrawRow(range_.first + row);
        }
        DrawRow(index_.focus);
        if (thumb_.shown) {
            PaintScrollBar();
        }
    }
    ShowFace();
}

// Repaints even while RedrawFlag is False: the picture was only converted, and must look as before.
void JList::Redraw() {
    backDC_ = backDC_.AtDensity(Surface::DensityInForce());
    BuildSelectionBar();
    BuildThumbBar();
    RepaintAll();
}

void JList::RepaintRows() {
    for (const Long row : painted_.changed) {
        const Long index = range_.first + row;
        const Rect place{0, RowTop(row), ScaleWidth() - RightReserve(), RowTop(row) + RowHeight()};
        Paint().FillRect(place, backBrush_);
        DrawRow(index);
        if (index == index_.focus) {
            DrawRow(index);
        }
        ShowFace(place);
    }
}

}  // namespace sarnel

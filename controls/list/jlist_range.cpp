// Which rows are on show: the displayed range and what moves it.
#include "controls/list/jlist.h"
#include "platform/base/rounding.h"

namespace sarnel {

void JList::RedrawFlag(bool value) {
    redrawFlag_ = value;
    if (value) {
        RepaintIfAllowed();
    }
}

void JList::DisplayFrom(Long ItemIndex) {
    if (ListCount() > VisibleRows()) {
        range_.StartAt(ItemIndex, ListCount(), VisibleRows());
        DisplayList();
    }
}

void JList::HighlightCurrent() {
    if (index_.current != -1) {
        DisplayFrom(platform::RoundHalfEven(index_.current - VisibleRows() / 2.0));
    }
}

void JList::AdjustDisplayRange() {
    if (range_.Reach(index_.focus, ListCount(), VisibleRows())) {
        DisplayList();
    }
}

void JList::Refresh() {
    range_.Limit(ListCount(), VisibleRows());
    RebuildGradients();
    RepaintIfAllowed();
    Raised("Resize");
}

}  // namespace sarnel

// The mouse on the rows: presses, the selection they make, the rubber band, and the events.
//
// A press on the scroll strip returns only when the button is up (jlist_scroll.cpp): moves and the
// release are handled inside of it. One of them may destroy the list, so whatever follows such a
// press asks IsAlive first.
#include <algorithm>
#include <cstdlib>

#include "controls/list/jlist.h"
#include "controls/list/moved.h"

namespace sarnel {

using platform::kLeftButton;
using platform::kRightButton;
using platform::MouseEvent;

void JList::MouseDown(const MouseEvent& event) {
    windows_.SetFocus(HWnd());
    mouse_.clickButtons |= event.Button;
    mouse_.dragArmed = false;
    mouse_.rightDown = event.Button == kRightButton;
    if (!mouse_.rightDown) {
        mouse_.y = event.Y;
        PressByZone(event.Y);
    }
    if (IsAlive()) {
        RaiseMouseDown(event);
    }
}

void JList::PressByZone(float y) {
    if (mouse_.zone == ListMouse::kRows) {
        if (MouseOverIndex(y) != -1) {
            mouse_.dragArmed = mouse_.dragStored;
            mouse_.mode = ListMouse::kOnRow;
            ClickSelect();
        }
    } else if (mouse_.zone == ListMouse::kTrack) {
        if (thumb_.IsAbove(y)) {
            mouse_.mode = ListMouse::kAboveThumb;
            ScrollUpThree();
        } else {
            mouse_.mode = ListMouse::kBelowThumb;
            ScrollDownThree();
        }
    } else if (mouse_.zone == ListMouse::kThumb) {
        mouse_.mode = ListMouse::kHoldsThumb;
        mouse_.thumbDragging = true;
        mouse_.thumbLastY = y;
        ThumbDragLoop();
    }
}

void JList::ClickSelect() {
    index_.caret = index_.focus = index_.list = MouseOverIndex(mouse_.y);
    if (!mouse_.shiftDown && !mouse_.ctrlDown) {
        rows_.DeselectAll();
    }
    mouse_.bandStart = mouse_.bandEnd = index_.caret;
    const bool selects = !mouse_.ctrlDown || !Selected(index_.caret);
    rows_.FillSelected(index_.caret, index_.caret, selects);
    // With Shift, rows that are selected already stay so.
    if (mouse_.shiftDown) {
        rows_.FillSelected(mouse_.shiftAnchor, index_.focus, true);
        rows_.RecountSelected();
    }
    DisplayList();
    mouse_.lastHover = index_.caret;
    if (!mouse_.shiftDown) {
        rows_.SelCount(!mouse_.ctrlDown ? 1 : Moved(SelCount(), selects ? 1 : -1));
    }
}

void JList::MouseMove(const MouseEvent& event) {
    mouse_.x = event.X;
    mouse_.y = event.Y;
    UpdateZone(event.X, event.Y);
    if (!EdgeScrollCheck() && !ThumbEdgeCheck()) {
        if (mouse_.mode != ListMouse::kNoPress && mouse_.thumbDragging && !mouse_.thumbLoopActive) {
            ThumbDragLoop();
        } else if (mouse_.mode == ListMouse::kOnRow && mouse_.zone == ListMouse::kRows &&
                   !mouse_.dragArmed) {
            BandStep();
        }
    }
    if (IsAlive()) {
        RaiseMouseMove(event);
    }
}

void JList::BandStep() {
    const Long index = MouseOverIndex(mouse_.y);
    if (index != mouse_.lastHover) {
        mouse_.lastHover = index;
        ExtendBand();
    }
}

void JList::ExtendBand() {
    const bool alone = !mouse_.shiftDown && !mouse_.ctrlDown;
    DrawRow(index_.focus);
    ShowFace();
    if (alone) {
        rows_.DeselectAll();
    }
    index_.caret = MouseOverIndex(mouse_.y);
    if (index_.caret == -1 || (ListCount() < VisibleRows() && double{mouse_.y} > ScaleHeight())) {
        index_.caret = ListCount() - 1;
    }
    index_.focus = index_.list = mouse_.bandEnd = index_.caret;
    rows_.FillSelected(mouse_.bandStart, mouse_.bandEnd, true);
    if (alone) {
        rows_.SelCount(
            Moved(1, std::abs(std::int64_t{mouse_.bandEnd} - std::int64_t{mouse_.bandStart})));
    } else {
        rows_.RecountSelected();
    }
    DisplayList();
}

void JList::MouseUp(const MouseEvent& event) {
    if (event.Button == kLeftButton) {
        const Long mode = std::exchange(mouse_.mode, ListMouse::kNoPress);
        if (mode == ListMouse::kAboveThumb || mode == ListMouse::kBelowThumb) {
            DrawScrollBar(-1);
        } else {
            mouse_.dragArmed = false;
        }
        ShowFace();
        mouse_.thumbDragging = false;
    }
    const bool wasPress = (mouse_.clickButtons & event.Button) != 0;
    mouse_.clickButtons &= ~event.Button;
    RaiseMouseUp(event);
    if (wasPress && IsAlive() && MouseOverIndex(mouse_.y) != -1 && !mouse_.rightDown) {
        RaiseClick();
    }
}

// The second press is no press: it selects nothing.
void JList::DoubleClick(const MouseEvent& /*event*/) {
    windows_.SetFocus(HWnd());
    if (MouseOverIndex(mouse_.y) != -1) {
        RaiseDblClick();
    }
}

void JList::WM_MOUSEMOVE_Process(Handle window) {
    if (!mouse_.inside) {
        mouse_.inside = true;
        windows_.TrackMouseLeave(window);
        Raised("MouseEnter");
    }
}

void JList::WM_MOUSELEAVE_Process() {
    mouse_.inside = false;
    Raised("MouseLeave");
}

}  // namespace sarnel

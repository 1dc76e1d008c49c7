// Moving through the list by keys. A step starts at the caret, and the focus ends where the caret
// has come to. Without Shift that row alone is selected afterwards, with Shift it is added. As long
// as at most one row is selected, a step draws only the rows that it changes.
#include <algorithm>

#include "controls/list/jlist.h"
#include "platform/base/keys.h"

namespace sarnel {

using namespace platform;

void JList::KeyDown(Long keyCode, Long shift) {
    mouse_.KeyModifiers(shift);
    if (mouse_.shiftDown) {
        mouse_.shiftAnchor = index_.focus;
    }
    if (mouse_.mode != ListMouse::kNoPress) {
        return;
    }
    switch (keyCode) {
        case VK_NEXT:
            PageDownKey();
            break;
        case VK_PRIOR:
            PageUpKey();
            break;
        case VK_END:
            EndKey();
            break;
        case VK_HOME:
            HomeKey();
            break;
        case VK_UP:
            LineUp();
            break;
        case VK_DOWN:
            LineDown();
            break;
        case VK_SPACE:
            HighlightCurrent();
            break;
        default:
            break;
    }
}

void JList::CommitCaret() {
    index_.focus = index_.caret;
    index_.list = index_.focus;
    rows_.FillSelected(index_.caret, index_.caret, true);
    DrawRow(index_.caret, true);
    ShowFace();
}

void JList::EraseCaret() {
    if (index_.caret != -1) {
        DrawRow(index_.caret, false);
    }
    if (index_.focus != index_.caret) {
        DrawRow(index_.focus);
    }
}

// The number of selected rows after a step. Without Shift it is set to 1, not counted: so it is 1
// even in an empty list.
void JList::CountAfterStep() {
    if (mouse_.shiftDown) {
        rows_.RecountSelected();
    } else {
        rows_.SelCount(1);
    }
}

void JList::LineDown() {
    const Long before = SelCount();
    if (index_.caret >= ListCount() - 1) {
        if (mouse_.shiftDown) {
            return;
        }
        rows_.DeselectAll();
        rows_.SelCount(1);
        CommitCaret();
        AdjustDisplayRange();
        DisplayList();
        return;
    }
    if (!mouse_.shiftDown) {
        rows_.DeselectAll();
    }
    if (index_.focus != range_.last) {
        DrawRow(index_.focus);
    }
    ++index_.caret;
    CommitCaret();
    CountAfterStep();
    AdjustDisplayRange();
    ShowStep(before);
}

void JList::LineUp() {
    const Long before = SelCount();
    if (!mouse_.shiftDown) {
        rows_.DeselectAll();
    }
    if (index_.focus != range_.first) {
        DrawRow(index_.focus);
    }
    if (index_.caret > 0) {
        --index_.caret;
    }
    CommitCaret();
    CountAfterStep();
    AdjustDisplayRange();
    ShowStep(before);
}

void JList::ShowStep(Long selectedBefore) {
    if (selectedBefore < 2) {
        DrawRow(index_.focus);
        ShowFace();
    } else {
        DisplayList();
    }
}

void JList::HomeKey() {
    if (mouse_.shiftDown) {
        rows_.FillSelected(0, index_.focus, true);
        rows_.RecountSelected();
    } else {
        rows_.DeselectAll();
        rows_.SelCount(1);
    }
    if (index_.caret != 0) {
        EraseCaret();
    }
    index_.caret = 0;
    CommitCaret();
    range_.first = 0;
    range_.last = std::min(ListCount(), VisibleRows()) - 1;
    DisplayList();
}

void JList::EndKey() {
    if (mouse_.shiftDown) {
        rows_.FillSelected(index_.focus, ListCount() - 1, true);
        rows_.RecountSelected();
    } else {
        rows_.DeselectAll();
        rows_.SelCount(1);
    }
    if (index_.caret != ListCount() - 1) {
        EraseCaret();
    }
    range_.last = ListCount() - 1;
    range_.first = ListCount() >= VisibleRows() ? range_.last - VisibleRows() + 1 : 0;
    index_.caret = ListCount() - 1;
    CommitCaret();
    DisplayList();
}

// The row that had the focus becomes the top row, and the focus goes to the bottom row.
void JList::PageDownKey() {
    if (ListCount() < 1) {
        return;
    }
    if (!mouse_.shiftDown) {
        rows_.DeselectAll();
    }
    if (std::int64_t{index_.focus} + VisibleRows() - 1 >= ListCount()) {
        range_.last = ListCount() - 1;
        range_.first = ListCount() < VisibleRows() ? 0 : range_.last - VisibleRows() + 1;
    } else {
        range_.first = index_.focus;
        range_.last = range_.first + VisibleRows() - 1;
    }
    index_.caret = range_.last;
    CommitPage();
}

void JList::PageUpKey() {
    if (!mouse_.shiftDown) {
        rows_.DeselectAll();
    }
    if (std::int64_t{index_.focus} - VisibleRows() + 1 < 0) {
        range_.first = 0;
        range_.last = ListCount() < VisibleRows() ? ListCount() - 1 : VisibleRows() - 1;
    } else {
        range_.last = index_.focus;
        range_.first = range_.last - VisibleRows() + 1;
    }
    index_.caret = range_.first;
    CommitPage();
}

void JList::CommitPage() {
    CommitCaret();
    if (mouse_.shiftDown) {
        rows_.FillSelected(mouse_.shiftAnchor, index_.focus, true);
    }
    CountAfterStep();
    DisplayList();
}

}  // namespace sarnel

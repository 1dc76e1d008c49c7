// Moving through the list by keys. The caret is where a step starts from, the focus where the
// keyboard has come to; a step without Shift leaves one row selected. Rows are not painted yet, so
// what only paints has no trace here.
#include <algorithm>

#include "controls/list/jlist.h"
#include "platform/keys.h"

namespace sarnel {

using namespace platform;

void JList::KeyDown(Long keyCode, Long shift) {
    UpdateModifiers(shift);
    if (shiftDown_) {
        shiftAnchor_ = focusIndex_;
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

void JList::UpdateModifiers(Long shift) {
    shiftDown_ = (shift & kShiftBit) != 0;
}

void JList::ClearSelection() {
    FillSelected(0, listCount_ - 1, false);
}

void JList::RecountSelected() {
    selCount_ = 0;
    for (Long i = 0; i < listCount_; ++i) {
        selCount_ += Selected(i) ? 1 : 0;
    }
}

void JList::CommitCaret() {
    focusIndex_ = caretIndex_;
    listIndex_ = focusIndex_;
    FillSelected(caretIndex_, caretIndex_, true);
}

// After a step: with Shift the selection has grown, without it there is this one row. An empty list
// ends with a count of 1 all the same.
void JList::CountAfterStep() {
    if (shiftDown_) {
        RecountSelected();
    } else {
        selCount_ = 1;
    }
}

void JList::LineDown() {
    const Long before = selCount_;
    if (caretIndex_ >= listCount_ - 1) {
        if (shiftDown_) {
            return;
        }
        ClearSelection();
        selCount_ = 1;
        CommitCaret();
        AdjustDisplayRange();
        DisplayList();
        return;
    }
    if (!shiftDown_) {
        ClearSelection();
    }
    ++caretIndex_;
    CommitCaret();
    CountAfterStep();
    AdjustDisplayRange();
    if (before >= 2) {
        DisplayList();
    }
}

void JList::LineUp() {
    const Long before = selCount_;
    if (!shiftDown_) {
        ClearSelection();
    }
    if (caretIndex_ > 0) {
        --caretIndex_;
    }
    CommitCaret();
    CountAfterStep();
    AdjustDisplayRange();
    if (before >= 2) {
        DisplayList();
    }
}

void JList::HomeKey() {
    if (shiftDown_) {
        FillSelected(0, focusIndex_, true);
        RecountSelected();
    } else {
        ClearSelection();
        selCount_ = 1;
    }
    caretIndex_ = 0;
    CommitCaret();
    displayFirst_ = 0;
    displayLast_ = std::min(listCount_, visibleRows_) - 1;
    DisplayList();
}

void JList::EndKey() {
    if (shiftDown_) {
        FillSelected(focusIndex_, listCount_ - 1, true);
        RecountSelected();
    } else {
        ClearSelection();
        selCount_ = 1;
    }
    displayLast_ = listCount_ - 1;
    displayFirst_ = listCount_ >= visibleRows_ ? displayLast_ - visibleRows_ + 1 : 0;
    caretIndex_ = listCount_ - 1;
    CommitCaret();
    DisplayList();
}

// The row that had the focus becomes the top row, and the focus goes to the bottom row.
void JList::PageDownKey() {
    if (listCount_ < 1) {
        return;
    }
    if (!shiftDown_) {
        ClearSelection();
    }
    if (std::int64_t{focusIndex_} + visibleRows_ - 1 >= listCount_) {
        displayLast_ = listCount_ - 1;
        displayFirst_ = listCount_ < visibleRows_ ? 0 : displayLast_ - visibleRows_ + 1;
    } else {
        displayFirst_ = focusIndex_;
        displayLast_ = displayFirst_ + visibleRows_ - 1;
    }
    caretIndex_ = displayLast_;
    CommitPage();
}

void JList::PageUpKey() {
    if (!shiftDown_) {
        ClearSelection();
    }
    if (std::int64_t{focusIndex_} - visibleRows_ + 1 < 0) {
        displayFirst_ = 0;
        displayLast_ = listCount_ < visibleRows_ ? listCount_ - 1 : visibleRows_ - 1;
    } else {
        displayLast_ = focusIndex_;
        displayFirst_ = displayLast_ - visibleRows_ + 1;
    }
    caretIndex_ = displayFirst_;
    CommitPage();
}

void JList::CommitPage() {
    CommitCaret();
    if (shiftDown_) {
        FillSelected(shiftAnchor_, focusIndex_, true);
    }
    CountAfterStep();
    DisplayList();
}

}  // namespace sarnel

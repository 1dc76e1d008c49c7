// Moving through the list by keys. The caret is where a step starts from, the focus where the
// keyboard has come to; a step without Shift leaves one row selected. While at most one row is
// selected a step draws just the rows that it touches.
#include <algorithm>

#include "controls/list/jlist.h"
#include "platform/base/keys.h"

namespace sarnel {

using namespace platform;

void JList::KeyDown(Long keyCode, Long shift) {
    UpdateModifiers(shift);
    if (mouse_.shiftDown) {
        mouse_.shiftAnchor = focusIndex_;
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

void JList::UpdateModifiers(Long shift) {
    mouse_.shiftDown = (shift & kShiftBit) != 0;
    mouse_.ctrlDown = (shift & kCtrlBit) != 0;
}

void JList::ClearSelection() {
    FillSelected(0, listCount_ - 1, false);
}

void JList::RecountSelected() {
    selCount_ = itemSelected_.Count(0, listCount_ - 1, 1);
}

void JList::CommitCaret() {
    focusIndex_ = caretIndex_;
    listIndex_ = focusIndex_;
    FillSelected(caretIndex_, caretIndex_, true);
    DrawRow(caretIndex_, true);
    ShowFace();
}

void JList::EraseCaret() {
    if (caretIndex_ != -1) {
        DrawRow(caretIndex_, false);
    }
    if (focusIndex_ != caretIndex_) {
        DrawRow(focusIndex_);
    }
}

// After a step: with Shift the selection has grown, without it there is this one row. An empty list
// ends with a count of 1 all the same.
void JList::CountAfterStep() {
    if (mouse_.shiftDown) {
        RecountSelected();
    } else {
        selCount_ = 1;
    }
}

void JList::LineDown() {
    const Long before = selCount_;
    if (caretIndex_ >= listCount_ - 1) {
        if (mouse_.shiftDown) {
            return;
        }
        ClearSelection();
        selCount_ = 1;
        CommitCaret();
        AdjustDisplayRange();
        DisplayList();
        return;
    }
    if (!mouse_.shiftDown) {
        ClearSelection();
    }
    if (focusIndex_ != displayLast_) {
        DrawRow(focusIndex_);
    }
    ++caretIndex_;
    CommitCaret();
    CountAfterStep();
    AdjustDisplayRange();
    ShowStep(before);
}

void JList::LineUp() {
    const Long before = selCount_;
    if (!mouse_.shiftDown) {
        ClearSelection();
    }
    if (focusIndex_ != displayFirst_) {
        DrawRow(focusIndex_);
    }
    if (caretIndex_ > 0) {
        --caretIndex_;
    }
    CommitCaret();
    CountAfterStep();
    AdjustDisplayRange();
    ShowStep(before);
}

void JList::ShowStep(Long selectedBefore) {
    if (selectedBefore < 2) {
        DrawRow(focusIndex_);
        ShowFace();
    } else {
        DisplayList();
    }
}

void JList::HomeKey() {
    if (mouse_.shiftDown) {
        FillSelected(0, focusIndex_, true);
        RecountSelected();
    } else {
        ClearSelection();
        selCount_ = 1;
    }
    if (caretIndex_ != 0) {
        EraseCaret();
    }
    caretIndex_ = 0;
    CommitCaret();
    displayFirst_ = 0;
    displayLast_ = std::min(listCount_, visibleRows_) - 1;
    DisplayList();
}

void JList::EndKey() {
    if (mouse_.shiftDown) {
        FillSelected(focusIndex_, listCount_ - 1, true);
        RecountSelected();
    } else {
        ClearSelection();
        selCount_ = 1;
    }
    if (caretIndex_ != listCount_ - 1) {
        EraseCaret();
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
    if (!mouse_.shiftDown) {
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
    if (!mouse_.shiftDown) {
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
    if (mouse_.shiftDown) {
        FillSelected(mouse_.shiftAnchor, focusIndex_, true);
    }
    CountAfterStep();
    DisplayList();
}

}  // namespace sarnel

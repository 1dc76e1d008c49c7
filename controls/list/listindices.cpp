#include "controls/list/listindices.h"

#include "controls/list/moved.h"

namespace sarnel {

using platform::Long;

void ListIndices::RowAdded(Long row, bool anySelected) {
    const auto raise = [row](Long& index) { index = index >= row ? Moved(index, 1) : index; };
    added = row;
    // One condition for all three, so with nothing selected and ListIndex 0 none of them moves.
    if (list > 0 || anySelected) {
        raise(list);
        raise(focus);
        raise(caret);
    }
    // A current row 0 stays 0 even when a row comes in front of it, which is meant.
    if (current > 0) {
        raise(current);
    }
}

void ListIndices::RowRemoved(Long row) {
    const auto lower = [row](Long& index) { index -= index > 0 && index >= row ? 1 : 0; };
    added = -1;
    lower(list);
    lower(focus);
    lower(caret);
    if (current == row) {
        current = -1;
    } else if (current >= 0 && current > row) {
        --current;
    }
}

void ListIndices::RowsCleared() {
    added = -1;
    list = 0;
    focus = 0;
    caret = -1;
}

}  // namespace sarnel

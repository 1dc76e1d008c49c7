// The indices that a list keeps into its rows, and how they follow rows that come and go. Each is
// 0-based, -1 is no row, and none is checked. They follow by rules that differ, which is meant.
#pragma once

#include "platform/base/types.h"

namespace sarnel {

struct ListIndices {
    using Long = platform::Long;

    Long list = -1;     ///< ListIndex
    Long current = -1;  ///< ListCurrent
    Long added = -1;    ///< newIndex
    Long focus = 0;
    Long caret = -1;

    /// A row was added; `row` is the place that AddItem was asked for. Indices from there on grow.
    void RowAdded(Long row, bool anySelected);
    /// A row was removed. If `current` named it, it names none now; the others name the row above.
    void RowRemoved(Long row);
    /// No row is left; `current` may outlive the rows.
    void RowsCleared();
};

}  // namespace sarnel

// Which rows of a list are on show: the first and the last of them, by the number of rows and of
// those that fit. What asks for it decides what repaints.
#pragma once

#include "platform/base/types.h"

namespace sarnel {

struct ListRange {
    using Long = platform::Long;

    Long first = -1;  ///< -1 as long as nothing has been shown
    Long last = -1;
    Long top = 0;  ///< `first` as it was at the last repaint

    bool Has(Long row) const { return row >= first && row <= last; }

    /// What a repaint shows: all rows if they fit, the last ones if the very last is on show, else
    /// as many as fit from `first` on.
    void Settle(Long listCount, Long visibleRows, bool fits);
    /// A row at the top, or the last rows if that leaves room below. Rows must not fit.
    void StartAt(Long row, Long listCount, Long visibleRows);
    /// Moves just so far that a row is on show; False if it was.
    bool Reach(Long row, Long listCount, Long visibleRows);
    /// Takes a range that ends behind the rows back to the last ones.
    void Limit(Long listCount, Long visibleRows);
};

}  // namespace sarnel

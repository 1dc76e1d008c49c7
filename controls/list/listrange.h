// Which rows of a list are on show: the first and the last of them. They follow from how many rows
// there are and how many fit. Nothing here repaints; who asks for a change does that.
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
    /// Brings a row to the top; the last rows instead, if fewer follow than fit. Only for a list of
    /// which not all rows fit.
    void StartAt(Long row, Long listCount, Long visibleRows);
    /// Moves just so far that a row is on show; False if it was.
    bool Reach(Long row, Long listCount, Long visibleRows);
    /// Takes a range that ends behind the rows back to the last ones.
    void Limit(Long listCount, Long visibleRows);
};

}  // namespace sarnel

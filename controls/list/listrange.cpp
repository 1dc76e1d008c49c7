#include "controls/list/listrange.h"

#include <algorithm>

#include "controls/list/moved.h"

namespace sarnel {

using platform::Long;

void ListRange::Settle(Long listCount, Long visibleRows, bool fits) {
    if (fits) {
        first = 0;
        last = listCount - 1;
    } else if (Has(listCount - 1)) {
        last = listCount - 1;
        first = listCount - visibleRows;
    } else {
        last = Moved(first, visibleRows - 1);
    }
    top = first;
}

void ListRange::StartAt(Long row, Long listCount, Long visibleRows) {
    const Long index = std::clamp(row, 0, listCount - 1);
    last = index + visibleRows - 1;
    if (last <= listCount - 1) {
        first = index;
    } else {
        last = listCount - 1;
        first = last - visibleRows + 1;
    }
}

bool ListRange::Reach(Long row, Long listCount, Long visibleRows) {
    if (row < first) {
        first = row;
        const Long end = Moved(first, visibleRows - 1);
        last = end > listCount ? listCount - 1 : end;
        return true;
    }
    if (row > last) {
        last = row;
        first = std::max(Moved(last, 1 - visibleRows), 0);
        return true;
    }
    return false;
}

void ListRange::Limit(Long listCount, Long visibleRows) {
    if (last > listCount - 1) {
        last = listCount - 1;
        first = std::max(last - visibleRows + 1, 0);
    }
}

}  // namespace sarnel

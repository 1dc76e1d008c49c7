#include "controls/list/listlayout.h"

#include <algorithm>

#include "platform/base/rounding.h"

namespace sarnel {

using platform::Long;

Long ListLayout::ImageSide() const {
    // The property takes any number; no surface is larger.
    constexpr Long kMost = 32767;
    return std::clamp(itemImageSize, -kMost, kMost);
}

void ListLayout::PlaceRows(Long listHeight, bool images) {
    hasImages = images;
    const Long pitch = RowPitch();
    visibleRows = pitch > 0 ? listHeight / pitch : 0;
    textLeft = 3 + (hasImages ? ImageWidth() + 2 : 0);
    rowTop[0] = 0;
    for (Long row = 1; row < std::min(visibleRows, kMostRows); ++row) {
        const auto at = static_cast<std::size_t>(row);
        rowTop[at] = rowTop[at - 1] + pitch;
    }
}

Long ListLayout::RowTop(Long row) const {
    return row >= 0 && row < kMostRows ? rowTop[static_cast<std::size_t>(row)] : 0;
}

Long ListLayout::RowFromY(float y) const {
    Long lo = 0;
    Long hi = visibleRows - 2;
    for (;;) {
        const Long mid = platform::RoundHalfEven((double{1} * lo + hi) / 2);
        const bool known = mid >= 0 && mid + 1 < kMostRows;
        if (known && double{y} >= RowTop(mid) && double{y} < RowTop(mid + 1)) {
            return mid;
        }
        if (lo > hi) {
            return lo;
        }
        if (double{y} <= RowTop(mid)) {
            hi = mid - 1;
        } else {
            lo = mid + 1;
        }
    }
}

}  // namespace sarnel

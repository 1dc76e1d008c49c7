#include "controls/list/listthumb.h"

#include <algorithm>
#include <cmath>

#include "platform/base/rounding.h"

namespace sarnel {

using platform::Long;
using platform::RoundHalfEven;

bool ListThumb::IsOn(float x, float y) const {
    return shown && double{x} >= rect.left && double{x} <= rect.right && double{y} >= rect.top &&
           double{y} <= rect.bottom;
}

bool ListThumb::IsOnTrack(float x, float y) const {
    const platform::Rect& strip = stripRect;
    return shown && double{x} >= strip.left && double{x} <= strip.right && double{y} >= strip.top &&
           double{y} <= strip.bottom && !IsOn(x, y);
}

Long ListThumb::ComputeHeight(Long listCount, Long visibleRows) {
    constexpr Long kLeast = 25;
    if (listCount <= visibleRows) {
        return -1;
    }
    const auto part = static_cast<float>(double{1} * visibleRows / listCount);
    Long computed = static_cast<Long>(std::floor(double{part} * barHeight));
    if (computed < kLeast) {
        computed = kLeast;
    } else if (computed % 2 == 0) {
        --computed;
    }
    dirty = false;
    return computed;
}

Long ListThumb::ComputeTop(Long listHeight, Long listCount, Long visibleRows, Long first,
                           Long last) {
    const double half = height / 2.0;
    minY = RoundHalfEven(half + 1);
    maxY = RoundHalfEven(listHeight - half + 1);
    if (first == 0) {
        return 0;
    }
    if (last == listCount - 1) {
        return std::max(listHeight - height, 0);
    }
    if (listCount == visibleRows) {
        return 0;
    }
    const auto perRow =
        static_cast<float>((double{1} * maxY - minY) / (double{1} * listCount - visibleRows));
    return RoundHalfEven(double{perRow} * first + minY - half);
}

}  // namespace sarnel

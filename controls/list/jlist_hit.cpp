// What lies under the pointer.
#include "controls/list/jlist.h"
#include "controls/list/moved.h"
#include "platform/base/rounding.h"

namespace sarnel {

bool JList::IsInList(float x, float y) const {
    const Long limit = ScaleWidth() - (scrollBarShown_ ? 13 : 1);
    return x >= 0 && double{x} <= limit && y >= 0 && double{y} <= ScaleHeight() - 1;
}

bool JList::IsInBar(float x) const {
    const Rect& strip = thumb_.stripRect;
    return scrollBarShown_ && double{x} >= strip.left && double{x} <= strip.right;
}

bool JList::IsOnThumb(float x, float y) const {
    const Rect& rect = thumb_.rect;
    return scrollBarShown_ && double{x} >= rect.left && double{x} <= rect.right &&
           double{y} >= rect.top && double{y} <= rect.bottom;
}

bool JList::IsOnTrack(float x, float y) const {
    const Rect& strip = thumb_.stripRect;
    return IsInBar(x) && double{y} >= strip.top && double{y} <= strip.bottom && !IsOnThumb(x, y);
}

bool JList::IsAboveThumb(float y) const {
    return double{y} < thumb_.rect.top;
}

// Over none of them the zone stays what it was.
void JList::UpdateZone(float x, float y) {
    if (IsInList(x, y)) {
        mouse_.zone = ListMouse::kRows;
    } else if (IsOnThumb(x, y)) {
        mouse_.zone = ListMouse::kThumb;
    } else if (IsOnTrack(x, y)) {
        mouse_.zone = ListMouse::kTrack;
    }
}

// The displayed row at a height; below the last row's top it is the last one.
Long JList::RowFromY(float y) const {
    Long lo = 0;
    Long hi = visibleRows_ - 2;
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

Long JList::MouseOverIndex(float YPos) const {
    const Long index = Moved(displayFirst_, RowFromY(YPos));
    const bool outside = index > listCount_ - 1 || !IsInList(mouse_.x, mouse_.y);
    return outside && !mouse_.edgeScrolling ? -1 : index;
}

}  // namespace sarnel

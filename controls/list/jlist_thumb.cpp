// The scroll strip: how high the thumb is, where it stands, and what both look like.
#include <algorithm>
#include <cmath>

#include "controls/list/jlist.h"
#include "controls/list/moved.h"
#include "platform/base/rounding.h"

namespace sarnel {

using platform::RoundHalfEven;
using platform::Surface;

Long JList::ComputeThumbHeight() {
    constexpr Long kLeast = 25;
    if (listCount_ <= visibleRows_) {
        return -1;
    }
    const auto part = static_cast<float>(double{1} * visibleRows_ / listCount_);
    Long height = static_cast<Long>(std::floor(double{part} * thumb_.barHeight));
    if (height < kLeast) {
        height = kLeast;
    } else if (height % 2 == 0) {
        --height;
    }
    thumb_.dirty = false;
    return height;
}

Long JList::ComputeThumbTop() {
    const double half = thumb_.height / 2.0;
    thumb_.minY = RoundHalfEven(half + 1);
    thumb_.maxY = RoundHalfEven(ScaleHeight() - half + 1);
    if (displayFirst_ == 0) {
        return 0;
    }
    if (displayLast_ == listCount_ - 1) {
        return std::max(ScaleHeight() - thumb_.height, 0);
    }
    if (listCount_ == visibleRows_) {
        return 0;
    }
    const auto perRow = static_cast<float>((double{1} * thumb_.maxY - thumb_.minY) /
                                           (double{1} * listCount_ - visibleRows_));
    return RoundHalfEven(double{perRow} * displayFirst_ + thumb_.minY - half);
}

// The top is computed with the height as it was: after an add or a remove the thumb stands right
// with the second repaint.
void JList::PlaceThumb(float grabOffset) {
    thumb_.top = ComputeThumbTop();
    if (thumb_.dirty) {
        thumb_.height = ComputeThumbHeight();
    }
    Long top = thumb_.top;
    if (grabOffset != -1) {
        top = RoundHalfEven(double{mouse_.y} - double{grabOffset});
        top = std::min(top, ScaleHeight() - thumb_.height);
        top = std::max(top, 0);
    }
    const Long left = ScaleWidth() - ListThumb::kWidth;
    thumb_.rect = {left, top, left + 11, Moved(top, thumb_.height)};
}

void JList::PaintScrollBar() {
    Surface& face = Paint();
    const platform::Rect& rect = thumb_.rect;
    face.FillRect({thumb_.stripRect.left + 1, 0, ScaleWidth(), ScaleHeight()}, backBrush_);
    // A copy of the gradient's first lines, not a scaled picture of all.
    const platform::Rect whole{rect.left, rect.top, rect.left + ListThumb::kWidth, rect.bottom};
    // A range far from all rows puts it far off the face.
    if (!IsEmpty(Intersect(whole, face.Bounds()))) {
        face.BitBlt(whole, thumbBar_.picture, {0, 0});
        face.Outline(whole, colours_.thumbBorder, platform::PS_SOLID);
    }
    // Comes last: the very first strip clears the whole face from x = 1 on.
    thumb_.stripRect = {ScaleWidth() - 13, 0, ScaleWidth() - 2, ScaleHeight() - 1};
}

void JList::DrawScrollBar(float grabOffset) {
    PlaceThumb(grabOffset);
    PaintScrollBar();
}

}  // namespace sarnel

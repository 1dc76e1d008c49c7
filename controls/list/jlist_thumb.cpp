// The scroll strip and the thumb on it: where the thumb stands, by the rows on show or by the
// pointer that holds it, and how both are painted.
#include <algorithm>

#include "controls/list/jlist.h"
#include "controls/list/moved.h"
#include "platform/base/rounding.h"

namespace sarnel {

using platform::RoundHalfEven;
using platform::Surface;

// The top is computed before the height, and needs it. So after rows were added or removed the
// first repaint puts the thumb where its former height would have it, and only the second one is
// right.
void JList::PlaceThumb(float grabOffset) {
    thumb_.top =
        thumb_.ComputeTop(ScaleHeight(), ListCount(), VisibleRows(), range_.first, range_.last);
    if (thumb_.dirty) {
        thumb_.height = thumb_.ComputeHeight(ListCount(), VisibleRows());
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
    // The gradient is as high as the list; the thumb shows its first lines, unscaled.
    const platform::Rect whole{rect.left, rect.top, rect.left + ListThumb::kWidth, rect.bottom};
    // A range that is far from all rows puts the thumb far off the face.
    if (!IsEmpty(Intersect(whole, face.Bounds()))) {
        face.BitBlt(whole, thumbBar_.Picture(), {0, 0});
        face.Outline(whole, colours_.thumbBorder, platform::PS_SOLID);
    }
    // Set only now: above it is still empty at the first painting, which so clears all from x = 1
    // on.
    thumb_.stripRect = {ScaleWidth() - 13, 0, ScaleWidth() - 2, ScaleHeight() - 1};
}

void JList::DrawScrollBar(float grabOffset) {
    PlaceThumb(grabOffset);
    PaintScrollBar();
}

}  // namespace sarnel

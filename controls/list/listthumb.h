// The scroll strip of a list and the thumb on it, in pixels.
#pragma once

#include "platform/base/types.h"

namespace sarnel {

struct ListThumb {
    using Long = platform::Long;

    static constexpr Long kWidth = 12;  ///< also what rows leave free for it

    bool shown = false;  ///< the list has a strip
    bool dirty = true;   ///< the height must be computed; set by every add and remove
    Long barHeight = 0;  ///< the list's height when the gradient was built
    Long height = 0;
    Long top = 0;
    Long minY = 0;  ///< limits of the thumb's centre
    Long maxY = 0;
    // As the rules store them: the right edge of either still belongs to it.
    platform::Rect stripRect;
    platform::Rect rect;

    bool IsOn(float x, float y) const;
    /// On the strip and not on the thumb.
    bool IsOnTrack(float x, float y) const;
    bool IsAbove(float y) const { return double{y} < rect.top; }

    /// The height for so many rows; -1, and still dirty, if all of them fit.
    Long ComputeHeight(Long listCount, Long visibleRows);
    /// The top for the rows on show in a list so high, with the height as it is.
    Long ComputeTop(Long listHeight, Long listCount, Long visibleRows, Long first, Long last);
};

}  // namespace sarnel

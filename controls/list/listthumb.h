// The scroll strip of a list and the thumb on it, in pixels.
#pragma once

#include "platform/base/types.h"

namespace sarnel {

struct ListThumb {
    using Long = platform::Long;

    static constexpr Long kWidth = 12;  ///< also what rows leave free for it

    bool dirty = true;   ///< the height must be computed; set by every add and remove
    Long barHeight = 0;  ///< the list's height when the gradient was built
    Long height = 0;
    Long top = 0;
    Long minY = 0;  ///< limits of the thumb's centre
    Long maxY = 0;
    // As the rules store them: the right edge of either still belongs to it.
    platform::Rect stripRect;
    platform::Rect rect;
};

}  // namespace sarnel

// How a fraction becomes a whole number everywhere in the system: to the nearest, halves to the
// even neighbour, unless a rule says otherwise.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/types.h"

namespace platform {

/// A value past the range of Long becomes its nearest end.
inline Long RoundHalfEven(double value) {
    constexpr double kLowest = std::numeric_limits<Long>::min();
    constexpr double kHighest = std::numeric_limits<Long>::max();
    return static_cast<Long>(std::clamp(std::nearbyint(value), kLowest, kHighest));
}

}  // namespace platform

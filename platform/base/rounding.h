// How a fraction becomes a whole number everywhere in the system: to the nearest, halves to the
// even neighbour, unless a rule says otherwise.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "platform/base/types.h"

namespace platform {

/// A value past the range of Long becomes its nearest end.
inline Long RoundHalfEven(double value) {
    constexpr double kLowest = std::numeric_limits<Long>::min();
    constexpr double kHighest = std::numeric_limits<Long>::max();
    return static_cast<Long>(std::clamp(std::nearbyint(value), kLowest, kHighest));
}

/// Nothing for a value that rounds to a number outside of the type, and for what is no number.
template <class Whole>
std::optional<Long> RoundInto(double value) {
    constexpr double kLowest = std::numeric_limits<Whole>::min();
    constexpr double kHighest = std::numeric_limits<Whole>::max();
    const double rounded = std::nearbyint(value);
    if (!(rounded >= kLowest && rounded <= kHighest)) {
        return std::nullopt;
    }
    return static_cast<Long>(rounded);
}
inline std::optional<Long> RoundTo16Bits(double value) {
    return RoundInto<std::int16_t>(value);
}
inline std::optional<Long> RoundTo32Bits(double value) {
    return RoundInto<std::int32_t>(value);
}

}  // namespace platform

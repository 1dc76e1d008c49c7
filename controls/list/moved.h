// Sums of row indices. Indices are not range checked, so one may stand at the end of all numbers:
// what is added to it stops there.
#pragma once

#include <algorithm>
#include <limits>

#include "platform/base/types.h"

namespace sarnel {

/// `row` moved by so many rows.
inline platform::Long Moved(platform::Long row, std::int64_t by) {
    using Limits = std::numeric_limits<platform::Long>;
    return static_cast<platform::Long>(
        std::clamp<std::int64_t>(row + by, Limits::min(), Limits::max()));
}

}  // namespace sarnel

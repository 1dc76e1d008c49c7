// When a copy of the list is due, by the clock alone.
#pragma once

#include <algorithm>
#include <optional>

#include "platform/base/types.h"

namespace veldrin {

/// Times in milliseconds of one clock.
struct CopyTimes {
    using Millis = platform::Millis;

    /// So long after the last change the list counts as settled.
    static constexpr Millis kSettled = 5000;
    /// So long after the first change that is in no copy it is copied as it is.
    static constexpr Millis kLongest = 10000;
    /// The least distance of two copies, and that of long lists.
    static constexpr Millis kPeriod = 10000;
    static constexpr Millis kLongPeriod = 60000;
    static constexpr platform::Long kLongList = 200000;  ///< up to so many rows a list is not long

    Millis firstChange = 0;  ///< that is in no copy
    Millis lastChange = 0;
    std::optional<Millis> lastCopy;

    /// How long nothing can be due, whatever happens.
    Millis Rest(Millis now, platform::Long rows) const {
        const Millis period = rows > kLongList ? kLongPeriod : kPeriod;
        return lastCopy ? std::max<Millis>(*lastCopy + period - now, 0) : 0;
    }

    bool IsDue(Millis now, platform::Long rows) const {
        return Rest(now, rows) == 0 &&
               (now - lastChange >= kSettled || now - firstChange >= kLongest);
    }
};

}  // namespace veldrin

// The keys by which the component is steered from the list, without modifiers.
#pragma once

#include <algorithm>
#include <array>

#include "platform/base/types.h"

namespace veldrin {

inline constexpr platform::Long kKeyPrevious = 'Z';
inline constexpr platform::Long kKeyPlay = 'X';
inline constexpr platform::Long kKeyPause = 'C';
inline constexpr platform::Long kKeyStop = 'V';
inline constexpr platform::Long kKeyNext = 'B';

inline constexpr std::array kTransportKeys = {kKeyPrevious, kKeyPlay, kKeyPause, kKeyStop,
                                              kKeyNext};

inline bool IsTransportKey(platform::Long code) {
    return std::find(kTransportKeys.begin(), kTransportKeys.end(), code) != kTransportKeys.end();
}

}  // namespace veldrin

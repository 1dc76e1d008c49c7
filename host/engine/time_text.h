// How a length or a position is written.
#pragma once

#include <cstdint>
#include <string>

namespace veldrin {

/// "m:ss", the minutes without an end; `seconds` is not negative.
inline std::string MinutesAndSeconds(std::int64_t seconds) {
    const std::int64_t rest = seconds % 60;
    return std::to_string(seconds / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

}  // namespace veldrin

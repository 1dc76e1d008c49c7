// What passes from the items to the output: stereo sound as interleaved 32-bit floats of the
// machine, a frame being one sample of each side. Full scale is -1 to 1.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace veldrin {

constexpr std::size_t kSides = 2;

/// Times of a medium and of listening.
using Time = std::chrono::duration<std::int64_t, std::nano>;

constexpr std::int64_t FramesIn(Time time, int rate) {
    return time.count() / 1000 * rate / 1000000;
}

/// Not rounded before the end, so that counting frames for hours adds up to the hours.
constexpr Time TimeOf(std::int64_t frames, int rate) {
    constexpr std::int64_t kSecond = 1000000000;
    return Time(frames / rate * kSecond + frames % rate * kSecond / rate);
}

/// Their format, as GStreamer names it.
inline std::string FramesFormat(int rate) {
    std::string format = "audio/x-raw, format=(string)";
    format += __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? "F32LE" : "F32BE";
    return format.append(", layout=(string)interleaved, channels=(int)2, rate=(int)")
        .append(std::to_string(rate));
}

}  // namespace veldrin

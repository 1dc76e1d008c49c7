// The few types that every layer shares: whole numbers of the width that the rules state, handles,
// colours and rectangles. Nothing here knows a window.
#pragma once

#include <cstdint>

namespace platform {

/// 32-bit signed: indices, counts, positions, impulse numbers, message words.
using Long = std::int32_t;

/// Names a window, a menu, a hook, a drop or a record. 0 is none. A handle is never given out
/// twice, so that a stale one is harmless.
using Handle = std::int32_t;

/// Red in the low byte, then green, then blue.
using Colour = std::int32_t;

/// Milliseconds on the driver's clock.
using Millis = std::int64_t;

struct Point {
    Long x = 0;
    Long y = 0;
    bool operator==(const Point&) const = default;
};

struct Size {
    Long width = 0;
    Long height = 0;
    bool operator==(const Size&) const = default;
};

/// Half-open: the last pixel is right - 1, bottom - 1. Pixels.
struct Rect {
    Long left = 0;
    Long top = 0;
    Long right = 0;
    Long bottom = 0;

    Long Width() const { return right - left; }
    Long Height() const { return bottom - top; }
    bool Contains(Point p) const {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    bool operator==(const Rect&) const = default;
};

}  // namespace platform

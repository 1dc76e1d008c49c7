// What a list remembers of its last full repaint, so that the next one finds out what is to be
// drawn at all: the owner asks for one 33 times a second.
#pragma once

#include <string>
#include <vector>

#include "platform/base/types.h"

namespace sarnel {

/// All that decides the pixels of a row in a given frame.
struct PaintedRow {
    std::u16string text;
    platform::Colour ink = 0;
    platform::Colour rectColour = 0;  ///< of the dotted rectangle, 0 without one
    platform::Long image = -1;
    bool selected = false;
    bool current = false;
    bool twice = false;  ///< the focus row is drawn once more, which shows where strokes blend
    bool operator==(const PaintedRow&) const = default;
};

/// All that decides the other pixels and where rows lie.
struct PaintedFrame {
    platform::Long version = 0;  ///< of metrics, pictures, font and colours
    platform::Size size;
    platform::Long first = -1;
    platform::Long last = -1;
    platform::Rect thumb;  ///< empty without a scroll strip
    bool operator==(const PaintedFrame&) const = default;
};

struct Painted {
    bool valid = false;        ///< nothing else has drawn on the face since
    platform::Long looks = 0;  ///< goes up with each change that all rows show
    PaintedFrame frame;
    std::vector<PaintedRow> rows;
    // Kept for their memory.
    std::vector<platform::Long> changed;  ///< rows that a repaint found different, from 0
    PaintedRow described;
    std::u16string rowString;
};

}  // namespace sarnel

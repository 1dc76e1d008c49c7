// Pictures as files: bitmaps with an info header of 40 bytes, bottom row first, of 1, 4, 8 or 24
// bits a pixel, plain or (with 8) run-length compressed. Nothing else is read, and nothing that is
// damaged in any way.
#pragma once

#include <string_view>

#include "platform/drawing/surface.h"

namespace platform {

/// Sides longer than this are damage, in pixels.
inline constexpr Long kLongestBitmapSide = 4096;

/// The picture in the bytes of a whole file; null if they are not such a file. Of a picture that
/// has been drawn for finer surfaces its sides are multiples of their density, or it is none.
PictureRef DecodeBitmap(std::string_view bytes, Long density = 1);

}  // namespace platform

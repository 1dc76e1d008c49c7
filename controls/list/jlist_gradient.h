// Gradients for the selection bar and the scroll thumb: a block of pixels in which a row of colour
// steps runs in one direction.
#pragma once

#include <vector>

#include "platform/drawing/surface.h"

namespace sarnel {

/// What a block of pixels looks like. Its scans go from the bottom up.
struct BitmapHeader {
    platform::Long size = 0;
    platform::Long width = 0;
    platform::Long height = 0;
    platform::Long planes = 0;
    platform::Long bitCount = 0;
};

/// Builds a gradient of W x H pixels from C1 to C2. Angle in degrees: 0 has C1 at the left, 90 at
/// the bottom, 180 at the right. Less than a pixel leaves header and pixels as they were.
void BuildGradient(platform::Long W, platform::Long H, platform::Colour C1, platform::Colour C2,
                   double Angle, BitmapHeader& Header, std::vector<platform::Pixel>& Pixels);

/// A gradient with the picture of it.
struct GradientBar {
    BitmapHeader header;
    std::vector<platform::Pixel> pixels;
    platform::Surface picture;

    void Build(platform::Long W, platform::Long H, platform::Colour C1, platform::Colour C2,
               double Angle);
};

}  // namespace sarnel

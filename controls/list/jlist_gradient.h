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

/// The same as a picture, built when it is first drawn: a list gets its colours one by one, and its
/// selection bar one after the other, mostly without a row to show it.
class GradientBar {
  public:
    /// What to draw from now on, with steps as fine as the density in force. Less than a pixel
    /// leaves the bar as it was.
    void Become(platform::Size size, platform::Colour C1, platform::Colour C2, double Angle);

    const platform::Surface& Picture();

  private:
    platform::Surface picture_;
    platform::Colour from_ = 0;
    platform::Colour to_ = 0;
    double angle_ = 0;
    bool built_ = true;
};

}  // namespace sarnel

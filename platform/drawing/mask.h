// What of its rectangle a control shows, and where it can be clicked.
#pragma once

#include <vector>

#include "platform/drawing/surface.h"

namespace platform {

/// Which points of a control belong to it: those of a mask picture that have not the transparent
/// colour in their middle. Drawn are those of the mask for the density in force.
class Mask {
  public:
    Mask(const Surface& picture, Colour transparent);

    /// Whether the point can be clicked; False outside the picture.
    bool Contains(Point point) const;
    Size GetSize() const { return size_; }
    /// Copies what is drawn of `source` to `to`, as BitBlt does. `from` is in source and mask.
    void Copy(const Surface& source, Point from, const Rect& to, Surface& target) const;

  private:
    Size size_;
    std::vector<bool> inside_;
    Surface shown_;  ///< white where the control is drawn
};

}  // namespace platform

// One factor between the component's pixels and those of the device. The window system above knows
// only the former; this is the edge where they meet.
#pragma once

#include <QPoint>
#include <QRect>
#include <algorithm>
#include <cmath>

#include "platform/base/types.h"

namespace platform::desktop {

class Magnification {
  public:
    explicit Magnification(double factor) : factor_(factor) {}

    double Factor() const { return factor_; }
    bool IsWhole() const { return factor_ == std::floor(factor_); }

    /// A place or length in device pixels. The window server counts in 16 bits, and a settings file
    /// may hold anything.
    int ToDevice(Long value) const {
        constexpr double kFarthest = 32000;
        return static_cast<int>(std::lround(std::clamp(value * factor_, -kFarthest, kFarthest)));
    }
    QRect ToDevice(const Rect& rect) const {
        return {ToDevice(rect.left), ToDevice(rect.top), std::max(ToDevice(rect.Width()), 1),
                std::max(ToDevice(rect.Height()), 1)};
    }
    /// The component's pixel that a device pixel, or a distance, belongs to.
    Long ToComponent(double device) const {
        return static_cast<Long>(std::floor(device / factor_));
    }
    /// The nearest pixel, for places that are not hit tested.
    Long ToNearest(double device) const { return static_cast<Long>(std::lround(device / factor_)); }

  private:
    double factor_;
};

}  // namespace platform::desktop

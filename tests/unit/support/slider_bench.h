// A slider of 110 x 10 at (20, 30) with a stick of 10 x 10, so that the stick travels 100 pixels.
// Its background is red in use and green out of use.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "controls/jslider.h"
#include "tests/unit/support/control_bench.h"

namespace support {

class ASlider : public ::testing::Test {
  protected:
    using Events = std::vector<std::string>;

    ASlider() {
        slider_.StickMaskPicture(Strip({10, 10}, {0}));
        slider_.StickPicture(Strip({10, 10}, {1, 2, 3}));
        slider_.Picture(Strip({50, 10}, {kRed, kGreen}));
        bench_.Record(slider_);
    }
    void MakeVertical() {
        auto halves = std::make_shared<platform::Surface>(platform::Size{20, 50});
        halves->FillRect({0, 0, 10, 50}, kRed);
        halves->FillRect({10, 0, 20, 50}, kGreen);
        slider_.Style(true);
        slider_.Picture(halves);
        slider_.Move(20, 30, 33, 110);
    }
    void MoveTo(platform::Long x, platform::Long y) { bench_.Move({20 + x, 30 + y}); }
    /// The same, its events forgotten.
    void PlaceAt(platform::Long x, platform::Long y) {
        MoveTo(x, y);
        bench_.Events();
    }

    ControlBench bench_;
    sarnel::JSlider slider_{bench_.windows, bench_.holder.HWnd(), platform::Rect{20, 30, 130, 47}};
};

}  // namespace support

// A desktop that shows pictures, on paper: it writes down what is sent to it and keeps a copy of
// each window as a screen would have it.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/headless/headless_driver.h"

namespace support {

class ScreenDriver : public platform::HeadlessDriver {
  public:
    ScreenDriver() : HeadlessDriver(Clock::kVirtual) {}

    bool ShowsPictures() const override { return true; }
    void ShowPicture(platform::Handle window, const platform::Surface& picture,
                     std::span<const platform::Rect> changed) override {
        platform::Surface& screen = screens[window];
        if (!(screen.GetSize() == picture.GetSize()) || screen.Density() != picture.Density()) {
            screen = platform::Surface(picture.GetSize(), picture.Density());
        }
        for (const platform::Rect& rect : changed) {
            sent_.push_back(rect);
            screen.BitBlt(rect, picture, {rect.left, rect.top});
        }
    }

    /// The rectangles sent since the last time.
    std::vector<platform::Rect> Sent() { return std::exchange(sent_, {}); }

    std::map<platform::Handle, platform::Surface> screens;

  private:
    std::vector<platform::Rect> sent_;
};

}  // namespace support

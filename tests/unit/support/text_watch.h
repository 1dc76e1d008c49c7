// A driver that notes what is rendered: how often, and how much at once.
#pragma once

#include <algorithm>
#include <string_view>

#include "platform/headless/headless_driver.h"

namespace platform {

class TextWatch : public HeadlessDriver {
  public:
    TextWatch() : HeadlessDriver(Clock::kVirtual) {}
    TextPicture RenderText(const Font& font, std::u16string_view text, Long left, Long width,
                           Long density) const override {
        ++rendered;
        longest = std::max(longest, text.size());
        widest = std::max(widest, width);
        return HeadlessDriver::RenderText(font, text, left, width, density);
    }
    mutable int rendered = 0;
    mutable Long widest = 0;
    mutable std::size_t longest = 0;
};

}  // namespace platform

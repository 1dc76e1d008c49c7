// Playing in a window, which has all that a user needs. What the first picture can do without comes
// after it.
#pragma once

#include <optional>

#include "host/front.h"
#include "platform/desktop/desktop_driver.h"

namespace veldrin {

class WindowFront : public Front {
  public:
    /// Only where DesktopDriver::WhyNoDisplay finds nothing. Starts threads of the toolkit's own.
    WindowFront(Console& console, std::optional<double> scale)
        : Front(console), driver_("veldrin", scale) {}

    platform::Driver& GetDriver() override { return driver_; }
    void Enter(const Surroundings& surroundings) override {
        driver_.WatchSessionEnd(surroundings.endNow);
    }
    int Status() const override { return 0; }

  private:
    platform::DesktopDriver driver_;
};

}  // namespace veldrin

// The desktop of a scenario: a virtual one that also finds out when the component waits for what
// can never come, and that keeps the picture of the last popup menu.
#pragma once

#include <algorithm>
#include <functional>
#include <optional>

#include "platform/drawing/surface.h"
#include "platform/headless/headless_driver.h"

namespace platform {
class WindowSystem;
}

namespace scenario {

class Screen : public platform::HeadlessDriver {
  public:
    using Millis = platform::Millis;

    explicit Screen(platform::Long density) : HeadlessDriver(Clock::kVirtual, density) {}

    /// The window system that this is the desktop of; both live equally long.
    void Serve(platform::WindowSystem& windows) { windows_ = &windows; }

    // Waits that nothing can end. A loop of the component goes on until an event that only a
    // command can bring. While commands are set to run, one of them may; after the last one the
    // loop goes on for ever, however often its timers fire. Some loops take their time, though: a
    // list that scrolls by itself to its end.

    /// What happens then; it does not come back.
    void OnEndlessWait(std::function<void()> action) { onEndlessWait_ = std::move(action); }
    /// A command begins, which by itself takes so long.
    void Expect(Millis duration) { expected_ = std::max(expected_, Now() + duration); }

    void WaitUntil(std::optional<Millis> deadline) override;

    // Popup menus.

    /// The first level of the last popup as it stood when the choice was made; none before the
    /// first popup.
    const std::optional<platform::Surface>& LastPopup() const { return lastPopup_; }

    void GrabInput(platform::Handle popup) override { popup_ = popup; }
    void ReleaseInput() override;

  private:
    platform::WindowSystem* windows_ = nullptr;
    std::function<void()> onEndlessWait_;
    Millis expected_ = 0;  ///< until then something may still come, or the time simply passes
    platform::Handle popup_ = 0;
    std::optional<platform::Surface> lastPopup_;
};

}  // namespace scenario

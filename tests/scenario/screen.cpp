#include "tests/scenario/screen.h"

#include <utility>

#include "platform/windows/window_system.h"

namespace scenario {

namespace {

// A list of a hundred thousand rows takes as long to scroll to its end.
constexpr platform::Millis kPatience = 1'800'000;

}  // namespace

void Screen::WaitUntil(std::optional<Millis> deadline) {
    HeadlessDriver::WaitUntil(deadline);
    if (windows_->ExpectsInput()) {
        Expect(0);
    } else if (Now() - expected_ > kPatience && onEndlessWait_) {
        onEndlessWait_();
    }
}

void Screen::ReleaseInput() {
    lastPopup_.emplace(windows_->Compose(std::exchange(popup_, 0)));
}

}  // namespace scenario

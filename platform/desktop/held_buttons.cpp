#include "platform/desktop/held_buttons.h"

#include <algorithm>
#include <utility>

#include "platform/base/keys.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

namespace {

constexpr Millis kPause = 50;  // between two questions

}  // namespace

void ReleaseAllBut(Shared& shared, Long held, Point ptScreen, Long shift) {
    for (const Long button : {kLeftButton, kRightButton, kMiddleButton}) {
        if ((shared.pointer.held & ~held & button) != 0) {
            shared.pointer.held &= ~button;
            shared.events.Push(ButtonChanged{ptScreen, button, false, shift});
        }
    }
}

std::optional<Millis> HeldButtons::Patience(Millis now) const {
    if (shared_.pointer.held == 0) {
        return std::nullopt;
    }
    return std::max<Millis>(asked_ + kPause - now, 0);
}

void HeldButtons::Check(Millis now) {
    if (shared_.pointer.held != 0 && !std::exchange(wasHeld_, true)) {
        asked_ = now;  // a click is over before anybody needs to ask
    }
    const std::optional<Millis> patience = Patience(now);
    if (!patience || *patience > 0) {
        return;
    }
    asked_ = now;
    if (const auto pointer = AskForPointer()) {
        const Point ptScreen{shared_.scale.ToComponent(pointer->place.x()),
                             shared_.scale.ToComponent(pointer->place.y())};
        ReleaseAllBut(shared_, pointer->held, ptScreen, pointer->shift);
    }
}

bool HeldButtons::AllLetGo() {
    return shared_.pointer.held == 0 && shared_.events.IsEmpty() && std::exchange(wasHeld_, false);
}

}  // namespace platform::desktop

// Where a window is, and whether in front, if it does not decide that itself: on an X server on
// Wayland.
#include <QSinglePointEvent>

#include "platform/desktop/held_buttons.h"
#include "platform/desktop/top_level.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

bool TopLevel::IsPlacedByDesktop() const {
    return shared_.selfPlacing == SelfPlacing::kIgnored && isVisible() && !IsPopup();
}

// What is seen of a popup goes at once that way.
void TopLevel::MovePopupAside(bool goes) {
    if (!shared_.isXOnWayland || !IsPopup() || handle() == nullptr) {
        return;
    }
    const auto window = static_cast<std::uint32_t>(winId());
    if (goes) {
        TakeOffScreen(window);
    } else {
        MoveOnServer(window, Place().topLeft());
    }
}

// Begins to doubt, with a drag, that the window goes where it is put.
void TopLevel::DoubtPlacing() {
    constexpr int kPatience = 100;  // milliseconds, for a window manager to move it
    if (shared_.selfPlacing == SelfPlacing::kUnknown && shared_.pointer.held != 0 && !IsPopup() &&
        !unheeded_.isActive()) {
        dragged_ = position();
        unheeded_.start(kPatience, this);
    }
}

void TopLevel::EndDoubtOfPlacing() {
    unheeded_.stop();
    const auto place = AskForPlace(*this);
    if (!place || shared_.selfPlacing != SelfPlacing::kUnknown) {
        return;
    }
    if (*place != dragged_) {
        Heeded();
        return;
    }
    shared_.selfPlacing = SelfPlacing::kIgnored;
    HandOver(*place);
}

void TopLevel::Heeded() {
    unheeded_.stop();
    if (shared_.selfPlacing == SelfPlacing::kUnknown) {
        shared_.selfPlacing = SelfPlacing::kWorks;
    }
}

// The window is where it was. If it is being dragged, the desktop takes that over; whoever dragged
// it is done then, since the release goes to the desktop.
void TopLevel::HandOver(QPoint place) {
    asked_.clear();
    setPosition(place);
    Report(place);
    if (shared_.pointer.held == kLeftButton && startSystemMove()) {
        ReleaseAllBut(shared_, 0, shared_.pointer.ptScreen, 0);
    }
}

// A window manager that pays no heed to places may not tell either when it moves the window. It
// shows in where the server sees the pointer, on the screen and in the window.
void TopLevel::LearnPlace(const QSinglePointEvent& event) {
    ForgetOldAsked();
    if (shared_.selfPlacing == SelfPlacing::kWorks || IsPopup() || !asked_.empty() ||
        shared_.pointer.held != 0 ||
        (event.globalPosition() - event.position()).toPoint() == position()) {
        return;
    }
    // The event may be older than what is known.
    const auto place = AskForPlace(*this);
    if (place && *place != position()) {
        setPosition(*place);
        Report(*place);
    }
}

void TopLevel::DoubtActivation() {
    constexpr int kPatience = 300;  // milliseconds, for a window manager to bring it to the front
    if (shared_.isXOnWayland) {
        behind_.start(kPatience, this);
    }
}

// A window manager that does not want to activate the window says so. Where nothing comes of it at
// all, the window gets to the front as one that is new: one that has only been hidden may come back
// elsewhere.
void TopLevel::EndDoubtOfActivation() {
    behind_.stop();
    const bool isNoMatter = !isVisible() || minimised_ || shared_.isGrabbed;
    if (isNoMatter || HasKeyboard(*this) || IsSaidToWantAttention(*this)) {
        return;
    }
    direct_.reset();
    hasIcon_ = false;
    destroy();
    setVisible(true);
}

}  // namespace platform::desktop

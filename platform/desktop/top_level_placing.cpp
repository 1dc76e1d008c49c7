// Where a window is, and whether in front. On an X server on Wayland it does not decide that
// itself.
#include <QSinglePointEvent>
#include <algorithm>
#include <utility>

#include "platform/desktop/held_buttons.h"
#include "platform/desktop/top_level.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

void TopLevel::MoveTo(QPoint place) {
    if (IsPlacedByDesktop()) {
        HandOver(position());
        return;
    }
    if (handle() != nullptr && isVisible() && place != position()) {
        DoubtPlacing();
        asked_.push_back({place, Clock::now()});
    }
    setPosition(place);
}

void TopLevel::ComeToScreen(Shown wanted) {
    if (shared_.onWayland || IsPlacedByDesktop()) {
        return;
    }
    if (const auto place = Rescued(Place(), wanted, ScreensNow())) {
        MoveTo(*place);
        Report(*place);
    }
}

void TopLevel::Report(QPoint place) {
    ReportPlace({shared_.scale.ToNearest(place.x()), shared_.scale.ToNearest(place.y())});
}

void TopLevel::ReportPlace(Point ptScreen) {
    rect_ = {ptScreen.x, ptScreen.y, ptScreen.x + rect_.Width(), ptScreen.y + rect_.Height()};
    shared_.events.Push(MovedByDesktop{handle_, ptScreen});
}

void TopLevel::ForgetOldAsked() {
    constexpr std::chrono::seconds kForgotten(2);
    while (!asked_.empty() && Clock::now() - asked_.front().when > kForgotten) {
        asked_.pop_front();
    }
}

// While the window is dragged by its own doing, several places are under way; what comes back for
// an older one is no move by the desktop. A place that was overtaken is never confirmed.
bool TopLevel::IsAnswer(QPoint place) {
    ForgetOldAsked();
    const auto found = std::find_if(asked_.begin(), asked_.end(),
                                    [&](const Asked& asked) { return asked.place == place; });
    if (found == asked_.end()) {
        asked_.clear();
        return false;
    }
    asked_.erase(asked_.begin(), found + 1);
    Heeded();
    return true;
}

// Some window managers put the frame that they lay around a new window where the window wanted to
// be, or leave room for a frame that they do not lay. Left there, it would come to stand farther
// right and down at each start. Asked once more they do as they are told.
bool TopLevel::IsPushedByAFrame(QPoint place) {
    constexpr std::chrono::seconds kNew(2);
    constexpr QRect kFrame(0, 0, 33, 65);  // the border at the left, the title at the top
    const auto shownAt = std::exchange(shownAt_, std::nullopt);
    return shownAt && Clock::now() - *shownAt < kNew && kFrame.contains(place - Place().topLeft());
}

void TopLevel::moveEvent(QMoveEvent* event) {
    if (shared_.isXOnWayland && IsPopup()) {
        return;  // aside, and back
    }
    const QPoint place = event->pos();
    if (shared_.onWayland) {
        FollowPopup(place);
        return;
    }
    const QPoint wanted = Place().topLeft();
    if (IsAnswer(place) || place == wanted) {
        return;
    }
    if (IsPushedByAFrame(place)) {
        MoveTo(wanted);
    } else {
        Report(place);
    }
}

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

// The window is where it was. If it is being dragged, the desktop takes that over.
void TopLevel::HandOver(QPoint place) {
    asked_.clear();
    setPosition(place);
    Report(place);
    LetDesktopDrag();
}

// From then on the desktop has the pointer, and the button goes up unseen.
void TopLevel::LetDesktopDrag() {
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
    ForgetSight();
    destroy();
    setVisible(true);
}

}  // namespace platform::desktop

// What a window does where a Wayland compositor shows it. That one places it, moves it and takes it
// off the screen, and tells of none of it; only where a popup stands beside its owner is known.
#include <QGuiApplication>
#include <algorithm>

#include "platform/desktop/top_level.h"
#include "platform/desktop/wayland.h"

namespace platform::desktop {

TopLevel* TopLevel::Owner() const {
    return static_cast<TopLevel*>(transientParent());
}

// The toolkit knows the owner's place by its own numbers.
QPoint TopLevel::WantedBesideOwner() const {
    return Owner()->position() + Place().topLeft() - Owner()->Place().topLeft();
}

// It cannot be moved while it is there.
void TopLevel::PlaceBesideOwner() {
    const bool wasVisible = isVisible();
    if (wasVisible) {
        setVisible(false);
    }
    setPosition(WantedBesideOwner());
    setVisible(wasVisible);
}

// Being dragged is the only wish of that kind that can be passed on.
void TopLevel::BeDragged(const Rect& former) {
    ReportPlace({former.left, former.top});
    LetDesktopDrag();
}

// The compositor has moved the popup to where all of it can be seen.
void TopLevel::FollowPopup(QPoint place) {
    const TopLevel* const owner = Owner();
    if (owner == nullptr) {
        return;
    }
    if (place != WantedBesideOwner()) {
        const Magnification& scale = shared_.scale;
        const QPoint away = place - owner->position();
        ReportPlace({owner->rect_.left + scale.ToNearest(away.x()),
                     owner->rect_.top + scale.ToNearest(away.y())});
    }
}

// Without an owner on the screen there can be no popup, and what is shown is a window like others.
bool TopLevel::StandsAlone() const {
    return Owner() == nullptr || !Owner()->isVisible();
}

// What is told of a point of this window. If a menu of it should be there, it evidently is not: the
// compositor has put it elsewhere, and not every version of the toolkit passes that on. While a
// button is held, all that the pointer does is heard of by the window that was pressed.
Point TopLevel::Told(Point ptScreen) const {
    constexpr Point kBesideAll{-30'000, -30'000};
    if (!shared_.onWayland || shared_.pointer.held != 0) {
        return ptScreen;
    }
    const QWindowList all = QGuiApplication::topLevelWindows();
    const bool isBelowMenu = std::any_of(all.begin(), all.end(), [&](const QWindow* window) {
        const auto* const other = dynamic_cast<const TopLevel*>(window);
        return other != nullptr && other->popup_ == PopupKind::kMenu && other->isExposed() &&
               isAncestorOf(other, IncludeTransients) && other->rect_.Contains(ptScreen);
    });
    return isBelowMenu ? kBesideAll : ptScreen;
}

// No compositor says of a window that it is minimised. It asks for no pictures then, which the
// toolkit finds out once one has been given to it.
void TopLevel::OfferPicture() {
    if (isExposed() && picture_ != nullptr && !picture_->IsEmpty()) {
        PaintInStore({0, 0, 1, 1});
    }
}

void TopLevel::SeenOrNot() {
    if (!isExposed()) {
        wentAway_ = true;
    } else if (minimised_ && wentAway_) {
        Restored();
    }
}

// Activation is for the compositor to grant, and a window that was minimised may stay so. Then it
// is taken away and shown as a new one, which no compositor refuses. It may be away without the
// toolkit having found out.
void TopLevel::ComeBack(bool mayBeActivated) {
    constexpr int kPatience = 300;  // milliseconds
    SetActivationToken({});         // of use once
    if (isExposed() && !mustReturn_) {
        return;
    }
    if (mayBeActivated) {
        return_.start(kPatience, this);
    } else {
        ShowAnew();
    }
}

void TopLevel::ShowAnew() {
    return_.stop();
    if (isVisible() && (!isExposed() || mustReturn_)) {
        setVisible(false);
        setVisible(true);
    }
    mustReturn_ = false;
}

}  // namespace platform::desktop

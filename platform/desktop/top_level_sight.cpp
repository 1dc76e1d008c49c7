// Whether anybody sees a window, and with how many pixels the screen shows it.
#include <QGuiApplication>
#include <cmath>
#include <utility>

#include "platform/desktop/top_level.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

double TopLevel::Factor() const {
    return shared_.scale.Factor() * devicePixelRatio();
}

QRect TopLevel::InPixels(QSize size) const {
    const double ratio = devicePixelRatio();
    return {0, 0, static_cast<int>(std::ceil(size.width() * ratio)),
            static_cast<int>(std::ceil(size.height() * ratio))};
}

QRect TopLevel::PictureBounds() const {
    return InPixels(
        {shared_.scale.ToDevice(picture_->Width()), shared_.scale.ToDevice(picture_->Height())});
}

// What the toolkit's own pixels reach over, which may be larger.
QRegion TopLevel::InToolkitPixels(const QRegion& region) const {
    const double ratio = devicePixelRatio();
    if (ratio == 1) {
        return region;
    }
    QRegion reached;
    for (const QRect& part : region) {
        const auto left = static_cast<int>(std::floor(part.left() / ratio));
        const auto top = static_cast<int>(std::floor(part.top() / ratio));
        const auto right = static_cast<int>(std::ceil((part.left() + part.width()) / ratio));
        const auto bottom = static_cast<int>(std::ceil((part.top() + part.height()) / ratio));
        reached += QRect(left, top, right - left, bottom - top);
    }
    return reached;
}

void TopLevel::RatioMayHaveChanged() {
    const double former = std::exchange(ratio_, devicePixelRatio());
    if (ratio_ != former) {
        stale_ = InPixels(size());
        shared_.onRatio();
        PaintStale();
    }
}

void TopLevel::FitSize() {
    const QSize wanted = Place().size();
    if (wanted != size()) {
        setMinimumSize(wanted);
        setMaximumSize(wanted);
        resize(wanted);
    }
}

void TopLevel::Rescaled() {
    FitSize();
    if (!shared_.onWayland) {
        MoveTo(Place().topLeft());
    } else if (Owner() != nullptr) {
        PlaceBesideOwner();
    }
    if (isVisible()) {
        ComeToScreen(Shown::kWhole);
    }
    stale_ = InPixels(size());
    PaintStale();
}

bool TopLevel::IsSeen() const {
    return !wasExposed_ || (isExposed() && !isCovered_ && !isElsewhere_);
}

bool TopLevel::CanBeSeen() const {
    return isExposed() && IsSeen() && !awaitsPicture_ && !minimised_ && picture_ != nullptr &&
           !picture_->IsEmpty();
}

// What there is to show may be old by then. It waits for what is new, but not long.
void TopLevel::SightChanged() {
    constexpr int kLongest = 100;  // milliseconds
    const bool isSeen = IsSeen();
    if (std::exchange(wasSeen_, isSeen) || !isSeen) {
        return;
    }
    awaitsPicture_ = true;
    late_.start(kLongest, this);
    stale_ = InPixels(size());
    shared_.events.Push(SeenAgain{handle_});
}

void TopLevel::PictureCame() {
    awaitsPicture_ = false;
    late_.stop();
}

// As one that has never been on the screen: its first picture is put together beforehand.
void TopLevel::ForgetSight() {
    PictureCame();
    look_.stop();
    wasExposed_ = isCovered_ = isElsewhere_ = false;
    wasSeen_ = true;
}

void TopLevel::Hear(const XNotice& notice) {
    // A window manager may say where a window is before that is true.
    constexpr int kSettled = 100;  // milliseconds
    if (notice.kind == XNotice::Kind::kDesktop) {
        if (isElsewhere_) {
            LookWhereItIs();
        } else if (isExposed() && !look_.isActive()) {
            look_.start(kSettled, this);
        }
    } else if (handle() != nullptr && notice.window == winId()) {
        isCovered_ = notice.kind == XNotice::Kind::kCovered;
        SightChanged();
    }
}

// Not every window manager unmaps a window itself for hiding it, which would tell.
void TopLevel::LookWhereItIs() {
    look_.stop();
    isElsewhere_ = isExposed() && !IsOnScreen(*this);
    SightChanged();
}

}  // namespace platform::desktop

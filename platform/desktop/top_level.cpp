#include "platform/desktop/top_level.h"

#include <QCloseEvent>
#include <QExposeEvent>
#include <QPainter>
#include <algorithm>
#include <thread>
#include <utility>

#include "platform/desktop/icon.h"
#include "platform/desktop/painting.h"
#include "platform/desktop/wayland.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

TopLevel::TopLevel(Handle handle, Shared& shared)
    : handle_(handle), shared_(shared), ratio_(devicePixelRatio()) {
    setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowMinimizeButtonHint |
             Qt::WindowSystemMenuHint);
    // The toolkit takes it in a moment later.
    connect(
        this, &QWindow::screenChanged, this, [this] { RatioMayHaveChanged(); },
        Qt::QueuedConnection);
}

TopLevel::~TopLevel() {
    MovePopupAside(true);
}

void TopLevel::SetVisibility(bool visible) {
    isHidden_ = !visible;
    if (!visible && keepsEntry_ && minimised_) {
        return;
    }
    if (visible) {
        if (!isVisible()) {
            ForgetSight();
        }
        ComeToScreen(Shown::kEnough);
        shownAt_ = Clock::now();
        comesMinimised_ = minimised_ && !isVisible();
        if (!shared_.onWayland) {
            SetMinimisedState();  // there nothing could undo it
        }
    }
    MovePopupAside(!visible);
    setVisible(visible);
}

// A hidden window that nothing on the desktop stands for could never be brought back.
void TopLevel::KeepEntry(bool keeps) {
    if (keepsEntry_ == keeps) {
        return;
    }
    keepsEntry_ = keeps;
    if (isHidden_ && minimised_) {
        SetMinimisedState();
        setVisible(keeps);
    }
}

void TopLevel::SetRect(const Rect& rect) {
    const Rect former = std::exchange(rect_, rect);
    FitSize();
    const bool moves = former.left != rect.left || former.top != rect.top;
    if (!shared_.onWayland) {
        if (moves || !handle()) {
            MoveTo(Place().topLeft());
        }
    } else if (Owner() != nullptr) {
        if (moves || !handle()) {
            PlaceBesideOwner();
        }
    } else if (moves && isVisible()) {
        BeDragged(former);
    }
}

void TopLevel::SetTopMost(bool topMost) {
    if (((flags() & Qt::WindowStaysOnTopHint) != 0) == topMost) {
        return;
    }
    // The flag of the window itself: anything else would hide it and make it anew.
    setFlag(Qt::WindowStaysOnTopHint, topMost);
}

void TopLevel::SetMinimised(bool minimised) {
    mustReturn_ = minimised_ && !minimised;
    minimised_ = minimised;
    wentAway_ = !isExposed();
    comesMinimised_ = comesMinimised_ && !minimised;
    if (isVisible()) {
        SetMinimisedState();
        PaintStale();
    }
}

void TopLevel::SetMinimisedState() {
    setWindowStates(minimised_ ? Qt::WindowMinimized : Qt::WindowNoState);
    Doubt();
}

// Not every desktop minimises, and none says that it does not.
void TopLevel::Doubt() {
    constexpr int kPatience = 500;  // milliseconds
    hasOffered_ = false;
    if (minimised_) {
        doubt_.start(kPatience, this);
    } else {
        doubt_.stop();
    }
}

void TopLevel::timerEvent(QTimerEvent* event) {
    if (event->timerId() == unheeded_.timerId()) {
        EndDoubtOfPlacing();
        return;
    }
    if (event->timerId() == behind_.timerId()) {
        EndDoubtOfActivation();
        return;
    }
    if (event->timerId() == look_.timerId()) {
        LookWhereItIs();
        return;
    }
    if (event->timerId() == late_.timerId()) {
        PictureCame();
        PaintStale();
        return;
    }
    if (event->timerId() == return_.timerId()) {
        mustReturn_ = mustReturn_ && !isActive();
        ShowAnew();
        return;
    }
    if (shared_.onWayland && !std::exchange(hasOffered_, true)) {
        OfferPicture();  // the next time will tell what has become of it
        return;
    }
    doubt_.stop();
    if (minimised_ && isVisible() && isExposed() && !IsSaidToBeMinimised(*this)) {
        setWindowStates(Qt::WindowNoState);
        Restored();
    }
}

void TopLevel::Restored() {
    minimised_ = false;
    doubt_.stop();
    PaintStale();
    shared_.events.Push(RestoredByDesktop{handle_});
}

// What this window did itself is no news.
void TopLevel::StateChanged() {
    if (shared_.onWayland) {
        return;  // the state there is what was asked for last
    }
    const bool minimised = (windowStates() & Qt::WindowMinimized) != 0;
    if (minimised && comesMinimised_) {
        return;  // restored since, which the desktop will say as well
    }
    if (isVisible() && minimised != minimised_) {
        minimised_ = minimised;
        Doubt();
        PaintStale();  // nothing exposes it if it never went
        if (minimised) {
            shared_.events.Push(MinimisedByDesktop{handle_});
        } else {
            shared_.events.Push(RestoredByDesktop{handle_});
        }
    }
}

void TopLevel::Activate() {
    if (!isVisible()) {
        return;
    }
    const bool mayBeActivated = HasActivationToken();
    raise();
    requestActivate();
    if (shared_.onWayland) {
        ComeBack(mayBeActivated);
    } else {
        DoubtActivation();
    }
}

// A popup goes past the window manager, which would give it the focus and a place in its lists.
void TopLevel::SetPopup(TopLevel* owner, PopupKind kind) {
    popup_ = kind;
    // A compositor gives a popup of the first type all input from the moment at which it is shown.
    const bool isMenu = shared_.onWayland && kind == PopupKind::kMenu;
    setFlags((isMenu ? Qt::Popup : Qt::ToolTip) | Qt::FramelessWindowHint |
             Qt::WindowDoesNotAcceptFocus);
    setTransientParent(owner);
    hasIcon_ = true;  // needs none
}

void TopLevel::GrabInput() {
    if (shared_.onWayland) {
        return;
    }
    // Somebody else may just be letting go: a window manager, of the click that opens the popup.
    constexpr int kAttempts = 20;
    constexpr std::chrono::milliseconds kBetweenLooks(5);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (setMouseGrabEnabled(true) && setKeyboardGrabEnabled(true)) {
            shared_.isGrabbed = true;
            if (shared_.isXOnWayland) {
                catcher_ = std::make_unique<PressCatcher>(*this);
            }
            return;
        }
        std::this_thread::sleep_for(kBetweenLooks);
    }
    // Without a grab nobody could close it by a click elsewhere.
    ReleaseInput();
    shared_.events.Push(InputLost{});
}

void TopLevel::ReleaseInput() {
    if (shared_.onWayland) {
        return;
    }
    shared_.isGrabbed = false;
    catcher_.reset();
    setKeyboardGrabEnabled(false);
    setMouseGrabEnabled(false);
}

void TopLevel::ShowPicture(const Surface& picture, std::span<const Rect> changed) {
    picture_ = &picture;
    PictureCame();
    if (direct_ != nullptr && stale_.isEmpty() && CanBeSeen() && PaintDirectly(changed)) {
        return;
    }
    for (const Rect& part : changed) {
        stale_ += ShownPart(part, Factor());
    }
    PaintStale();
}

void TopLevel::PaintStale() {
    if (CanBeSeen() && !stale_.isEmpty()) {
        PaintInStore(TakeStale());
    }
}

// Paints small changes only; false if these are too large for this way.
bool TopLevel::PaintDirectly(std::span<const Rect> changed) {
    const QRect bounds = PictureBounds();
    const auto areaOf = [](const QRect& part) { return part.width() * part.height(); };
    int area = 0;
    parts_.clear();
    for (const Rect& part : changed) {
        const QRect shown = ShownPart(part, Factor()) & bounds;
        if (!shown.isEmpty()) {
            parts_.push_back(shown);
            area += areaOf(shown);
        }
    }
    if (area > areaOf(bounds) / 2) {
        return false;
    }
    // The connection writes when its buffer is full. With the largest part as the last one that is
    // once, and each write wakes the server.
    std::sort(parts_.begin(), parts_.end(),
              [&](const QRect& a, const QRect& b) { return areaOf(a) < areaOf(b); });
    for (const QRect& part : parts_) {
        direct_->Put(ShownPixels(*picture_, part, Factor()), part.topLeft());
    }
    direct_->Send();
    return true;
}

// Answers what is to be painted; from now on it counts as painted.
QRegion TopLevel::TakeStale() {
    return std::exchange(stale_, {}) & PictureBounds() & InPixels(size());
}

// The toolkit's own way, which also tells the desktop that a change of size has been followed.
void TopLevel::PaintInStore(const QRegion& region) {
    if (store_ == nullptr) {
        store_ = std::make_unique<QBackingStore>(this);
    }
    if (store_->size() != size()) {
        store_->resize(size());
    }
    const double ratio = devicePixelRatio();
    const QRegion reached = InToolkitPixels(region);
    store_->beginPaint(reached);
    {
        QPainter painter(store_->paintDevice());
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.scale(1 / ratio, 1 / ratio);
        for (const QRect& part : region) {
            painter.drawImage(part.topLeft(), ShownView(*picture_, part, Factor()));
        }
    }
    store_->endPaint();
    store_->flush(reached);
    LetStoreGo();
}

// What is painted past it makes it old, and it is as large as the window.
void TopLevel::LetStoreGo() {
    if (direct_ != nullptr) {
        store_.reset();
    }
}

// A store that was kept lags behind what was painted past it, so all of it is painted anew.
void TopLevel::exposeEvent(QExposeEvent* /*event*/) {
    if (isExposed()) {
        if (!shared_.onWayland) {
            Doubt();  // it is back on the screen
        }
        comesMinimised_ = false;
        wasExposed_ = true;
        isElsewhere_ = false;
        stale_ = InPixels(size());
    }
    RatioMayHaveChanged();
    SightChanged();
    if (shared_.onWayland) {
        SeenOrNot();
    }
    if (!CanBeSeen()) {
        return;
    }
    PaintInStore(TakeStale());
    shared_.hasShownPicture = true;
    if (!hasIcon_) {
        hasIcon_ = true;  // the picture comes first
        setIcon(MakeIcon());
        direct_ = DirectPaint::For(*this);
        LetStoreGo();
        TellOfCover(*this);
    }
}

void TopLevel::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (popup_) {
        if (popup_ == PopupKind::kMenu) {
            shared_.events.Push(InputLost{});
        }
        return;
    }
    shared_.events.Push(CloseRequested{handle_});
}

}  // namespace platform::desktop

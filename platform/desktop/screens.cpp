#include "platform/desktop/screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <utility>

namespace platform::desktop {

namespace {

constexpr QSize kNoScreen(1024, 768);  // as if there were one of that size

QRegion Covered(std::span<const ScreenPlace> screens) {
    QRegion covered;
    for (const ScreenPlace& screen : screens) {
        covered += screen.whole;
    }
    return covered;
}

bool ShowsEnough(const QRect& window, std::span<const ScreenPlace> screens) {
    constexpr int kEnough = 24;  // pixels each way, to be seen and dragged by
    return std::any_of(screens.begin(), screens.end(), [&](const ScreenPlace& screen) {
        const QRect seen = screen.whole.intersected(window);
        return seen.width() >= std::min(kEnough, window.width()) &&
               seen.height() >= std::min(kEnough, window.height());
    });
}

// The way between two stretches of a line; 0 where they overlap.
std::int64_t Gap(int low, int high, int otherLow, int otherHigh) {
    return std::max(
        {std::int64_t{0}, std::int64_t{otherLow} - high, std::int64_t{low} - otherHigh});
}

std::int64_t Distance(const QRect& a, const QRect& b) {
    return Gap(a.left(), a.right(), b.left(), b.right()) +
           Gap(a.top(), a.bottom(), b.top(), b.bottom());
}

// Of two that are equally near, the one that shows more.
const ScreenPlace* Nearest(const QRect& window, std::span<const ScreenPlace> screens) {
    const auto rank = [&](const ScreenPlace& screen) {
        const QRect seen = screen.whole.intersected(window);
        return std::pair(Distance(window, screen.whole),
                         -std::int64_t{seen.width()} * std::int64_t{seen.height()});
    };
    const auto nearest =
        std::min_element(screens.begin(), screens.end(),
                         [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
    return nearest == screens.end() ? nullptr : &*nearest;
}

}  // namespace

std::vector<ScreenPlace> ScreensNow() {
    std::vector<ScreenPlace> places;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        places.push_back({screen->geometry(), screen->availableGeometry()});
    }
    return places;
}

QRect AroundAvailable(std::span<const ScreenPlace> screens) {
    QRect around;
    for (const ScreenPlace& screen : screens) {
        around |= screen.available;
    }
    return around;
}

std::optional<QPoint> Rescued(const QRect& window, Shown wanted,
                              std::span<const ScreenPlace> screens) {
    const bool isWell = wanted == Shown::kEnough
                            ? ShowsEnough(window, screens)
                            : QRegion(window).subtracted(Covered(screens)).isEmpty();
    const ScreenPlace* nearest = Nearest(window, screens);
    if (isWell || nearest == nullptr) {
        return std::nullopt;
    }
    const QRect& area = nearest->available;
    const int right = std::max(area.left(), area.right() + 1 - window.width());
    const int bottom = std::max(area.top(), area.bottom() + 1 - window.height());
    const QPoint place(std::clamp(window.left(), area.left(), right),
                       std::clamp(window.top(), area.top(), bottom));
    return place == window.topLeft() ? std::nullopt : std::optional(place);
}

Screens::Screens(const Magnification& scale, std::function<void()> onWorkArea,
                 std::function<void(const QRegion& lost)> onLost)
    : scale_(scale),
      onWorkArea_(std::move(onWorkArea)),
      onLost_(std::move(onLost)),
      covered_(Covered(ScreensNow())) {
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &context_,
                     [this] { Changed(); });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &context_, [this] { Changed(); });
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context_, [this](QScreen* screen) {
        Follow(screen);
        Changed();
    });
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (QScreen* screen : screens) {
        Follow(screen);
    }
}

void Screens::Follow(QScreen* screen) {
    const auto changed = [this] { Changed(); };
    QObject::connect(screen, &QScreen::geometryChanged, &context_, changed);
    QObject::connect(screen, &QScreen::availableGeometryChanged, &context_, changed);
}

// One change of the desktop is reported in several steps, and between them screens overlap or are
// missing.
void Screens::Changed() {
    if (!std::exchange(settling_, true)) {
        QMetaObject::invokeMethod(
            &context_, [this] { Settle(); }, Qt::QueuedConnection);
    }
}

void Screens::Settle() {
    settling_ = false;
    const QRegion former = std::exchange(covered_, Covered(ScreensNow()));
    onWorkArea_();
    if (const QRegion lost = former.subtracted(covered_); !lost.isEmpty()) {
        onLost_(lost);
    }
}

Size Screens::GetSize() const {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize size = screen != nullptr ? screen->geometry().size() : kNoScreen;
    return {scale_.ToComponent(size.width()), scale_.ToComponent(size.height())};
}

Rect Screens::WorkArea() const {
    const QRect around = AroundAvailable(ScreensNow());
    return Within(around.isEmpty() ? QRect({0, 0}, kNoScreen) : around);
}

Rect Screens::WorkAreaAt(Point ptScreen) const {
    const QPoint point(scale_.ToDevice(ptScreen.x), scale_.ToDevice(ptScreen.y));
    const QScreen* screen = QGuiApplication::screenAt(point);
    return screen != nullptr ? Within(screen->availableGeometry()) : WorkArea();
}

Rect Screens::Within(const QRect& area) const {
    const double factor = scale_.Factor();
    return {static_cast<Long>(std::ceil(area.left() / factor)),
            static_cast<Long>(std::ceil(area.top() / factor)),
            scale_.ToComponent(area.left() + area.width()),
            scale_.ToComponent(area.top() + area.height())};
}

}  // namespace platform::desktop

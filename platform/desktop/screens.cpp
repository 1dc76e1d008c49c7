#include "platform/desktop/screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/desktop/desktop_driver.h"

namespace platform::desktop {

double ScaleOfScreen() {
    constexpr double kPlain = 96;
    constexpr double kSteps = 4;
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return kSmallestScale;
    }
    const double factor = std::round(screen->logicalDotsPerInch() / kPlain * kSteps) / kSteps;
    return std::clamp(factor, kSmallestScale, kLargestScale);
}

Screens::Screens(const Magnification& scale, std::function<void()> onWorkArea,
                 std::function<void()> onLost)
    : scale_(scale), onWorkArea_(std::move(onWorkArea)) {
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &context_,
                     [this](QScreen* screen) {
                         Follow(screen);
                         onWorkArea_();
                     });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &context_,
                     [lost = std::move(onLost)](QScreen*) { lost(); });
    Follow(QGuiApplication::primaryScreen());
}

void Screens::Follow(QScreen* screen) {
    if (screen == nullptr) {
        return;
    }
    const auto changed = [this, screen] {
        if (screen == QGuiApplication::primaryScreen()) {
            onWorkArea_();
        }
    };
    QObject::disconnect(screen, nullptr, &context_, nullptr);
    QObject::connect(screen, &QScreen::availableGeometryChanged, &context_, changed);
}

Size Screens::GetSize() const {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QSize size = screen != nullptr ? screen->geometry().size() : QSize(1024, 768);
    return {scale_.ToComponent(size.width()), scale_.ToComponent(size.height())};
}

Rect Screens::WorkArea() const {
    return AreaOf(QGuiApplication::primaryScreen());
}

Rect Screens::WorkAreaAt(Point ptScreen) const {
    const QPoint point(scale_.ToDevice(ptScreen.x), scale_.ToDevice(ptScreen.y));
    const QScreen* screen = QGuiApplication::screenAt(point);
    return screen != nullptr ? AreaOf(screen) : WorkArea();
}

Rect Screens::AreaOf(const QScreen* screen) const {
    if (screen == nullptr) {
        return {0, 0, GetSize().width, GetSize().height};
    }
    const QRect area = screen->availableGeometry();
    const double factor = scale_.Factor();
    // Pixels that lie in it as a whole.
    return {static_cast<Long>(std::ceil(area.left() / factor)),
            static_cast<Long>(std::ceil(area.top() / factor)),
            scale_.ToComponent(area.left() + area.width()),
            scale_.ToComponent(area.top() + area.height())};
}

std::optional<QPoint> Screens::Rescued(const QRect& window) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    const QScreen* nearest = nullptr;
    int least = 0;
    for (const QScreen* screen : screens) {
        const QRect place = screen->geometry();
        const QRect seen = place.intersected(window);
        constexpr int kEnough = 24;  // pixels each way, to be seen and dragged by
        if (seen.width() >= std::min(kEnough, window.width()) &&
            seen.height() >= std::min(kEnough, window.height())) {
            return std::nullopt;
        }
        const int distance = (place.center() - window.center()).manhattanLength();
        if (nearest == nullptr || distance < least) {
            nearest = screen;
            least = distance;
        }
    }
    if (nearest == nullptr) {
        return std::nullopt;
    }
    const QRect area = nearest->availableGeometry();
    const int right = std::max(area.left(), area.right() + 1 - window.width());
    const int bottom = std::max(area.top(), area.bottom() + 1 - window.height());
    return QPoint(std::clamp(window.left(), area.left(), right),
                  std::clamp(window.top(), area.top(), bottom));
}

}  // namespace platform::desktop

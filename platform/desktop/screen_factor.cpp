#include "platform/desktop/screen_factor.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

#include "platform/desktop/desktop_driver.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

// Averaging takes from letters the edges that hinting gave them. As fine as the screen they are
// shown as they are; twice or four times as fine, each pixel shows whole ones; else it takes more.
Long DensityFor(double factor) {
    constexpr double kFinest = 5;
    constexpr Long kEnough = 4;
    if (factor <= 1) {
        return 1;
    }
    for (const double density : {factor, 2 * factor, 4 * factor}) {
        if (density == std::floor(density) && density <= kFinest) {
            return static_cast<Long>(density);
        }
    }
    return kEnough;
}

double FactorFor(double dotsPerInch) {
    constexpr double kPlain = 96;
    constexpr double kSteps = 4;
    const double factor = std::round(dotsPerInch / kPlain * kSteps) / kSteps;
    return std::clamp(factor, kSmallestScale, kLargestScale);
}

std::optional<double> DotsPerInchIn(std::string_view resources) {
    constexpr std::string_view kName = "Xft.dpi:";
    while (!resources.empty()) {
        const std::size_t end = std::min(resources.find('\n'), resources.size());
        std::string_view line = resources.substr(0, end);
        resources.remove_prefix(std::min(end + 1, resources.size()));
        if (!line.starts_with(kName)) {
            continue;
        }
        line.remove_prefix(std::min(line.find_first_not_of(" \t", kName.size()), line.size()));
        double value = 0;
        std::from_chars(line.data(), line.data() + line.size(), value);
        return value > 0 && std::isfinite(value) ? std::optional(value) : std::nullopt;
    }
    return std::nullopt;
}

namespace {

double DotsPerInchOfScreen() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->logicalDotsPerInch() : 0;
}

}  // namespace

// The toolkit reads the resources once, and follows another way in which desktops publish the same.
// What was said last counts.
ScreenFactor::ScreenFactor(std::function<void()> onChange)
    : onChange_(std::move(onChange)),
      factor_(FactorFor(DotsPerInchOfScreen())),
      resources_([this](const XNotice& notice) {
          if (notice.kind == XNotice::Kind::kResources) {
              Changed(DotsPerInchIn(ResourcesOfServer()).value_or(DotsPerInchOfScreen()));
          }
      }) {
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context_,
                     [this](QScreen* screen) { Follow(screen); });
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (QScreen* screen : screens) {
        Follow(screen);
    }
}

void ScreenFactor::Follow(QScreen* screen) {
    QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, &context_, [this, screen] {
        if (screen == QGuiApplication::primaryScreen()) {
            Changed(DotsPerInchOfScreen());
        }
    });
}

void ScreenFactor::Changed(double dotsPerInch) {
    const double factor = FactorFor(dotsPerInch);
    if (std::exchange(factor_, factor) != factor) {
        onChange_();
    }
}

}  // namespace platform::desktop

// The screens: their sizes in the component's pixels, and the way back for windows that lie beyond
// them.
#pragma once

#include <QObject>
#include <QRect>
#include <QRegion>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "platform/desktop/magnification.h"

class QScreen;

namespace platform::desktop {

/// One screen, in device pixels: all of it, and what panels and docks leave of it.
struct ScreenPlace {
    QRect whole;
    QRect available;
};

/// Those that there are now.
std::vector<ScreenPlace> ScreensNow();

/// The smallest rectangle around what is available of all; empty if there is none.
QRect AroundAvailable(std::span<const ScreenPlace> screens);

/// How much of a window the screens must show: enough to catch it by, or all of it.
enum class Shown { kEnough, kWhole };

/// The place for a window of which the screens show less: where it is whole, on the nearest one.
/// Nothing if it is well where it is, or there is no better place. Device pixels.
std::optional<QPoint> Rescued(const QRect& window, Shown wanted,
                              std::span<const ScreenPlace> screens);

class Screens {
  public:
    /// `onWorkArea` when the work area may have changed; `onLost` when something is no longer part
    /// of any screen, in device pixels. Both are called from the event loop, when a change that
    /// comes in several steps is complete.
    Screens(const Magnification& scale, std::function<void()> onWorkArea,
            std::function<void(const QRegion& lost)> onLost);

    /// The size of the first screen.
    Size GetSize() const;
    /// The smallest rectangle around the work areas of all screens.
    Rect WorkArea() const;
    /// The work area of the screen that a point is on, that of all if it is on none.
    Rect WorkAreaAt(Point ptScreen) const;

  private:
    void Follow(QScreen* screen);
    void Changed();
    void Settle();
    /// The component's pixels that lie in an area as a whole.
    Rect Within(const QRect& area) const;

    const Magnification& scale_;
    std::function<void()> onWorkArea_;
    std::function<void(const QRegion&)> onLost_;
    QRegion covered_;  ///< by any screen, in device pixels
    bool settling_ = false;
    QObject context_;  ///< whatever is connected ends with it
};

}  // namespace platform::desktop

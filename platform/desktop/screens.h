// The screens: their sizes in the component's pixels, and the way back for windows that lie beyond
// them.
#pragma once

#include <QObject>
#include <QRect>
#include <functional>
#include <optional>

#include "platform/desktop/magnification.h"

class QScreen;

namespace platform::desktop {

/// Device pixels for each of the component's, by what the screen says of itself, in quarters.
double ScaleOfScreen();

class Screens {
  public:
    /// `onWorkArea` when the work area may have changed, `onLost` when a screen has gone.
    Screens(const Magnification& scale, std::function<void()> onWorkArea,
            std::function<void()> onLost);

    Size GetSize() const;
    Rect WorkArea() const;
    /// Of the screen that a point is on, of the first one if it is on none.
    Rect WorkAreaAt(Point ptScreen) const;

    /// The place for a window that shows too little of itself on any screen to be caught; nothing
    /// if it is well where it is. Device pixels.
    static std::optional<QPoint> Rescued(const QRect& window);

  private:
    void Follow(QScreen* screen);
    Rect AreaOf(const QScreen* screen) const;

    const Magnification& scale_;
    std::function<void()> onWorkArea_;
    QObject context_;  ///< whatever is connected ends with it
};

}  // namespace platform::desktop

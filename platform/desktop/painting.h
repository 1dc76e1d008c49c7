// Parts of a finished picture as a window shows them: magnified.
#pragma once

#include <QImage>
#include <QRect>

#include "platform/desktop/magnification.h"
#include "platform/drawing/surface.h"

namespace platform::desktop {

/// Where a part of a picture shows in the window, in device pixels. Smoothly magnified pixels reach
/// into their neighbours.
QRect ShownPart(const Rect& part, const Magnification& scale);

/// What shows in `shown` of the window, in Format_RGB32, rows without a gap.
QImage ShownPixels(const Surface& picture, const QRect& shown, const Magnification& scale);

}  // namespace platform::desktop

// Puts parts of a finished picture into the memory that a window is shown from, magnified.
#pragma once

#include <QImage>
#include <QRect>

#include "platform/desktop/magnification.h"
#include "platform/surface.h"

class QPaintDevice;

namespace platform::desktop {

/// Where a part of a picture shows in the window, in device pixels. Smoothly magnified pixels reach
/// into their neighbours.
QRect ShownPart(const Rect& part, const Magnification& scale);

/// Paints what of the picture shows in `shown`.
void PaintPicture(QPaintDevice& device, const Surface& picture, const QRect& shown,
                  const Magnification& scale);

}  // namespace platform::desktop

// Parts of a finished picture as a window shows them: at the factor of its screen, whatever density
// the picture has.
#pragma once

#include <QImage>
#include <QRect>

#include "platform/drawing/surface.h"

namespace platform::desktop {

/// The pixels of the window that anything of a part of its picture shows in. `factor`: so many of
/// the window's for each of the picture's coordinates.
QRect ShownPart(const Rect& part, double factor);

/// What shows in `shown` of the window, in Format_RGB32, rows without a gap: each pixel is the
/// average of the area that it covers, the same whatever part it is painted with. Beyond the
/// picture its last pixels go on.
QImage ShownPixels(const Surface& picture, const QRect& shown, double factor);

/// The same, good while the picture lives and stays: where that is as fine as the window it is not
/// copied, and rows may have gaps.
QImage ShownView(const Surface& picture, const QRect& shown, double factor);

}  // namespace platform::desktop

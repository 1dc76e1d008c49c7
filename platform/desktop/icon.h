// The program's icon, drawn here: a play mark on the skin's blue.
#pragma once

#include <QIcon>
#include <QImage>

namespace platform::desktop {

/// A square of that many pixels; premultiplied alpha.
QImage DrawIcon(int size);
QIcon MakeIcon();

}  // namespace platform::desktop

// The program's icon, drawn here: a play mark on the skin's blue.
#pragma once

#include <QIcon>
#include <QImage>
#include <array>

namespace platform::desktop {

inline constexpr std::array kIconSizes{16, 32, 48, 128};

/// A square of that many pixels; premultiplied alpha. May be called on any thread.
QImage DrawIcon(int size);

/// On the thread of the windows alone.
QIcon MakeIcon();

}  // namespace platform::desktop

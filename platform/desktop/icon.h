// The program's icon, drawn here: a play mark on the skin's blue.
#pragma once

#include <QIcon>

namespace platform::desktop {

QIcon MakeIcon();

}  // namespace platform::desktop

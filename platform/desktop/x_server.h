// What is asked of the X server itself, because the toolkit does not tell. Each question is a way
// there and back. Where there is no X server nothing is known.
#pragma once

#include <QPoint>
#include <optional>

#include "platform/base/types.h"

class QWindow;

namespace platform::desktop {

struct ServerPointer {
    QPoint place;    ///< device pixels of the screen
    Long held = 0;   ///< buttons: kLeftButton ...
    Long shift = 0;  ///< kShiftBit ...
};

/// Where the pointer is and what is held, whoever has it.
std::optional<ServerPointer> AskForPointer();

/// Whether a window manager says of a window that it is minimised.
bool IsSaidToBeMinimised(const QWindow& window);

}  // namespace platform::desktop

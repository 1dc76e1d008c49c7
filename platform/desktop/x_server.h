// What is asked of the X server itself, because the toolkit does not tell. Each question is a way
// there and back. Where there is no X server nothing is known.
#pragma once

#include <QPoint>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/base/types.h"

class QWindow;
struct xcb_connection_t;

namespace platform::desktop {

/// The toolkit's own; null without an X server.
xcb_connection_t* ToolkitConnection();

/// Whether the X server shows its windows on a Wayland compositor.
bool IsXOnWayland();

struct ServerPointer {
    QPoint place;    ///< device pixels of the screen
    Long held = 0;   ///< buttons: kLeftButton ...
    Long shift = 0;  ///< kShiftBit ...
};

/// Where the pointer is and what is held, whoever has it.
std::optional<ServerPointer> AskForPointer();

/// Where a window is.
std::optional<QPoint> AskForPlace(const QWindow& window);

/// The text of its resources, as far as anybody needs it.
std::string ResourcesOfServer();

/// Has the server tell (XWatch) when the window gets covered, and when no longer.
void TellOfCover(const QWindow& window);
/// Whether it lies on the screen, covered or not, and no window manager says that it is hidden.
bool IsOnScreen(const QWindow& window);

/// Moves a window that no window manager minds. The toolkit does not know of it.
void MoveOnServer(std::uint32_t window, QPoint place);
/// Moves it to where nothing shows it. On Wayland what is seen of such a window may outlive it by a
/// second, and takes presses meanwhile.
void TakeOffScreen(std::uint32_t window);

/// Whether keys go to a window, but for a popup that has them all.
bool HasKeyboard(const QWindow& window);

/// Whether an event of the server's says that a window has lost the keyboard to somebody else, and
/// not only while one of ours has it for itself.
bool TellsOfLostKeyboard(const void* event);

/// Whether a window manager says of a window that it is minimised.
bool IsSaidToBeMinimised(const QWindow& window);

/// Whether a window manager shows of a window that it wants to be looked at.
bool IsSaidToWantAttention(const QWindow& window);

}  // namespace platform::desktop

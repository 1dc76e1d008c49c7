// What reaches the list: its own window's messages.
#include "controls/list/jlist.h"

namespace sarnel {

using namespace platform;

Long JList::HandleMessage(const Message& message) {
    const bool isKey = message.id == WM_KEYDOWN || message.id == WM_KEYUP || message.id == WM_CHAR;
    if (!isKey) {
        return Widget::HandleMessage(message);
    }
    if (!Enabled()) {
        return 0;
    }
    if (message.id == WM_CHAR) {
        Raised("KeyPress", {message.wParam});
        return 0;
    }
    const bool down = message.id == WM_KEYDOWN;
    if (down) {
        KeyDown(message.wParam, message.lParam);
    } else {
        mouse_.KeyModifiers(message.lParam);
    }
    Raised(down ? "KeyDown" : "KeyUp", {message.wParam, message.lParam});
    if (const auto handler = down ? onKeyDown : onKeyUp) {
        handler(message.wParam, message.lParam);
    }
    return 0;
}

}  // namespace sarnel

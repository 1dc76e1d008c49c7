// What the list does with keys and with what its owner hands on. Keys reach the owner; moving the
// selection by keys, mouse and wheel is not built yet.
#include "controls/list/jlist.h"

namespace sarnel {

Long JList::HandleMessage(const platform::Message& message) {
    if (!Enabled()) {
        return 0;
    }
    if (message.id == platform::WM_KEYDOWN) {
        Raised("KeyDown", {message.wParam, message.lParam});
        if (onKeyDown) {
            onKeyDown(message.wParam, message.lParam);
        }
    } else if (message.id == platform::WM_KEYUP) {
        Raised("KeyUp", {message.wParam, message.lParam});
        if (onKeyUp) {
            onKeyUp(message.wParam, message.lParam);
        }
    }
    return 0;
}

void JList::WM_MOUSEMOVE_Process(Handle /*window*/) {
    if (!mouseInside_) {
        mouseInside_ = true;
        Raised("MouseEnter");
    }
}

void JList::WM_MOUSELEAVE_Process() {
    mouseInside_ = false;
    Raised("MouseLeave");
}

void JList::WM_MOUSEWHEEL_Process(Long /*wordParameter*/) {}  // open: scrolling by the wheel

}  // namespace sarnel

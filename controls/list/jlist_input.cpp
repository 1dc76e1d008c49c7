// What reaches the list: its own window's messages, and those that its owner hands on. The mouse
// and the wheel are not built yet.
#include "controls/list/jlist.h"

#include "core/seams.h"

namespace sarnel {

Long JList::HandleMessage(const platform::Message& message) {
    if (!Enabled()) {
        return 0;
    }
    if (message.id == platform::WM_KEYDOWN) {
        KeyDown(message.wParam, message.lParam);
        Raised("KeyDown", {message.wParam, message.lParam});
        if (onKeyDown) {
            onKeyDown(message.wParam, message.lParam);
        }
    } else if (message.id == platform::WM_KEYUP) {
        UpdateModifiers(message.lParam);
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

void JList::WM_MOUSEWHEEL_Process(Long /*wordParameter*/) {
    seams::ScrollListByWheel();
}

}  // namespace sarnel

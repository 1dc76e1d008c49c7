#include "platform/widget.h"

#include <utility>

namespace platform {

Widget::Widget(WindowSystem& windows, Handle parent, const Rect& rect) : windows_(windows) {
    window_ = windows.CreateWindow(
        parent, rect, [this](const Message& message) { return HandleMessage(message); });
    if (parent != 0) {
        windows.ShowWindow(window_, SW_SHOW);
    }
}

Widget::~Widget() {
    // The window may outlive the widget inside a dispatch: what still arrives then goes nowhere.
    windows_.SetWindowProc(window_, {});
    windows_.DestroyWindow(window_);
}

void Widget::Move(Long left, Long top, Long width, Long height) {
    windows_.SetWindowPos(window_, HWND_TOP, left, top, width, height, SWP_NOZORDER);
}

void Widget::Visible(bool value) {
    windows_.ShowWindow(window_, value ? SW_SHOW : SW_HIDE);
}

Long Widget::HandleMessage(const Message& /*message*/) {
    return 0;
}

void Widget::AcceptDrops(WindowSystem::DropTarget target) {
    windows_.SetDropTarget(window_, std::move(target));
}

void Widget::Raised(const char* event, std::initializer_list<Long> arguments) const {
    if (!observer_) {
        return;
    }
    std::string text;
    for (const Long argument : arguments) {
        text += (text.empty() ? "" : " ") + std::to_string(argument);
    }
    observer_(event, text);
}

}  // namespace platform

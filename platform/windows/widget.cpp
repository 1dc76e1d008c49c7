#include "platform/windows/widget.h"

#include <array>
#include <cstdio>
#include <utility>

#include "platform/base/keys.h"
#include "platform/drawing/text_lines.h"

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
    windows_.SetFace(window_, nullptr);
    windows_.SetWindowProc(window_, {});
    windows_.DestroyWindow(window_);
}

void Widget::Move(Long left, Long top, Long width, Long height) {
    windows_.SetWindowPos(window_, HWND_TOP, left, top, width, height, SWP_NOZORDER);
}

void Widget::Visible(bool value) {
    windows_.ShowWindow(window_, value ? SW_SHOW : SW_HIDE);
}

void Widget::BackColor(Colour value) {
    backColor_ = value;
    LooksChanged();
}

void Widget::ForeColor(Colour value) {
    foreColor_ = value;
    LooksChanged();
}

void Widget::SetFont(const Font& font) {
    font_ = font;
    LooksChanged();
}

void Widget::FontName(std::u16string value) {
    font_.name = std::move(value);
    LooksChanged();
}

void Widget::FontSize(double value) {
    font_.size = value;
    LooksChanged();
}

void Widget::FontBold(bool value) {
    font_.bold = value;
    LooksChanged();
}

void Widget::FontItalic(bool value) {
    font_.italic = value;
    LooksChanged();
}

Long Widget::TextHeight(std::u16string_view text) const {
    const std::size_t lines = BreakLines(windows_.GetDriver(), font_, text, 0).size();
    return windows_.MeasureText(font_, u"^j").height * static_cast<Long>(lines);
}

void Widget::Text(std::u16string_view value) {
    windows_.SetWindowText(window_, value);
    LooksChanged();
}

Surface& Widget::Canvas() {
    const Size size{Width(), Height()};
    if (!(face_.GetSize() == size)) {
        face_.Resize(size, backColor_);
        windows_.SetFace(window_, &face_);
    }
    return face_;
}

void Widget::ShowFace() {
    ShowFace({0, 0, Width(), Height()});
}

void Widget::ShowFace(const Rect& part) {
    windows_.InvalidateRect(window_, part);
}

Long Widget::HandleMessage(const Message& message) {
    if (HandleMouse(message)) {
        return 0;
    }
    switch (message.id) {
        case WM_MOUSEWHEEL:
            // Who has no use for it leaves it to what it lies on.
            return windows_.SendMessage(windows_.GetParent(window_), WM_MOUSEWHEEL, message.wParam,
                                        message.lParam);
        case WM_SIZE:
            Resized();
            return 0;
        case WM_MOVE:
            Relocated();
            return 0;
        case WM_DISPLAYCHANGE:
            if (!face_.IsEmpty()) {
                face_ = face_.AtDensity(message.wParam);
                Redraw();
            }
            return 0;
        case WM_SHOWWINDOW:
            if (message.wParam != 0) {
                Shown();
            }
            return 0;
        default:
            return 0;
    }
}

namespace {

enum class MouseKind { kMove, kDown, kUp, kDouble };
struct MouseMessage {
    Long id;
    MouseKind kind;
    Long button;
};
constexpr std::array<MouseMessage, 10> kMouseMessages{{
    {WM_MOUSEMOVE, MouseKind::kMove, 0},
    {WM_LBUTTONDOWN, MouseKind::kDown, kLeftButton},
    {WM_LBUTTONUP, MouseKind::kUp, kLeftButton},
    {WM_LBUTTONDBLCLK, MouseKind::kDouble, kLeftButton},
    {WM_RBUTTONDOWN, MouseKind::kDown, kRightButton},
    {WM_RBUTTONUP, MouseKind::kUp, kRightButton},
    {WM_RBUTTONDBLCLK, MouseKind::kDouble, kRightButton},
    {WM_MBUTTONDOWN, MouseKind::kDown, kMiddleButton},
    {WM_MBUTTONUP, MouseKind::kUp, kMiddleButton},
    {WM_MBUTTONDBLCLK, MouseKind::kDouble, kMiddleButton},
}};

Long HeldButtons(Long wParam) {
    return ((wParam & MK_LBUTTON) != 0 ? kLeftButton : 0) |
           ((wParam & MK_RBUTTON) != 0 ? kRightButton : 0) |
           ((wParam & MK_MBUTTON) != 0 ? kMiddleButton : 0);
}

Long ShiftState(Long wParam) {
    return ((wParam & MK_SHIFT) != 0 ? kShiftBit : 0) |
           ((wParam & MK_CONTROL) != 0 ? kCtrlBit : 0) | ((wParam & MK_ALT) != 0 ? kAltBit : 0);
}

}  // namespace

bool Widget::HandleMouse(const Message& message) {
    for (const MouseMessage& known : kMouseMessages) {
        if (known.id != message.id) {
            continue;
        }
        const Point at = PointOf(message.lParam);
        const MouseEvent event{
            known.kind == MouseKind::kMove ? HeldButtons(message.wParam) : known.button,
            ShiftState(message.wParam), static_cast<float>(at.x), static_cast<float>(at.y)};
        switch (known.kind) {
            case MouseKind::kMove:
                MouseMove(event);
                break;
            case MouseKind::kDown:
                MouseDown(event);
                break;
            case MouseKind::kUp:
                MouseUp(event);
                break;
            case MouseKind::kDouble:
                DoubleClick(event);
                break;
        }
        return true;
    }
    return false;
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
        text += text.empty() ? "" : " ";
        text += std::to_string(argument);
    }
    observer_(event, text);
}

// Handlers are copied before the call: what they do may replace them.
void Widget::RaiseClick() {
    Raised("Click");
    if (const auto handler = onClick) {
        handler();
    }
}

void Widget::RaiseDblClick() {
    Raised("DblClick");
    if (const auto handler = onDblClick) {
        handler();
    }
}

void Widget::RaiseMouse(const char* name, const MouseHandler& handler, const MouseEvent& event) {
    if (observer_) {
        std::array<char, 80> text{};
        // %g: whole numbers, as pixels are, without a point.
        std::snprintf(text.data(), text.size(), "%d %d %g %g", static_cast<int>(event.Button),
                      static_cast<int>(event.Shift), static_cast<double>(event.X),
                      static_cast<double>(event.Y));
        observer_(name, text.data());
    }
    if (const auto copy = handler) {
        copy(event);
    }
}

void Widget::RaiseMouseDown(const MouseEvent& event) {
    pressed_ = event.Button;
    RaiseMouse("MouseDown", onMouseDown, event);
}

void Widget::RaiseMouseMove(const MouseEvent& event) {
    RaiseMouse("MouseMove", onMouseMove, event);
}

void Widget::RaiseMouseUp(const MouseEvent& event) {
    RaiseMouse("MouseUp", onMouseUp, event);
}

void Widget::RaiseMouseUpAndClick(const MouseEvent& event) {
    const bool clicks = EndsClick(event);
    RaiseMouseUp(event);
    if (clicks) {
        RaiseClick();
    }
}

bool Widget::EndsClick(const MouseEvent& release) {
    if (pressed_ != release.Button) {
        return false;
    }
    pressed_ = 0;
    const Rect bounds{0, 0, Width(), Height()};
    return bounds.Contains({static_cast<Long>(release.X), static_cast<Long>(release.Y)});
}

}  // namespace platform

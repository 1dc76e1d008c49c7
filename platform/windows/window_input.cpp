// The part of the window system that turns a driver's events into messages: the pointer with its
// capture, double clicks and leaving, the wheel, keys, and what a window manager does.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "platform/base/keys.h"
#include "platform/windows/modal_input.h"
#include "platform/windows/window_system.h"
#include "platform/windows/window_system_detail.h"

namespace platform {

namespace {

struct ButtonMessages {
    Long button;  // as a driver reports it
    Long held;    // MK_...
    Long down;
    Long up;
    Long doubleClick;
};
constexpr std::array<ButtonMessages, 3> kButtons{{
    {kLeftButton, MK_LBUTTON, WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK},
    {kRightButton, MK_RBUTTON, WM_RBUTTONDOWN, WM_RBUTTONUP, WM_RBUTTONDBLCLK},
    {kMiddleButton, MK_MBUTTON, WM_MBUTTONDOWN, WM_MBUTTONUP, WM_MBUTTONDBLCLK},
}};

Long HeldModifiers(Long modifiers) {
    return ((modifiers & kShiftBit) != 0 ? MK_SHIFT : 0) |
           ((modifiers & kCtrlBit) != 0 ? MK_CONTROL : 0) |
           ((modifiers & kAltBit) != 0 ? MK_ALT : 0);
}

}  // namespace

const WindowSystem::Window* WindowSystem::ChildAt(const Window& window, Point point,
                                                  bool windowless) const {
    for (auto it = window.children.rbegin(); it != window.children.rend(); ++it) {
        const Window* child = Find(*it);
        const Point inside{point.x - child->rect.left, point.y - child->rect.top};
        if (child->visible && child->enabled && (windowless || !child->windowless) &&
            child->rect.Contains(point) && (!child->mask || child->mask->Contains(inside))) {
            return child;
        }
    }
    return nullptr;
}

Handle WindowSystem::HitTest(Point ptScreen, bool windowless) const {
    const auto top = std::find_if(topLevels_.rbegin(), topLevels_.rend(), [&](Handle handle) {
        const Window* window = Find(handle);
        return window->visible && !window->iconic && window->rect.Contains(ptScreen);
    });
    if (top == topLevels_.rend()) {
        return 0;
    }
    Handle hit = 0;
    Point point = ptScreen;
    for (const Window* window = Find(*top); window != nullptr;) {
        hit = window->handle;
        point = {point.x - window->rect.left, point.y - window->rect.top};
        window = ChildAt(*window, point, windowless);
    }
    return hit;
}

Handle WindowSystem::WindowFromPoint(Point ptScreen) const {
    return HitTest(ptScreen, false);
}

void WindowSystem::TrackMouseLeave(Handle window) {
    tracked_ = IsWindow(window) ? window : 0;
}

// Who goes from a window on to a label in it has not left the window.
void WindowSystem::LeaveUnlessAt(Point ptScreen) {
    if (tracked_ != 0 && tracked_ != HitTest(ptScreen, true) &&
        tracked_ != HitTest(ptScreen, false)) {
        Leave();
    }
}

void WindowSystem::Leave() {
    SendMessage(std::exchange(tracked_, 0), WM_MOUSELEAVE, 0, 0);
}

void WindowSystem::SendMouse(Handle window, Long message, Point ptScreen) {
    const Rect rect = GetWindowRect(window);
    const Point ptClient{ptScreen.x - rect.left, ptScreen.y - rect.top};
    SendMessage(window, message, buttons_ | HeldModifiers(modifiers_), WordOf(ptClient));
}

void WindowSystem::On(const PointerMoved& event) {
    modifiers_ = event.shift;
    if (ModalInput* const taker = modalInput_) {
        Leave();
        taker->PointerMoved(event.ptScreen);
        return;
    }
    if (capture_ != 0) {
        SendMouse(capture_, WM_MOUSEMOVE, event.ptScreen);
        return;
    }
    LeaveUnlessAt(event.ptScreen);
    SendMouse(HitTest(event.ptScreen, true), WM_MOUSEMOVE, event.ptScreen);
}

void WindowSystem::On(const PointerLeft& /*event*/) {
    if (tracked_ != capture_) {
        Leave();
    }
}

bool WindowSystem::IsDoubleClick(const ButtonChanged& press, Handle target) {
    constexpr Long kFarthest = 2;  // pixels between the two presses
    const bool follows = lastPress_.window == target && lastPress_.button == press.button &&
                         Now() - lastPress_.when <= driver_.DoubleClickTime() &&
                         std::abs(press.ptScreen.x - lastPress_.ptScreen.x) <= kFarthest &&
                         std::abs(press.ptScreen.y - lastPress_.ptScreen.y) <= kFarthest;
    // A third press begins anew.
    lastPress_ = follows ? Press{} : Press{target, press.button, press.ptScreen, Now()};
    return follows;
}

// Tells who takes the input of a button; the answer: whether the windows must not hear of it.
bool WindowSystem::TakenFromWindows(const ButtonChanged& event, Long held) {
    ModalInput* const taker = modalInput_;
    const bool isTakers = event.down ? taker != nullptr : (takenButtons_ & held) != 0;
    if (isTakers) {
        takenButtons_ = event.down ? takenButtons_ | held : takenButtons_ & ~held;
        lastPress_ = {};
    }
    if (taker != nullptr) {
        taker->ButtonChange(event, !isTakers);
    }
    return isTakers;
}

void WindowSystem::On(const ButtonChanged& event) {
    modifiers_ = event.shift;
    const auto button =
        std::find_if(kButtons.begin(), kButtons.end(),
                     [&](const ButtonMessages& known) { return known.button == event.button; });
    if (button == kButtons.end() || TakenFromWindows(event, button->held)) {
        return;
    }
    // Whoever got the press gets the release, even while input is taken.
    const Handle target = capture_ != 0 ? capture_ : HitTest(event.ptScreen, true);
    if (event.down) {
        buttons_ |= button->held;
        capture_ = target;
        SendMouse(target, IsDoubleClick(event, target) ? button->doubleClick : button->down,
                  event.ptScreen);
        return;
    }
    buttons_ &= ~button->held;
    if (buttons_ == 0) {
        capture_ = 0;
    }
    SendMouse(target, button->up, event.ptScreen);
    if (capture_ == 0) {
        // Whoever kept the pointer to itself may be left now.
        LeaveUnlessAt(event.ptScreen);
    }
}

void WindowSystem::On(const WheelTurned& event) {
    modifiers_ = event.shift;
    if (modalInput_ != nullptr) {
        modalInput_->Wheel(event);
        return;
    }
    const Long delta = event.notches < 0 ? -WHEEL_DELTA : WHEEL_DELTA;
    for (Long notch = std::abs(event.notches); notch > 0; --notch) {
        const Handle hit = HitTest(event.ptScreen, false);
        SendMessage(hit != 0 ? hit : focus_, WM_MOUSEWHEEL,
                    delta * 65536 + (buttons_ | HeldModifiers(modifiers_)), WordOf(event.ptScreen));
    }
}

bool WindowSystem::GetAsyncKeyState(Long code) const {
    return code >= 0 && static_cast<std::size_t>(code) < keysDown_.size() &&
           keysDown_[static_cast<std::size_t>(code)];
}

Handle WindowSystem::SetWindowsHookEx(KeyboardProc proc) {
    const Handle hook = NewHandle();
    hooks_.emplace_back(hook, std::move(proc));
    return hook;
}

void WindowSystem::UnhookWindowsHookEx(Handle hook) {
    std::erase_if(hooks_, [hook](const auto& known) { return known.first == hook; });
}

bool WindowSystem::EatenByHook(const KeyChanged& event) {
    // Copies: a procedure may take itself or others out.
    const auto hooks = hooks_;
    return std::any_of(hooks.rbegin(), hooks.rend(), [&](const auto& hook) {
        return hook.second(event.code, event.shift, event.down);
    });
}

// A key that went down in a menu is the menu's until it is up: repeated by being held, it must not
// act on what lies behind. One that was down before the menu opened stays that of its window.
bool WindowSystem::TakenFromWindows(const KeyChanged& event) {
    const auto code = static_cast<std::size_t>(event.code);
    ModalInput* const taker = modalInput_;
    const bool isOlder = keysDown_[code] && !takenKeys_[code];
    keysDown_[code] = event.down;
    textIsEaten_ = event.down && taker != nullptr;
    if (!takenKeys_[code] && (taker == nullptr || !event.down)) {
        return false;
    }
    takenKeys_[code] = event.down && !isOlder;
    textIsEaten_ = event.down;
    if (taker != nullptr && event.down && !isOlder) {
        taker->KeyDown(event.code);
    }
    return true;
}

void WindowSystem::On(const KeyChanged& event) {
    modifiers_ = event.shift;
    const auto code = static_cast<std::size_t>(event.code);
    if (code >= keysDown_.size() || TakenFromWindows(event)) {
        return;
    }
    // Whoever sees the press sees the release.
    const Window* const focused = Find(focus_);
    const bool isWriting =
        event.down ? focused != nullptr && focused->caret && IsWritingKey(event.code, event.shift)
                   : keysOfWriting_[code];
    keysOfWriting_[code] = event.down && isWriting;
    if (!isWriting && EatenByHook(event)) {
        textIsEaten_ = event.down;
        return;
    }
    SendMessage(focus_, event.down ? WM_KEYDOWN : WM_KEYUP, event.code, event.shift);
}

void WindowSystem::On(const TextTyped& event) {
    if (modalInput_ != nullptr) {
        modalInput_->Text(event.text);
        return;
    }
    if (textIsEaten_) {
        return;
    }
    SendText(focus_, event.text);
}

void WindowSystem::On(const InputLost& /*event*/) {
    if (modalInput_ != nullptr) {
        modalInput_->InputLost();
    }
}

// What a window manager does.

void WindowSystem::On(const CloseRequested& event) {
    if (modalInput_ != nullptr) {
        modalInput_->CloseRequest(event.window);
    } else {
        SendMessage(event.window, WM_CLOSE, 0, 0);
    }
}

void WindowSystem::On(const MinimisedByDesktop& event) {
    SetMinimised(event.window, true);
}

// Who is asked for on the desktop is to be seen, even if it had been hidden while it was minimised.
void WindowSystem::On(const RestoredByDesktop& event) {
    ShowWindow(event.window, SW_RESTORE);
}

void WindowSystem::On(const WorkAreaChanged& /*event*/) {
    const std::vector<Handle> all = topLevels_;  // a copy: windows may end meanwhile
    for (const Handle window : all) {
        SendMessage(window, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0);
    }
}

// Owners before what lies on them: labels take what shines through them from their parents.
void WindowSystem::TellDensity(Handle window) {
    SendMessage(window, WM_DISPLAYCHANGE, Surface::DensityInForce(), 0);
    const Window* found = Find(window);
    const std::vector<Handle> children = found != nullptr ? found->children : std::vector<Handle>();
    for (const Handle child : children) {
        TellDensity(child);
    }
}

void WindowSystem::On(const DensityChanged& /*event*/) {
    Surface::DensityInForce(driver_.Density());
    const std::vector<Handle> all = topLevels_;  // a copy: windows may end meanwhile
    for (const Handle window : all) {
        TellDensity(window);
        if (const Window* found = Find(window)) {
            InvalidateWindow(*found);
        }
    }
}

void WindowSystem::On(const FilesDropped& event) {
    const Handle hit = HitTest(event.ptScreen, true);
    DropFiles(hit != 0 ? hit : event.window, event.paths);
}

void WindowSystem::On(const MovedByDesktop& event) {
    if (Window* found = Find(event.window)) {
        found->movedByDesktop = true;
        found->rect = {event.ptScreen.x, event.ptScreen.y, event.ptScreen.x + found->rect.Width(),
                       event.ptScreen.y + found->rect.Height()};
    }
}

void WindowSystem::Deliver(const DriverEvent& event) {
    const Dispatching dispatching(*this);
    std::visit([this](const auto& known) { On(known); }, event);
}

}  // namespace platform

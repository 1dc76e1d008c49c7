// The part of the window system that turns a driver's events into messages: the pointer with its
// capture, double clicks and leaving, the wheel, keys, and what a window manager does.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "platform/base/keys.h"
#include "platform/menus/menu_tracking.h"
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

// A window is not left by going on to a mark on it.
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

void WindowSystem::OnPointerMoved(Point ptScreen) {
    if (MenuTracking* const menu = menus_.Tracking()) {
        Leave();
        menu->PointerMoved(ptScreen);
        return;
    }
    if (capture_ != 0) {
        SendMouse(capture_, WM_MOUSEMOVE, ptScreen);
        return;
    }
    LeaveUnlessAt(ptScreen);
    SendMouse(HitTest(ptScreen, true), WM_MOUSEMOVE, ptScreen);
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

void WindowSystem::OnButton(const ButtonChanged& event) {
    const auto button =
        std::find_if(kButtons.begin(), kButtons.end(),
                     [&](const ButtonMessages& known) { return known.button == event.button; });
    if (button == kButtons.end()) {
        return;
    }
    MenuTracking* const menu = menus_.Tracking();
    const bool isMenus = event.down ? menu != nullptr : (buttonsOfMenu_ & button->held) != 0;
    if (isMenus) {
        buttonsOfMenu_ =
            event.down ? buttonsOfMenu_ | button->held : buttonsOfMenu_ & ~button->held;
        lastPress_ = {};
    }
    if (menu != nullptr) {
        menu->ButtonChange(event, !isMenus);
    }
    if (isMenus) {
        return;
    }
    // Whoever got the press gets the release, even while a menu is open.
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

void WindowSystem::OnWheel(const WheelTurned& event) {
    if (MenuTracking* const menu = menus_.Tracking()) {
        menu->Wheel(event);
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

void WindowSystem::OnKey(const KeyChanged& event) {
    if (event.code < 0 || static_cast<std::size_t>(event.code) >= keysDown_.size()) {
        return;
    }
    const auto code = static_cast<std::size_t>(event.code);
    MenuTracking* const menu = menus_.Tracking();
    // A key that went down in a menu is the menu's until it is up: repeated by being held, it must
    // not act on what lies behind. One that was down before it opened stays that of its window.
    const bool isOlder = keysDown_[code] && !keysOfMenu_[code];
    keysDown_[code] = event.down;
    textIsEaten_ = event.down && menu != nullptr;
    if (keysOfMenu_[code] || (menu != nullptr && event.down)) {
        keysOfMenu_[code] = event.down && !isOlder;
        textIsEaten_ = event.down;
        if (menu != nullptr && event.down && !isOlder) {
            menu->KeyDown(event.code);
        }
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

void WindowSystem::OnText(const TextTyped& event) {
    if (MenuTracking* const menu = menus_.Tracking()) {
        menu->Text(event.text);
        return;
    }
    if (textIsEaten_) {
        return;
    }
    SendText(focus_, event.text);
}

namespace {

// One call for each kind of event.
template <class... F>
struct Cases : F... {
    using F::operator()...;
};
template <class... F>
Cases(F...) -> Cases<F...>;

}  // namespace

void WindowSystem::Deliver(const DriverEvent& event) {
    const Dispatching dispatching(*this);
    std::visit(Cases{
                   [&](const CloseRequested& close) {
                       if (MenuTracking* const menu = menus_.Tracking()) {
                           menu->CloseRequest(close.window);
                       } else {
                           SendMessage(close.window, WM_CLOSE, 0, 0);
                       }
                   },
                   [&](const InputLost&) { menus_.EndMenu(0); },
                   [&](const MinimisedByDesktop& change) { SetMinimised(change.window, true); },
                   [&](const RestoredByDesktop& change) { SetMinimised(change.window, false); },
                   [&](const WorkAreaChanged&) {
                       const std::vector<Handle> all = topLevels_;
                       for (const Handle window : all) {
                           SendMessage(window, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0);
                       }
                   },
                   [&](const FilesDropped& drop) {
                       const Handle hit = HitTest(drop.ptScreen, true);
                       DropFiles(hit != 0 ? hit : drop.window, drop.paths);
                   },
                   [&](const MovedByDesktop& move) {
                       if (Window* found = Find(move.window)) {
                           found->movedByDesktop = true;
                           const Size size{found->rect.Width(), found->rect.Height()};
                           found->rect = {move.ptScreen.x, move.ptScreen.y,
                                          move.ptScreen.x + size.width,
                                          move.ptScreen.y + size.height};
                       }
                   },
                   [&](const PointerMoved& move) {
                       modifiers_ = move.shift;
                       OnPointerMoved(move.ptScreen);
                   },
                   [&](const PointerLeft&) {
                       if (tracked_ != capture_) {
                           SendMessage(std::exchange(tracked_, 0), WM_MOUSELEAVE, 0, 0);
                       }
                   },
                   [&](const ButtonChanged& change) {
                       modifiers_ = change.shift;
                       OnButton(change);
                   },
                   [&](const WheelTurned& turn) {
                       modifiers_ = turn.shift;
                       OnWheel(turn);
                   },
                   [&](const KeyChanged& key) {
                       modifiers_ = key.shift;
                       OnKey(key);
                   },
                   [&](const TextTyped& typed) { OnText(typed); },
                   [&](const TextComposed& composed) { OnComposed(composed); },
               },
               event);
}

}  // namespace platform

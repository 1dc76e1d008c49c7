#include "platform/windows/window_system.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/windows/shell.h"
#include "platform/windows/window_system_detail.h"

namespace platform {

namespace {

// A rectangle of that size, as near to the wanted place as its far edges still have numbers:
// places come from a settings file, where anything may stand.
Rect Placed(std::int64_t x, std::int64_t y, Long width, Long height) {
    constexpr std::int64_t kLowest = std::numeric_limits<Long>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<Long>::max();
    const auto left = static_cast<Long>(std::clamp(x, kLowest, kHighest - width));
    const auto top = static_cast<Long>(std::clamp(y, kLowest, kHighest - height));
    return {left, top, left + width, top + height};
}

}  // namespace

WindowSystem::WindowSystem(Driver& driver)
    : driver_(driver), shell_(std::make_unique<Shell>(driver)) {
    Surface::DensityInForce(driver.Density());
}

// The driver lives on and may show a window anew, but the pictures end here.
WindowSystem::~WindowSystem() {
    for (const Handle window : topLevels_) {
        driver_.DestroyTopLevel(window);
    }
}

WindowSystem::Window* WindowSystem::Find(Handle window) const {
    const auto found = windows_.find(window);
    return found == windows_.end() ? nullptr : found->second.get();
}

Handle WindowSystem::CreateWindow(Handle parent, const Rect& rect, WindowProc proc) {
    auto window = std::make_shared<Window>();
    window->handle = ++lastHandle_;
    window->parent = IsWindow(parent) ? parent : 0;
    window->rect = rect;
    window->proc = Window::Guarded(std::move(proc));
    windows_[window->handle] = window;
    if (Window* above = Find(parent)) {
        above->children.push_back(window->handle);
    } else {
        topLevels_.push_back(window->handle);
        driver_.CreateTopLevel(window->handle);
        driver_.SetTopLevelRect(window->handle, rect);
    }
    return window->handle;
}

void WindowSystem::MakePopup(Handle window, Handle owner, PopupKind kind) {
    driver_.SetTopLevelPopup(window, GetTopLevel(owner), kind);
}

// Those beside the window, and itself; null once its parent has gone before it.
std::vector<Handle>* WindowSystem::Siblings(const Window& window) {
    if (window.parent == 0) {
        return &topLevels_;
    }
    Window* above = Find(window.parent);
    return above != nullptr ? &above->children : nullptr;
}

void WindowSystem::DestroyWindow(Handle window) {
    Window* found = Find(window);
    if (found == nullptr || found->dying) {
        return;  // its procedure, or a child's, may ask once more
    }
    found->dying = true;
    const Dispatching dispatching(*this);
    SendMessage(window, WM_DESTROY, 0, 0);
    // Looked up afresh each time: what a child does in its end may end others, or make them.
    const auto lives = [this](Handle child) { return !Find(child)->dying; };
    const std::vector<Handle>& children = found->children;
    for (;;) {
        const auto child = std::find_if(children.begin(), children.end(), lives);
        if (child == children.end()) {
            break;
        }
        DestroyWindow(*child);
    }
    InvalidateWindow(*found);
    if (std::vector<Handle>* siblings = Siblings(*found)) {
        std::erase(*siblings, window);
    }
    shell_->Forget(window);
    if (found->parent == 0) {
        driver_.DestroyTopLevel(window);
    }
    if (onDestroyed_) {
        onDestroyed_(window);
    }
    std::erase_if(due_, [window](const Due& due) { return due.window == window; });
    std::erase_if(posted_, [window](const Message& message) { return message.window == window; });
    if (focus_ == window) {
        TakeComposition();
    }
    for (Handle* holder : {&focus_, &capture_, &tracked_}) {
        if (*holder == window) {
            *holder = 0;
        }
    }
    DeferDelete(windows_[window]);
    windows_.erase(window);
}

void WindowSystem::ObserveDestroyed(std::function<void(Handle window)> observer) {
    onDestroyed_ = std::move(observer);
}

bool WindowSystem::IsWindow(Handle window) const {
    return Find(window) != nullptr;
}

Handle WindowSystem::GetParent(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr ? found->parent : 0;
}

Handle WindowSystem::GetTopLevel(Handle window) const {
    while (const Handle parent = GetParent(window)) {
        window = parent;
    }
    return window;
}

Rect WindowSystem::GetRect(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr ? found->rect : Rect{};
}

Rect WindowSystem::GetWindowRect(Handle window) const {
    const Rect rect = GetRect(window);
    std::int64_t x = rect.left;
    std::int64_t y = rect.top;
    for (Handle parent = GetParent(window); parent != 0; parent = GetParent(parent)) {
        x += GetRect(parent).left;
        y += GetRect(parent).top;
    }
    return Placed(x, y, rect.Width(), rect.Height());
}

void WindowSystem::SetWindowPos(Handle window, Handle insertAfter, Long x, Long y, Long width,
                                Long height, Long flags) {
    Window* found = Find(window);
    if (found == nullptr) {
        return;
    }
    const Dispatching dispatching(*this);  // a message may end the window
    const Rect former = found->rect;
    const bool moves = (flags & SWP_NOMOVE) == 0;
    const bool sizes = (flags & SWP_NOSIZE) == 0;
    const Rect rect = Placed(moves ? x : former.left, moves ? y : former.top,
                             sizes ? std::max(width, 0) : former.Width(),
                             sizes ? std::max(height, 0) : former.Height());
    if ((flags & SWP_NOZORDER) == 0) {
        if (found->parent == 0 && (insertAfter == HWND_TOPMOST || insertAfter == HWND_NOTOPMOST)) {
            found->topMost = insertAfter == HWND_TOPMOST;
            driver_.SetTopLevelTopMost(window, found->topMost);
        } else {
            BringToFront(window);
        }
    }
    const bool sized = rect.Width() != former.Width() || rect.Height() != former.Height();
    if (rect == former) {
        return;
    }
    // The picture of a top-level window that only moves stays as it is.
    const bool redraws = found->parent != 0 || sized;
    if (redraws) {
        InvalidateWindow(*found);
    }
    found->rect = rect;
    if (redraws) {
        InvalidateWindow(*found);
    }
    if (found->parent == 0) {
        driver_.SetTopLevelRect(window, rect);
    } else if (rect.left != former.left || rect.top != former.top) {
        SendMessage(window, WM_MOVE, 0, WordOf({rect.left, rect.top}));
    }
    if (sized && (found->parent != 0 || found->shownBefore)) {
        SendSize(*found, SIZE_RESTORED);
    }
}

void WindowSystem::SendSize(Window& window, Long state) {
    const Long size = (window.rect.Width() & 0xFFFF) | (window.rect.Height() << 16);
    SendMessage(window.handle, WM_SIZE, state, size);
}

void WindowSystem::BringToFront(Handle window) {
    Window* found = Find(window);
    std::vector<Handle>* siblings = found != nullptr ? Siblings(*found) : nullptr;
    if (siblings != nullptr) {
        std::erase(*siblings, window);
        siblings->push_back(window);
        InvalidateWindow(*found);
    }
}

bool WindowSystem::IsTopMost(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr && found->topMost;
}

void WindowSystem::ShowWindow(Handle window, Long command) {
    Window* found = Find(window);
    if (found == nullptr) {
        return;
    }
    const Dispatching dispatching(*this);
    if (command == SW_MINIMIZE) {
        SetMinimised(window, true);
        return;
    }
    const bool show = command != SW_HIDE;
    const bool changed = found->visible != show;
    if (changed) {
        InvalidateWindow(*found);
        found->visible = show;
        InvalidateWindow(*found);
        if (found->parent == 0) {
            driver_.SetTopLevelVisible(window, show);
        }
        SendMessage(window, WM_SHOWWINDOW, show ? 1 : 0, 0);
    }
    if (show && command != SW_SHOW && found->iconic) {
        SetMinimised(window, false);
    } else if (show && found->parent == 0 && !found->shownBefore) {
        found->shownBefore = true;
        SendSize(*found, found->iconic ? SIZE_MINIMIZED : SIZE_RESTORED);
    }
}

bool WindowSystem::IsVisible(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr && found->visible;
}

bool WindowSystem::IsIconic(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr && found->iconic;
}

void WindowSystem::SetMinimised(Handle window, bool minimised) {
    Window* found = Find(window);
    if (found == nullptr || found->parent != 0 || found->iconic == minimised) {
        return;
    }
    const Dispatching dispatching(*this);
    found->iconic = minimised;
    found->shownBefore = true;
    driver_.SetTopLevelMinimised(window, minimised);
    SendSize(*found, minimised ? SIZE_MINIMIZED : SIZE_RESTORED);
}

bool WindowSystem::WasMovedByDesktop(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr && found->movedByDesktop;
}

void WindowSystem::EnableWindow(Handle window, bool enabled) {
    if (Window* found = Find(window)) {
        found->enabled = enabled;
    }
}

bool WindowSystem::IsEnabled(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr && found->enabled;
}

void WindowSystem::SetWindowText(Handle window, std::u16string_view text) {
    if (Window* found = Find(window)) {
        found->text = text;
        if (found->parent == 0) {
            driver_.SetTopLevelTitle(window, text);
        }
    }
}

std::u16string WindowSystem::GetWindowText(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr ? found->text : std::u16string();
}

Long WindowSystem::GetWindowLong(Handle window, Long index) const {
    const Window* found = Find(window);
    if (found == nullptr) {
        return 0;
    }
    return index == GWL_STYLE ? found->style : index == GWL_EXSTYLE ? found->exStyle : 0;
}

Long WindowSystem::SetWindowLong(Handle window, Long index, Long value) {
    const Long former = GetWindowLong(window, index);
    if (Window* found = Find(window)) {
        if (index == GWL_STYLE) {
            found->style = value;
        } else if (index == GWL_EXSTYLE) {
            found->exStyle = value;
        }
    }
    return former;
}

void WindowSystem::SetFocus(Handle window) {
    const auto goes = [&] { return focus_ != window && (window == 0 || IsWindow(window)); };
    if (goes()) {
        EndComposition();  // whose handlers may do anything
    }
    if (!goes()) {
        return;
    }
    const Handle former = std::exchange(focus_, window);
    SendMessage(former, WM_KILLFOCUS, window, 0);
    if (focus_ == window) {
        SendMessage(window, WM_SETFOCUS, former, 0);
    }
}

void WindowSystem::SetForegroundWindow(Handle window) {
    if (IsWindow(window)) {
        BringToFront(GetTopLevel(window));
        driver_.ActivateTopLevel(GetTopLevel(window));
    }
}

}  // namespace platform

// The part of the window system that is about writing: which window the user writes in, and what an
// input method puts together for it.
#include <algorithm>
#include <utility>

#include "platform/windows/window_system.h"
#include "platform/windows/window_system_detail.h"

namespace platform {

namespace {

// How far one place lies from another, within bounds: windows may stand anywhere that has a number.
Long Distance(Long from, Long to) {
    constexpr std::int64_t kFarthest = 1 << 20;
    return static_cast<Long>(std::clamp(std::int64_t{to} - from, -kFarthest, kFarthest));
}

}  // namespace

void WindowSystem::SetTextInput(Handle window, const std::optional<Rect>& rectCaret) {
    if (Window* found = Find(window)) {
        found->caret = rectCaret;
    }
}

// Who takes all input has all keys for itself.
std::optional<TextInput> WindowSystem::TextInputNow() const {
    const Window* focused = Find(focus_);
    if (focused == nullptr || !focused->caret || modalInput_ != nullptr) {
        return std::nullopt;
    }
    const Handle top = GetTopLevel(focus_);
    const Rect window = GetWindowRect(focus_);
    const Rect outer = GetRect(top);
    const Point place{Distance(outer.left, window.left), Distance(outer.top, window.top)};
    return TextInput{top, Offset(*focused->caret, place)};
}

// Once a pump, since much can move a caret on the screen.
void WindowSystem::TellTextInput() {
    if (!TextInputNow()) {
        EndComposition();
    }
    const std::optional<TextInput> input = TextInputNow();
    if (input != toldTextInput_) {
        toldTextInput_ = input;
        driver_.SetTextInput(input);
    }
}

void WindowSystem::SendText(Handle window, std::u16string_view text) {
    for (const char16_t unit : text) {
        SendMessage(window, WM_CHAR, unit, 0);
    }
}

void WindowSystem::On(const TextComposed& event) {
    if (TextInputNow()) {
        composition_ = event;
        SendMessage(focus_, WM_IME_COMPOSITION, 0, 0);
    } else if (!event.text.empty()) {
        driver_.EndComposing();
    }
}

std::u16string WindowSystem::TakeComposition() {
    std::u16string text = std::exchange(composition_, {}).text;
    if (!text.empty()) {
        driver_.EndComposing();
    }
    return text;
}

void WindowSystem::EndComposition() {
    const std::u16string text = TakeComposition();
    if (!text.empty()) {
        const Dispatching dispatching(*this);
        const Handle window = focus_;
        SendMessage(window, WM_IME_COMPOSITION, 0, 0);
        SendText(window, text);
    }
}

}  // namespace platform

// The part of the window system that reaches the desktop's shell.
#include <algorithm>

#include "platform/base/text.h"
#include "platform/windows/notify_icon.h"
#include "platform/windows/shell.h"
#include "platform/windows/window_system.h"

namespace platform {

namespace {

// The tip of a record. One that was cut in the middle of a character ends before it.
std::u16string TipOf(const NotifyIconData& data) {
    const auto* end = std::find(data.szTip.begin(), data.szTip.end(), '\0');
    std::u16string tip = Widen(std::string(data.szTip.begin(), end));
    if (end == data.szTip.end()) {
        while (!tip.empty() && IsLowSurrogate(tip.back()) && !InsidePair(tip, tip.size() - 1)) {
            tip.pop_back();
        }
    }
    return tip;
}

}  // namespace

Long WindowSystem::GlobalAddAtom(std::u16string_view name) {
    return shell_->AddAtom(name);
}

void WindowSystem::GlobalDeleteAtom(Long atom) {
    shell_->DeleteAtom(atom);
}

bool WindowSystem::RegisterHotKey(Handle window, Long id, Long modifiers, Long key,
                                  std::u16string_view name) {
    return (window == 0 || IsWindow(window)) &&
           shell_->AddKey({NewHandle(), window, id, {std::u16string(name), modifiers, key}});
}

bool WindowSystem::UnregisterHotKey(Handle window, Long id) {
    return shell_->RemoveKey(window, id);
}

void WindowSystem::On(const HotKeyPressed& event) {
    if (const auto key = shell_->FindKey(event.key)) {
        const KeyCombination& combination = key->combination;
        SendMessage(key->window, WM_HOTKEY, key->id,
                    WordOf({combination.modifiers, combination.key}));
    }
}

bool WindowSystem::Shell_NotifyIcon(Long message, const NotifyIconData& data) {
    switch (message) {
        case NIM_ADD:
            return IsWindow(data.hWnd) &&
                   shell_->AddIcon({data.hWnd, data.uID, data.uCallbackMessage}, TipOf(data));
        case NIM_MODIFY:
            return shell_->ModifyIcon(data.hWnd, data.uID, TipOf(data));
        case NIM_DELETE:
            return shell_->RemoveIcon(data.hWnd, data.uID);
        default:
            return false;
    }
}

void WindowSystem::On(const TrayIconUsed& event) {
    if (const auto icon = shell_->IconOf(event.window)) {
        const bool opens = event.action == TrayIconUsed::Action::kOpen;
        SendMessage(event.window, icon->callbackMessage, icon->id,
                    opens ? WM_LBUTTONDBLCLK : WM_RBUTTONUP);
    }
}

Handle WindowSystem::RegCreateKey(std::u16string_view name) {
    return shell_->CreateKey(name, NewHandle());
}

Handle WindowSystem::RegOpenKey(std::u16string_view name) const {
    return shell_->OpenKey(name);
}

bool WindowSystem::RegSetValue(Handle key, std::u16string_view subKey, std::u16string_view text) {
    return shell_->SetValue(key, subKey, text);
}

void WindowSystem::SHChangeNotify(Long event) {
    if (event == SHCNE_ASSOCCHANGED) {
        shell_->PublishAssociations();
    }
}

}  // namespace platform

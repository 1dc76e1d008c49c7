#include "platform/desktop/hotkeys/hot_keys.h"

#include <QGuiApplication>
#include <optional>

#include "platform/desktop/hotkeys/portal_keys.h"
#include "platform/desktop/hotkeys/x_keys.h"

namespace platform::desktop {

namespace {

bool HasServer() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>() != nullptr;
}

// There the X server, if any, gets the keys of its own windows only.
bool IsWayland() {
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           qgetenv("XDG_SESSION_TYPE") == "wayland";
}

}  // namespace

HotKeys::HotKeys(WaitLoop& loop, EventQueue& events) : loop_(loop), events_(events) {}

HotKeys::~HotKeys() = default;

void HotKeys::Begin() {
    hasBegun_ = true;
    if (!keys_.empty()) {
        Ask(keys_);
    }
}

bool HotKeys::Grab(Handle id, const KeyCombination& key) {
    keys_[id] = key;
    if (!hasBegun_) {
        return true;
    }
    Ask({{id, key}});
    // A portal answers later.
    const auto why = portal_ == nullptr ? server_->WhyMissing(id) : std::nullopt;
    if (why) {
        lastError_ = *why;
        Release(id);
    }
    return !why;
}

void HotKeys::Release(Handle id) {
    keys_.erase(id);
    if (server_ != nullptr) {
        server_->Release(id);
    }
}

// `added` are among the keys already.
void HotKeys::Ask(const Keys& added) {
    if (server_ == nullptr && portal_ == nullptr && (IsWayland() || !HasServer())) {
        portal_ = std::make_unique<PortalKeys>(
            keys_, PortalKeys::Reports{[this](Handle id) {
                                           Press(id);
                                           // What the bus brings is handled before the turn of
                                           // the loop begins to wait.
                                           loop_.Wake();
                                       },
                                       [this](bool isThere) { PortalIs(isThere); }});
    }
    if (portal_ != nullptr) {
        portal_->Bind();
    }
    if (portal_ == nullptr || server_ != nullptr) {
        AskServer(added);
    }
}

void HotKeys::AskServer(const Keys& added) {
    if (server_ == nullptr) {
        server_ = std::make_unique<XKeys>(loop_, [this](Handle id) { Press(id); });
    }
    server_->Grab(added);
}

// Without a portal the X server is the last resort: better some windows than none.
void HotKeys::PortalIs(bool there) {
    if (there) {
        server_.reset();
    } else if (server_ == nullptr && HasServer()) {
        AskServer(keys_);
    }
}

void HotKeys::Press(Handle id) {
    events_.Push(HotKeyPressed{id});
}

}  // namespace platform::desktop

#include "platform/desktop/hotkeys/x_keys.h"

#include <algorithm>
#include <set>
#include <utility>

#include "platform/desktop/x_answers.h"

namespace platform::desktop {

XKeys::XKeys(WaitLoop& loop, std::function<void(Handle id)> onPress)
    : onPress_(std::move(onPress)), connection_(XConnection::Open(loop, [this] { Read(); })) {
    if (connection_) {
        root_ = connection_->Screen().root;
        ReadMap();
    }
}

void XKeys::Grab(const std::map<Handle, KeyCombination>& keys) {
    for (const auto& [id, key] : keys) {
        Release(id);
        keys_[id].key = key;
    }
    if (connection_) {
        TakeMissing();
        Read();  // what came with the answers makes the descriptor readable no more
    }
}

std::optional<std::u16string> XKeys::WhyMissing(Handle id) const {
    if (!connection_) {
        return u"There is no connection to the display.";
    }
    const auto found = keys_.find(id);
    if (found != keys_.end() && !found->second.grabs.empty()) {
        return std::nullopt;
    }
    return found == keys_.end() || GrabsOf(found->second.key, map_).empty()
               ? u"The keyboard has no such key."
               : u"Another program has these keys.";
}

void XKeys::Release(Handle id) {
    const auto found = keys_.find(id);
    if (found == keys_.end()) {
        return;
    }
    if (connection_) {
        LetGo(found->second);
        xcb_flush(connection_->Get());
    }
    keys_.erase(found);
}

void XKeys::Read() {
    bool changed = true;
    while (std::exchange(changed, false)) {
        while (const auto event = Owned(xcb_poll_for_event(connection_->Get()))) {
            const int type = event->response_type & 0x7F;
            if (type == XCB_KEY_PRESS) {
                const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(*event);
                // Beyond the modifiers the state holds buttons and the keyboard's group.
                Press({press.detail, static_cast<std::uint16_t>(press.state & 0xFF)});
            }
            changed |= type == XCB_MAPPING_NOTIFY;
        }
        if (connection_->IsBroken()) {
            connection_.reset();
            return;
        }
        if (changed) {
            FollowMap();
        }
    }
}

void XKeys::Press(const KeyGrab& pressed) const {
    for (const auto& [id, held] : keys_) {
        if (std::find(held.grabs.begin(), held.grabs.end(), pressed) != held.grabs.end()) {
            onPress_(id);
            return;
        }
    }
}

void XKeys::ReadMap() {
    xcb_connection_t* const connection = connection_->Get();
    const xcb_setup_t& setup = *xcb_get_setup(connection);
    const auto count = static_cast<std::uint8_t>(setup.max_keycode - setup.min_keycode + 1);
    const auto askedKeys = xcb_get_keyboard_mapping(connection, setup.min_keycode, count);
    const auto askedModifiers = xcb_get_modifier_mapping(connection);
    const auto keys = Owned(xcb_get_keyboard_mapping_reply(connection, askedKeys, nullptr));
    const auto modifiers =
        Owned(xcb_get_modifier_mapping_reply(connection, askedModifiers, nullptr));
    if (!keys || !modifiers || keys->keysyms_per_keycode == 0) {
        map_ = {};
        return;
    }
    const auto copy = [](const auto* first, int length) {
        return std::vector(first, first + length);
    };
    map_ = {setup.min_keycode, keys->keysyms_per_keycode,
            copy(xcb_get_keyboard_mapping_keysyms(keys.get()),
                 xcb_get_keyboard_mapping_keysyms_length(keys.get())),
            copy(xcb_get_modifier_mapping_keycodes(modifiers.get()),
                 xcb_get_modifier_mapping_keycodes_length(modifiers.get()))};
}

// Keys that have stayed where they were are not touched: one of them may be held down just now.
void XKeys::FollowMap() {
    ReadMap();
    for (auto& [id, held] : keys_) {
        if (held.grabs != GrabsOf(held.key, map_)) {
            LetGo(held);
        }
    }
    TakeMissing();
}

void XKeys::TakeMissing() {
    struct Asked {
        Held* held;
        xcb_void_cookie_t request;
    };
    std::vector<Asked> asked;
    for (auto& [id, held] : keys_) {
        if (!held.grabs.empty()) {
            continue;
        }
        held.grabs = GrabsOf(held.key, map_);
        for (const KeyGrab& grab : held.grabs) {
            asked.push_back(
                {&held, xcb_grab_key_checked(connection_->Get(), 0, root_, grab.modifiers,
                                             grab.code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)});
        }
    }
    std::set<Held*> refused;
    for (const Asked& one : asked) {
        if (Owned(xcb_request_check(connection_->Get(), one.request))) {
            refused.insert(one.held);
        }
    }
    for (Held* held : refused) {
        LetGo(*held);
    }
    xcb_flush(connection_->Get());
}

void XKeys::LetGo(Held& held) {
    for (const KeyGrab& grab : held.grabs) {
        xcb_ungrab_key(connection_->Get(), grab.code, root_, grab.modifiers);
    }
    held.grabs.clear();
}

}  // namespace platform::desktop

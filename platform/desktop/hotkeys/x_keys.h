// Keys that an X server grabs for the program, whoever has the focus. The connection is one of its
// own, so that neither grabs nor news of the keyboard get mixed up with the toolkit's.
#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/desktop/hotkeys/key_grabs.h"
#include "platform/desktop/wait_loop.h"
#include "platform/desktop/x_connection.h"
#include "platform/driver.h"

namespace platform::desktop {

class XKeys {
  public:
    /// `onPress` gets the key's id, and that again and again while the key repeats. It is called
    /// from the loop and from Grab, and must not call back.
    XKeys(WaitLoop& loop, std::function<void(Handle id)> onPress);
    XKeys(const XKeys&) = delete;
    XKeys& operator=(const XKeys&) = delete;

    /// Takes as many of them as can be had, all on one way there and back. The others are tried
    /// again with the next ones, and whenever the keyboard's map changes.
    void Grab(const std::map<Handle, KeyCombination>& keys);
    /// Why a key is not held, for people; nothing if it is.
    std::optional<std::u16string> WhyMissing(Handle id) const;
    void Release(Handle id);

  private:
    struct Held {
        KeyCombination key;
        std::vector<KeyGrab> grabs;  ///< none: missing
    };

    void Read();
    void Press(const KeyGrab& pressed) const;
    void ReadMap();
    void FollowMap();
    void TakeMissing();
    void LetGo(Held& held);

    std::function<void(Handle id)> onPress_;
    std::unique_ptr<XConnection> connection_;  ///< null: none, or it has broken
    xcb_window_t root_ = XCB_WINDOW_NONE;
    KeyboardMap map_;
    std::map<Handle, Held> keys_;
};

}  // namespace platform::desktop

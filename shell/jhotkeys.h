// JHotKeys keeps the system-wide hot keys of one window by name. The list stands and answers to
// WM_HOTKEY; taking a combination from the desktop is not built yet.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/types.h"

namespace sarnel {

using platform::Handle;
using platform::Long;

class JHotKeys {
  public:
    /// The window that receives the hot keys.
    Handle hWndToCapture() const { return window_; }
    void hWndToCapture(Handle window) { window_ = window; }

    /// Modifiers: 1 Alt, 2 Ctrl, 4 Shift, 8 Win; a virtual-key code.
    void RegisterKey(std::u16string_view sName, Long eModifiers, Long eKey);
    void WM_DESTROY() { keys_.clear(); }
    /// Raises HotKeyPress with the name of the key that has this id.
    void WM_HOTKEY(Long id, Long lParam);
    /// The id of a registered key, 0 if there is none of that name.
    Long IdOf(std::u16string_view sName) const;

    std::function<void(std::u16string_view sName)> onHotKeyPress;

  private:
    struct Key {
        std::u16string name;
        Long id = 0;
        Long modifiers = 0;
        Long key = 0;
    };
    Handle window_ = 0;
    Long lastId_ = 0;
    std::vector<Key> keys_;
};

}  // namespace sarnel

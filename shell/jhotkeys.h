// JHotKeys keeps the system-wide hot keys of one window by name. It registers and reports; the
// window's procedure hands it the messages. What fails is raised to the caller.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/window_system.h"

namespace sarnel {

using platform::Handle;
using platform::Long;

class JHotKeys {
  public:
    explicit JHotKeys(platform::WindowSystem& windows) : windows_(windows) {}
    /// Runs Clear.
    ~JHotKeys();
    JHotKeys(const JHotKeys&) = delete;
    JHotKeys& operator=(const JHotKeys&) = delete;

    /// The window that receives the hot keys.
    Handle hWndToCapture() const { return window_; }
    void hWndToCapture(Handle window) { window_ = window; }

    /// Unregisters the first, third, fifth ... key, for the list closes up behind each. With more
    /// than one it then fails with a bounds error and leaves the others, to another Clear or to the
    /// end of their window.
    void Clear();

    /// Modifiers: the sum of 1 Alt, 2 Ctrl, 4 Shift, 8 Win; `eKey`: a virtual-key code. The name is
    /// cut to 32 units. Fails with 0x8004041C for a name that is there already, case told apart,
    /// 0x8004041A without an atom for the key, 0x8004041B if the desktop refuses the combination;
    /// then nothing has changed.
    void RegisterKey(std::u16string_view sName, Long eModifiers, Long eKey);
    /// Fails with 0x80040419 if there is no key of exactly this name.
    void UnregisterKey(std::u16string_view sName);

    /// To be called when the window is destroyed: runs Clear.
    void WM_DESTROY() { Clear(); }
    /// To be called on the window's message of this name: raises HotKeyPress with the key's name,
    /// modifiers and code; for an id that is not known with "Unknown HotKey" and what lParam says.
    /// Ids -1 and -2 are the system's own.
    void WM_HOTKEY(Long id, Long lParam);

    struct Key {
        std::u16string name;
        std::u16string atomName;
        Long id = 0;  ///< the atom, as a signed number of 16 bits; also the hot key's id
        Long key = 0;
        Long modifiers = 0;
    };
    /// The record of a registered key; null if there is none of that name.
    const Key* Find(std::u16string_view sName) const;
    Long Count() const { return static_cast<Long>(keys_.size()); }

    std::function<void(std::u16string_view sName, Long eModifiers, Long eKey)> onHotKeyPress;

  private:
    std::u16string AtomName(std::u16string_view name) const;
    std::u16string SystemText() const;

    platform::WindowSystem& windows_;
    Handle window_ = 0;
    std::vector<Key> keys_;
};

}  // namespace sarnel

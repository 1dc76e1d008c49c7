// System-wide keys. The desktop is asked for them once the first picture of the program is on the
// screen: by the X server where it can grab keys of all programs, else by the desktop's portal for
// global shortcuts. Where there is neither they are missing.
#pragma once

#include <map>
#include <string>

#include "platform/desktop/event_queue.h"
#include "platform/desktop/wait_loop.h"
#include "platform/driver.h"

namespace platform::desktop {

class HotKeys {
  public:
    /// Both must outlive it.
    HotKeys(WaitLoop& loop, EventQueue& events);
    ~HotKeys();

    /// From now on the desktop is asked; before, combinations are only kept.
    void Begin();
    bool HasBegun() const { return hasBegun_; }

    /// As Driver::GrabHotKey and so on.
    bool Grab(Handle id, const KeyCombination& key);
    void Release(Handle id);
    std::u16string LastErrorText() const { return lastError_; }

  private:
    WaitLoop& loop_;
    EventQueue& events_;
    bool hasBegun_ = false;
    std::map<Handle, KeyCombination> keys_;
    std::u16string lastError_;
};

}  // namespace platform::desktop

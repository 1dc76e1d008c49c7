// System-wide keys. The desktop is asked for them once the first picture of the program is on the
// screen: by the X server where it can grab keys of all programs, else by the desktop's portal for
// global shortcuts. Where there is neither they are missing.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/desktop/event_queue.h"
#include "platform/desktop/wait_loop.h"
#include "platform/driver.h"

namespace platform::desktop {

class PortalKeys;
class XKeys;

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
    using Keys = std::map<Handle, KeyCombination>;

    void Ask(const Keys& added);
    void AskServer(const Keys& added);
    void PortalIs(bool there);
    void Press(Handle id);

    WaitLoop& loop_;
    EventQueue& events_;
    bool hasBegun_ = false;
    Keys keys_;
    std::u16string lastError_;
    // Made with the first key. Both where the portal is missing just now.
    std::unique_ptr<XKeys> server_;
    std::unique_ptr<PortalKeys> portal_;
};

}  // namespace platform::desktop

// The icons of windows in the desktop's tray: a status notifier on the session's bus where somebody
// shows those, else a window embedded in a tray of the X server. What is not used costs nothing:
// the bus is connected with the first icon.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string_view>

#include "platform/desktop/event_queue.h"
#include "platform/desktop/wait_loop.h"
#include "platform/driver.h"

namespace platform::desktop {

class TrayIcons {
  public:
    /// Told whenever an icon has come into a tray, or has lost it.
    using Placed = std::function<void(Handle window, bool inTray)>;

    /// Loop and events must outlive it.
    TrayIcons(WaitLoop& loop, EventQueue& events, Placed onPlaced);
    ~TrayIcons();
    TrayIcons(const TrayIcons&) = delete;
    TrayIcons& operator=(const TrayIcons&) = delete;

    /// Adds a window's icon, or changes its tip. Reports TrayIconUsed. `onPlaced` is told at once
    /// that a new icon is not in a tray yet.
    void Show(Handle window, std::u16string_view tip);
    void Hide(Handle window);

  private:
    class Icon;

    WaitLoop& loop_;
    EventQueue& events_;
    Placed onPlaced_;
    int count_ = 0;  ///< of all that were ever shown
    std::map<Handle, std::unique_ptr<Icon>> icons_;
};

}  // namespace platform::desktop

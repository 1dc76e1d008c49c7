// How the program meets its user: in a window or in the terminal. A front brings the driver that
// goes with it, hears from the host what becomes of the items, and has its say when the run begins
// and ends.
#pragma once

#include <functional>
#include <set>
#include <string>

#include "host/engine/engine.h"
#include "host/engine/tags.h"
#include "host/terminal/console.h"
#include "host/veldrin_host.h"
#include "platform/desktop/session_bus.h"
#include "platform/driver.h"
#include "platform/windows/window_system.h"

namespace veldrin {

class Front : public ItemListener {
  public:
    /// What a front works with once the rest of the program stands. All of it outlives that use.
    struct Surroundings {
        platform::WindowSystem& windows;
        Engine& engine;
        TagReader& tags;
        /// Asks for the orderly end of the program, once the main loop has control.
        std::function<void()> requestEnd;
        /// Whether somebody has asked for it.
        std::function<bool()> isEnding;
        /// Ends it before it returns, if it returns: whoever asks may not leave time for more.
        std::function<void()> endNow;
        /// Ends it for want of a display. Does not return.
        std::function<void()> displayLost;
    };

    /// The console must outlive it.
    explicit Front(Console& console) : console_(console) {}

    virtual platform::Driver& GetDriver() = 0;

    /// The desktop's session bus; null where there is no desktop.
    virtual platform::SessionBus* Bus() { return nullptr; }

    /// The window is about to be asked for; `token` is the desktop's leave for it, or empty.
    virtual void MayActivate(const std::string& /*token*/) {}

    /// Called before the component begins.
    virtual void Enter(const Surroundings& surroundings) = 0;
    /// What Enter gave is about to go.
    virtual void Leave() {}
    /// The component has handled the command line; `restored` if the list came back from the last
    /// run.
    virtual void Begin(bool /*restored*/) {}

    /// Instead of it: after starts that broke off nothing is to be played.
    virtual void BeginSilently() {}

    void ItemOpened(const std::string& /*path*/) override {}
    /// Tells the user, once a run for each file.
    void ItemFailed(const std::string& path) override;
    void Stopped(bool /*ended*/) override {}

    /// The program is about to be stopped, and the terminal goes back to the shell.
    virtual void Suspending() {}
    /// The program goes on; whether it has the terminal is to be seen.
    virtual void Continued() {}

    /// The exit status of a run that ended in order.
    virtual int Status() const = 0;

  protected:
    Console& console_;

  private:
    std::set<std::string> complained_;  ///< files that were said to be unplayable
};

}  // namespace veldrin

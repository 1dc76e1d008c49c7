// How the program meets its user: in a window or in the terminal. A front brings the driver that
// goes with it, hears what the host hears, and has its say when the run begins and ends.
#pragma once

#include <functional>
#include <string>

#include "host/engine/engine.h"
#include "host/engine/tags.h"
#include "platform/driver.h"
#include "platform/windows/window_system.h"

namespace veldrin {

class Front {
  public:
    /// What it works with once the rest of the program stands; outlives its use.
    struct Surroundings {
        platform::WindowSystem& windows;
        Engine& engine;
        TagReader& tags;
        /// Asks for the orderly end of the program, once the main loop has control.
        std::function<void()> requestEnd;
        /// The same at once where that can be: what asks may not leave time for more.
        std::function<void()> endNow;
    };

    virtual ~Front() = default;

    virtual platform::Driver& GetDriver() = 0;

    /// Before the component begins.
    virtual void Enter(const Surroundings& surroundings) = 0;
    /// The component has handled the command line; `restored` if the list came back from the last
    /// run.
    virtual void Begin(bool restored) = 0;

    // From the host.
    virtual void ItemOpened(const std::string& /*path*/) {}
    /// The user has been told.
    virtual void ItemFailed() {}
    virtual void Stopped(bool /*ended*/) {}

    /// The program is about to be stopped, and the terminal goes back to the shell.
    virtual void Suspending() {}
    /// The program goes on; whether it has the terminal is to be seen.
    virtual void Continued() {}

    /// The exit status of a run that ended in order.
    virtual int Status() const = 0;
};

}  // namespace veldrin

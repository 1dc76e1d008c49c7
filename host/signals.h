// Signals as events of the main loop: SIGTERM, SIGINT and SIGHUP ask for an orderly end, SIGTSTP
// and SIGCONT concern who uses the terminal. They are blocked and read from a descriptor, so
// nothing runs in signal context. A signal that was ignored when the program started (nohup,
// background jobs of a script) stays ignored.
#pragma once

#include <functional>

#include "host/descriptor.h"

namespace veldrin {

class Signals {
  public:
    /// Blocks them: to be made before any thread is started, since threads inherit that.
    Signals();

    /// Can be read when there is a signal to take.
    int Number() const { return descriptor_.Number(); }

    /// Calls `onSignal` with each number that has arrived. Never waits.
    void Take(const std::function<void(int)>& onSignal);

    /// Whether one that asks for an end has arrived and is still to be taken.
    static bool IsEndAsked();

    /// Stops the process as SIGTSTP does when nobody watches it, and returns once it goes on.
    static void Suspend();

  private:
    Descriptor descriptor_;
};

}  // namespace veldrin

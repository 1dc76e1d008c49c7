// Threads that take no signals: the program waits for them elsewhere.
#pragma once

#include <csignal>

namespace platform {

/// While it lives, no signal comes to this thread, and none ever to the threads that it starts.
class SignalsHeld {
  public:
    SignalsHeld() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &former_);
    }
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &former_, nullptr); }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;

  private:
    sigset_t former_{};
};

}  // namespace platform

#include "host/signals.h"

#include <sys/signalfd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <initializer_list>

namespace veldrin {

namespace {

constexpr std::array kEnds = {SIGTERM, SIGINT, SIGHUP};

}  // namespace

Signals::Signals() {
    sigset_t watched;
    sigemptyset(&watched);
    for (const int number : {SIGTERM, SIGINT, SIGHUP, SIGTSTP, SIGCONT}) {
        sigaddset(&watched, number);
    }
    pthread_sigmask(SIG_BLOCK, &watched, nullptr);
    descriptor_ = Descriptor(signalfd(-1, &watched, SFD_CLOEXEC | SFD_NONBLOCK));
    // A reader that goes away (veldrin | head) is no reason to stop the music. Nor is a key pressed
    // in the terminal while the shell has it.
    std::signal(SIGPIPE, SIG_IGN);
    // A file that may grow no more is a write that fails.
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGTTIN, SIG_IGN);
}

bool Signals::IsEndAsked() {
    sigset_t arrived;
    return sigpending(&arrived) == 0 && std::any_of(kEnds.begin(), kEnds.end(), [&](int number) {
               return sigismember(&arrived, number) == 1;
           });
}

void Signals::Suspend() {
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTSTP);
    // The signal itself, not SIGSTOP: without a shell that could continue the program it does
    // nothing.
    raise(SIGTSTP);
    pthread_sigmask(SIG_UNBLOCK, &stop, nullptr);
    pthread_sigmask(SIG_BLOCK, &stop, nullptr);
}

void Signals::Take(const std::function<void(int)>& onSignal) {
    signalfd_siginfo info{};
    while (read(Number(), &info, sizeof(info)) == ssize_t{sizeof(info)}) {
        onSignal(static_cast<int>(info.ssi_signo));
    }
}

}  // namespace veldrin

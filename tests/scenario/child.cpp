#include "tests/scenario/child.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <new>

namespace scenario {

namespace {

Progress* SharedProgress() {
    void* const memory =
        mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return memory == MAP_FAILED ? nullptr : new (memory) Progress;
}

std::string FailureOf(int status, unsigned seconds) {
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU) {
        return "did not end within " + std::to_string(seconds) + " s of processor time";
    }
    if (WIFSIGNALED(status)) {
        return "crashed (signal " + std::to_string(WTERMSIG(status)) + ')';
    }
    // So do the sanitizers end a process in which they have found something.
    return WEXITSTATUS(status) == 0
               ? std::string()
               : "crashed (exit status " + std::to_string(WEXITSTATUS(status)) + ')';
}

}  // namespace

void Child::Unmap::operator()(Progress* progress) const {
    munmap(progress, sizeof(Progress));
}

Child::Child(const Work& work, unsigned seconds)
    : progress_(SharedProgress()), output_(std::tmpfile()), seconds_(seconds) {
    if (progress_ == nullptr || output_ == nullptr) {
        return;
    }
    std::fflush(nullptr);  // else the child prints what is still in the buffers once more
    std::cout.flush();
    process_ = fork();
    if (process_ == 0) {
        Run(work);
    }
}

Child::~Child() {
    if (IsStarted() && !hasEnded_) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
}

// Leaves by exit, so that whatever looks for leaks at the end of a process does so here, too.
void Child::Run(const Work& work) noexcept {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit limit{seconds_, seconds_ + 1};
    setrlimit(RLIMIT_CPU, &limit);
    dup2(fileno(output_.get()), STDOUT_FILENO);
    std::cout << std::unitbuf;  // what was printed is there even after a crash
    work(*progress_, std::cout);
    std::exit(0);
}

void Child::Ended(int status) {
    hasEnded_ = true;
    failure_ = FailureOf(status, seconds_);
    ReadOutput();
    output_.reset();
}

void Child::ReadOutput() {
    std::rewind(output_.get());
    std::array<char, 4096> piece{};
    for (std::size_t count = 1; count > 0;) {
        count = std::fread(piece.data(), 1, piece.size(), output_.get());
        printed_.append(piece.data(), count);
    }
}

}  // namespace scenario

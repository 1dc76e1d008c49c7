// A piece of work in a process of its own, so that a crash or a loop without an end stays there.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "tests/scenario/tally.h"

namespace scenario {

class Child {
  public:
    /// What the process does: it says how far it has come, and prints. Whatever it throws is a
    /// crash.
    using Work = std::function<void(Progress& progress, std::ostream& out)>;

    /// Begins at once; IsStarted() tells whether that could be. The process may use so many seconds
    /// of the processor.
    Child(const Work& work, unsigned seconds);
    /// Ends what is still running.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    bool IsStarted() const { return process_ > 0; }
    pid_t Process() const { return process_; }
    /// The process has ended, with that status of waitpid.
    void Ended(int status);
    bool HasEnded() const { return hasEnded_; }

    // These are known once it has ended.

    const Progress& Reached() const { return *progress_; }
    /// All that it has printed.
    const std::string& Output() const { return printed_; }
    /// How it broke off; empty if it came to its end.
    const std::string& Failure() const { return failure_; }

  private:
    void ReadOutput();
    [[noreturn]] void Run(const Work& work) noexcept;

    struct Unmap {
        void operator()(Progress* progress) const;
    };
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<Progress, Unmap> progress_;  ///< in memory that both processes share
    std::unique_ptr<std::FILE, Close> output_;   ///< survives a crash; has no name
    unsigned seconds_;
    pid_t process_ = -1;
    bool hasEnded_ = false;
    std::string printed_;
    std::string failure_;
};

}  // namespace scenario

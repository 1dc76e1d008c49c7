// Some calls into libraries cannot be given up: a share that has gone, a file made so that reading
// it takes for ever. They run on a thread that its owner can leave behind. Such a thread owns all
// that it uses, and the end of the process does not wait for it: the process then ends without
// taking its globals apart, which the thread may still be using.
#pragma once

#include <atomic>

namespace veldrin {

/// Stands for one thread that may be left behind, or for a piece of work on it, as long as it
/// lives. Made before the thread is started and copied into it, so that none goes uncounted.
class Straggler {
  public:
    Straggler() { ++count_; }
    ~Straggler() { --count_; }
    Straggler(const Straggler&) { ++count_; }
    Straggler& operator=(const Straggler&) = delete;

    /// How many there are.
    static int Count() { return count_; }

  private:
    static inline std::atomic<int> count_ = 0;
};

/// Whether any of them is at work, so that the process has to end by _Exit. From any thread.
inline bool HasStragglers() {
    return Straggler::Count() > 0;
}

}  // namespace veldrin

// A thread for work that may never return, such as opening a file on a share that has gone. Its
// owner can always go on without it.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace veldrin {

class Worker {
  public:
    Worker() = default;
    /// Leaves behind what is still under way.
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    /// Begins a piece of work, which must own all that it uses. Where there is no thread to be had,
    /// it is not done, and goes as if it had been.
    void Begin(std::function<void()> work);
    /// Whether the work is done, and what it owned is gone.
    bool IsDone() const;
    /// Waits for that, but no longer than this; answers whether it is done.
    bool WaitFor(std::chrono::nanoseconds longest) const;
    /// Goes on without the work that is under way: it ends when it will, on its own thread.
    void LeaveBehind();

  private:
    struct Shared;

    static void Run(const std::shared_ptr<Shared>& shared);
    void End();

    std::shared_ptr<Shared> shared_;
    std::thread thread_;
};

}  // namespace veldrin

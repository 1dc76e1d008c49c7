#include "host/engine/worker.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <system_error>
#include <utility>

#include "host/engine/stragglers.h"
#include "platform/base/signals_held.h"

namespace veldrin {

/// What both threads hold; whoever is last clears it away.
struct Worker::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    std::function<void()> work;  ///< not begun yet
    bool busy = false;           ///< until it is done
    bool ends = false;
    std::optional<Straggler> straggler;  ///< while it is busy
};

void Worker::Run(const std::shared_ptr<Shared>& shared) {
    std::unique_lock lock(shared->mutex);
    while (true) {
        shared->changed.wait(lock, [&] { return shared->work || shared->ends; });
        if (!shared->work) {
            return;
        }
        std::function<void()> work = std::exchange(shared->work, nullptr);
        lock.unlock();
        work();
        work = nullptr;  // what it owns may take as long to go
        lock.lock();
        shared->busy = false;
        shared->straggler.reset();
        shared->changed.notify_all();
    }
}

Worker::~Worker() {
    End();
}

void Worker::Begin(std::function<void()> work) {
    if (!IsDone()) {
        LeaveBehind();
    }
    try {
        if (shared_ == nullptr) {
            shared_ = std::make_shared<Shared>();
            const platform::SignalsHeld held;
            thread_ = std::thread([shared = shared_] { Run(shared); });
        }
    } catch (const std::system_error&) {
        shared_.reset();
        return;
    }
    const std::lock_guard lock(shared_->mutex);
    shared_->work = std::move(work);
    shared_->busy = true;
    shared_->straggler.emplace();
    shared_->changed.notify_all();
}

bool Worker::IsDone() const {
    return WaitFor(std::chrono::nanoseconds(0));
}

bool Worker::WaitFor(std::chrono::nanoseconds longest) const {
    if (shared_ == nullptr) {
        return true;
    }
    std::unique_lock lock(shared_->mutex);
    return shared_->changed.wait_for(lock, longest, [&] { return !shared_->busy; });
}

void Worker::LeaveBehind() {
    End();
    shared_.reset();
}

void Worker::End() {
    if (shared_ == nullptr) {
        return;
    }
    {
        const std::lock_guard lock(shared_->mutex);
        shared_->ends = true;
        shared_->changed.notify_all();
    }
    if (IsDone()) {
        thread_.join();
    } else {
        thread_.detach();
    }
}

}  // namespace veldrin

#include "host/given_reader.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

#include "host/engine/stragglers.h"
#include "platform/base/signals_held.h"

namespace veldrin {

/// What both threads hold; whoever is last clears it away.
struct GivenReader::Shared {
    const Descriptor event{eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)};
    std::mutex mutex;
    std::condition_variable changed;
    // Guarded by the mutex.
    GivenPaths waiting;
    bool hasLine = false;
    bool done = false;
    bool wanted = true;

    /// Answers whether anybody wants more.
    template <class Change>
    bool Tell(Change change) {
        const std::lock_guard lock(mutex);
        change();
        changed.notify_all();
        const std::uint64_t one = 1;
        static_cast<void>(!write(event.Number(), &one, sizeof(one)));
        return wanted;
    }
};

void GivenReader::Run(Shared& shared, const std::vector<std::string>& paths,
                      const GivenRules& rules) {
    try {
        UnfoldGiven(
            paths, rules,
            {[&shared](std::string line, const std::string& place) {
                 return shared.Tell([&] {
                     shared.waiting.lines.push_back(std::move(line));
                     shared.waiting.places.push_back(place);
                     shared.hasLine = true;
                 });
             },
             [&shared](std::string complaint) {
                 shared.Tell([&] { shared.waiting.complaints.push_back(std::move(complaint)); });
             }});
    } catch (const std::exception&) {  // no memory to be had
    }
    shared.Tell([&shared] { shared.done = true; });
}

GivenReader::GivenReader(std::vector<std::string> paths, GivenRules rules)
    : shared_(std::make_shared<Shared>()) {
    const auto run = [shared = shared_, paths = std::move(paths), rules = std::move(rules),
                      straggler = Straggler()] { Run(*shared, paths, rules); };
    try {
        const platform::SignalsHeld held;
        std::thread(run).detach();
    } catch (const std::exception&) {  // no thread to be had
        run();
    }
}

GivenReader::~GivenReader() {
    const std::lock_guard lock(shared_->mutex);
    shared_->wanted = false;
}

void GivenReader::WaitForFirst(std::chrono::milliseconds more) {
    std::unique_lock lock(shared_->mutex);
    shared_->changed.wait(lock, [this] { return shared_->hasLine || shared_->done; });
    shared_->changed.wait_for(lock, more, [this] { return shared_->done; });
}

void GivenReader::WaitForAll() {
    std::unique_lock lock(shared_->mutex);
    shared_->changed.wait(lock, [this] { return shared_->done; });
}

void GivenReader::WaitForAll(std::chrono::milliseconds longest) {
    std::unique_lock lock(shared_->mutex);
    shared_->changed.wait_for(lock, longest, [this] { return shared_->done; });
}

GivenPaths GivenReader::Take() {
    const std::lock_guard lock(shared_->mutex);
    std::uint64_t count = 0;
    static_cast<void>(!read(shared_->event.Number(), &count, sizeof(count)));
    return std::exchange(shared_->waiting, {});
}

bool GivenReader::IsDone() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->done && shared_->waiting.lines.empty() && shared_->waiting.complaints.empty();
}

int GivenReader::Number() const {
    return shared_->event.Number();
}

}  // namespace veldrin

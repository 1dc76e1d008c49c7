#include "platform/desktop/drops.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/base/signals_held.h"
#include "platform/desktop/xspf.h"
#include "platform/files/unfold.h"

namespace platform::desktop {

namespace {

/// As many as can be looked into while nobody notices.
constexpr std::size_t kFilesATime = 16;

}  // namespace

/// What both threads hold; whoever is last clears it away.
struct Drops::Work {
    std::mutex mutex;
    // Guarded by the mutex.
    std::deque<std::string> files;
    std::vector<std::string> remarks;
    bool done = false;
    std::function<void()> wake;  ///< empty once nobody waits any more

    /// False: nobody waits.
    template <class Change>
    bool Tell(Change change) {
        const std::lock_guard lock(mutex);
        const bool wakes = files.empty();
        change();
        if (wakes && wake) {
            wake();
        }
        return wake != nullptr;
    }

    void Run(const std::vector<std::string>& paths) {
        const auto file = [this](const std::string& path) {
            return Tell([&] { files.push_back(path); });
        };
        const auto folder = [this](const std::string& path, const std::vector<std::string>& names) {
            return Tell([&] {
                for (const std::string& name : names) {
                    files.push_back(path.ends_with('/') ? path + name : path + "/" + name);
                }
            });
        };
        Unfolder unfolder({Below::kIncluded, LocationsOfXspf, {}, "file"}, {file, folder});
        for (const std::string& path : paths) {
            unfolder.Unfold(path, path);
        }
        Tell([&] { remarks = unfolder.Remarks(); });
    }
};

Drops::~Drops() {
    for (const Drop& drop : drops_) {
        const std::lock_guard lock(drop.work->mutex);
        drop.work->wake = nullptr;
    }
}

void Drops::Take(DropPlace place, std::vector<std::string> paths) {
    if (drops_.empty() && std::none_of(paths.begin(), paths.end(), IsFolded)) {
        Report(place, std::move(paths));
        return;
    }
    auto work = std::make_shared<Work>();
    work->wake = wake_;
    drops_.push_back({place, work});
    const auto run = [work, paths = std::move(paths)] {
        try {
            work->Run(paths);
        } catch (const std::exception&) {  // no memory to be had
        }
        const std::lock_guard lock(work->mutex);
        work->done = true;
        if (work->wake) {
            work->wake();
        }
    };
    try {
        const SignalsHeld held;
        std::thread(run).detach();
    } catch (const std::exception&) {  // no thread to be had
        run();
    }
}

void Drops::Turn() {
    if (drops_.empty() || !events_.IsEmpty()) {
        return;
    }
    const Drop drop = drops_.front();
    std::vector<std::string> files;
    std::vector<std::string> remarks;
    bool done = false;
    {
        const std::lock_guard lock(drop.work->mutex);
        auto& waiting = drop.work->files;
        const auto end =
            waiting.begin() + static_cast<std::ptrdiff_t>(std::min(waiting.size(), kFilesATime));
        std::move(waiting.begin(), end, std::back_inserter(files));
        waiting.erase(waiting.begin(), end);
        done = drop.work->done && waiting.empty();
        if (done) {
            remarks = std::move(drop.work->remarks);
        }
    }
    if (done) {
        drops_.pop_front();
    }
    if (!files.empty()) {
        Report(drop.place, std::move(files));
    } else if (done && !drops_.empty()) {
        wake_();
    }
    for (const std::string& remark : remarks) {
        if (notice_) {
            notice_(remark);
        }
    }
}

void Drops::Report(const DropPlace& place, std::vector<std::string> paths) {
    if (const auto ptScreen = find_(place)) {
        events_.Push(FilesDropped{place.window, *ptScreen, std::move(paths)});
    }
}

}  // namespace platform::desktop

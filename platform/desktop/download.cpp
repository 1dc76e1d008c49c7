#include "platform/desktop/download.h"

#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/base/signals_held.h"

namespace platform::desktop {

namespace {

/// What both threads hold; whoever is last clears it away.
struct Fetching {
    std::mutex mutex;
    bool done = false;
    std::optional<std::string> page;
    std::function<void()> wake;  ///< empty once nobody waits any more
};

std::optional<std::string> Fetched(const Fetcher& fetcher, const std::string& address, bool fresh) {
    try {
        return fetcher(address, fresh);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

bool Start(const Fetcher& fetcher, const std::string& address, bool fresh,
           const std::shared_ptr<Fetching>& fetching) {
    const auto fetch = [fetcher, address, fresh, fetching] {
        auto page = Fetched(fetcher, address, fresh);
        const std::lock_guard lock(fetching->mutex);
        fetching->page = std::move(page);
        fetching->done = true;
        if (fetching->wake) {
            fetching->wake();
        }
    };
    try {
        const SignalsHeld held;
        std::thread(fetch).detach();
        return true;
    } catch (const std::exception&) {  // no thread to be had
        return false;
    }
}

}  // namespace

std::optional<std::string> FetchMeanwhile(const Fetcher& fetcher, const std::string& address,
                                          bool fresh, std::chrono::milliseconds longest,
                                          const Waiting& waiting) {
    const auto end = std::chrono::steady_clock::now() + longest;
    const auto fetching = std::make_shared<Fetching>();
    fetching->wake = waiting.wake;
    if (!Start(fetcher, address, fresh, fetching)) {
        return std::nullopt;
    }
    const auto isDone = [&] {
        const std::lock_guard lock(fetching->mutex);
        return fetching->done;
    };
    while (!isDone()) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0 || !waiting.pass(left)) {
            break;
        }
    }
    const std::lock_guard lock(fetching->mutex);
    fetching->wake = nullptr;
    return std::move(fetching->page);
}

}  // namespace platform::desktop

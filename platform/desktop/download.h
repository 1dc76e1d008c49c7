// A page is fetched on a thread of its own, while this one goes on with something.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace platform::desktop {

using Fetcher = std::function<std::optional<std::string>(const std::string& address, bool fresh)>;

/// What the fetcher answers; nothing after `longest`, and then it is left to itself. Until then
/// `pass` is called again and again with the time that is left: it passes some of it, until the
/// function that it is given is called, from any thread. False: the wait is over, whatever comes.
struct Waiting {
    std::function<bool(std::chrono::milliseconds)> pass;
    std::function<void()> wake;
};
std::optional<std::string> FetchMeanwhile(const Fetcher& fetcher, const std::string& address,
                                          bool fresh, std::chrono::milliseconds longest,
                                          const Waiting& waiting);

}  // namespace platform::desktop

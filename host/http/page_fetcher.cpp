#include "host/http/page_fetcher.h"

namespace veldrin {

std::optional<std::string> PageFetcher::Fetch(const std::string& address, bool fresh) {
    const auto now = [] { return std::chrono::steady_clock::now(); };
    HttpHeaders headers;
    {
        const std::lock_guard lock(mutex_);
        if (fresh) {
            cache_.Forget(address);
            headers = {{"cache-control", "no-cache"}, {"pragma", "no-cache"}};
        } else if (auto copy = cache_.Find(address, now())) {
            return copy;
        }
    }
    Http* const http = getHttp_();
    auto answer = http == nullptr ? std::nullopt : http->Get(address, headers, limits_);
    if (!answer || answer->status != 200) {
        return std::nullopt;
    }
    const std::lock_guard lock(mutex_);
    cache_.Keep(address, *answer, now());
    return std::move(answer->body);
}

}  // namespace veldrin

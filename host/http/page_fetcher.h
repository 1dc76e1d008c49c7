// Pages for whoever shows them: asked for by the network, or copies of them.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "host/http/http.h"
#include "host/http/page_cache.h"

namespace veldrin {

/// From several threads, too.
class PageFetcher {
  public:
    /// Null where there is no network. Asked for when it is first needed, on a thread that may
    /// wait.
    using GetHttp = std::function<Http*()>;

    PageFetcher(GetHttp getHttp, HttpLimits limits)
        : getHttp_(std::move(getHttp)), limits_(limits) {}

    /// A page that is there (200); nothing for any other answer. `fresh`: no copy, neither kept
    /// here nor on the way.
    std::optional<std::string> Fetch(const std::string& address, bool fresh);

  private:
    const GetHttp getHttp_;
    const HttpLimits limits_;
    std::mutex mutex_;
    PageCache cache_;
};

}  // namespace veldrin

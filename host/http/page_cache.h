// Copies of pages, in memory, for as long as those who gave them allow. It has no clock of its own.
#pragma once

#include <chrono>
#include <list>
#include <optional>
#include <string>

#include "host/http/http.h"

namespace veldrin {

class PageCache {
  public:
    using Moment = std::chrono::steady_clock::time_point;

    /// The copy, if it still may be shown.
    std::optional<std::string> Find(const std::string& address, Moment now) const;
    void Forget(const std::string& address);
    /// Keeps a copy, in the place of a former one, if the answer allows one and there is room: the
    /// oldest copies go.
    void Keep(const std::string& address, const HttpAnswer& answer, Moment now);

  private:
    struct Copy {
        std::string address;
        std::string page;
        Moment end;

        std::size_t Size() const { return address.size() + page.size(); }
    };

    std::list<Copy> copies_;  ///< oldest first
    std::size_t size_ = 0;    ///< of all copies
};

}  // namespace veldrin

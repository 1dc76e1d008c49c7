// What a user does while a file is being opened: kept to be done after it, but of several presses
// of the same transport key only the first, so that impatience does not skip as many items.
#pragma once

#include <set>

#include "platform/driver.h"

namespace veldrin {

class KeptInput {
  public:
    /// Whether the event is to be kept. Called with all of them, in their order.
    bool Keeps(const platform::DriverEvent& event);
    /// Whether one of them asked to close a window.
    bool AskedToClose() const { return askedToClose_; }

  private:
    bool KeepsKey(const platform::KeyChanged& key);

    std::set<platform::Long> pressed_;       ///< transport keys
    std::set<platform::Long> released_;      ///< since, of them
    std::set<platform::Handle> systemWide_;  ///< keys that work wherever the focus is
    bool textIsDropped_ = false;             ///< belongs to a key that was
    bool askedToClose_ = false;
};

}  // namespace veldrin

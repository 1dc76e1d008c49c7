// Folders and mounted file systems whose files were waited for in vain, so that not every file of a
// share that has gone is waited for as long.
#pragma once

#include <chrono>
#include <set>
#include <string>
#include <vector>

#include "platform/files/mounts.h"

namespace veldrin {

class SlowPlaces {
  public:
    /// How long a file may be waited for: 5 seconds, and half a second where the last one was
    /// waited for in vain.
    std::chrono::milliseconds PatienceFor(const std::string& path) const;

    /// The file has been waited for in vain.
    void Note(const std::string& path) { Note(path, platform::MountsHere()); }
    void Note(const std::string& path, const std::vector<platform::Mount>& mounts);
    /// The file has answered, be it that it cannot be played: its place counts as any other again.
    void Forget(const std::string& path);

  private:
    std::set<std::string, std::less<>> places_;  ///< each with a separator at its end
};

}  // namespace veldrin

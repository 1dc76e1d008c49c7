// Unfolds what is given on a thread of its own: on a slow disk a collection of music takes longer
// than anybody waits for a window.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "host/descriptor.h"
#include "host/given_paths.h"

namespace veldrin {

class GivenReader {
  public:
    /// Begins. No signal comes to the thread.
    GivenReader(std::vector<std::string> paths, GivenRules rules);
    /// Leaves behind what is still under way.
    ~GivenReader();
    GivenReader(const GivenReader&) = delete;
    GivenReader& operator=(const GivenReader&) = delete;

    /// Waits until there is a line, or there will be none; then for the rest of it, no longer than
    /// `more`.
    void WaitForFirst(std::chrono::milliseconds more);
    void WaitForAll();
    /// No longer than this.
    void WaitForAll(std::chrono::milliseconds longest);

    /// What has come since the last time.
    GivenPaths Take();
    /// Whether all has been taken.
    bool IsDone() const;

    /// Readable while there is something to be taken, or the end to be noticed, and Take has not
    /// been called since.
    int Number() const;

  private:
    struct Shared;
    static void Run(Shared& shared, const std::vector<std::string>& paths, const GivenRules& rules);

    std::shared_ptr<Shared> shared_;
};

}  // namespace veldrin

// The scratch folder of one scenario: made fresh, and removed with all that is in it unless it is
// to be kept.
#pragma once

#include <optional>
#include <string>

namespace scenario {

class Scratch {
  public:
    /// Under $TMPDIR or /tmp; with `keep`, `keep`/`name` (or `name`-2 ... where that exists), which
    /// stays. Path() is empty if it cannot be made.
    Scratch(const std::string& name, const std::optional<std::string>& keep);
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    /// Absolute, raw bytes.
    const std::string& Path() const { return path_; }

  private:
    std::string path_;
    bool kept_;
};

}  // namespace scenario

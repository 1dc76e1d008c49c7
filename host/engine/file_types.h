// Which files can be played is a question to the installed decoders: a table of the known file
// extensions says what each needs, and what GStreamer's registry lacks is left out. The registry is
// a list in memory; no plug-in is loaded for it.
#pragma once

#include <set>
#include <string>

namespace veldrin {

class SupportedTypes {
  public:
    /// Those of the installed decoders; GStreamer must have been started.
    static SupportedTypes Installed();

    /// "*.aac;*.aif;...", sorted.
    std::string Patterns() const;
    /// Whether the name's extension is one of them, ignoring case.
    bool Supports(const std::string& path) const;

  private:
    std::set<std::string, std::less<>> extensions_;
};

}  // namespace veldrin

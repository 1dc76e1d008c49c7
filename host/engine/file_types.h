// Which files can be played is a question to the installed decoders: a table of the known file
// extensions says what each needs, and what GStreamer's registry lacks is left out. The registry is
// a list in memory; no plug-in is loaded for it. The answer is kept in a file, for it changes only
// with the folders that plug-ins lie in, and a start that shall be quick cannot wait for GStreamer.
#pragma once

#include <optional>
#include <string>

#include "host/engine/extensions.h"

namespace veldrin {

class SupportedTypes {
  public:
    /// Those of the installed decoders; GStreamer must have been started.
    static SupportedTypes Installed();
    /// Those of all decoders that there might be. Starts nothing.
    static SupportedTypes Known();
    /// Those that a former run left in `file`; nothing if there is none, or if plug-ins or the
    /// program have changed since.
    static std::optional<SupportedTypes> Remembered(const std::string& file);
    /// Leaves them there for later runs. A file that cannot be written is no loss.
    void Remember(const std::string& file) const;

    /// "*.aac;*.aif;...", sorted.
    std::string Patterns() const;
    /// Whether the name's extension is one of them, ignoring case.
    bool Supports(const std::string& path) const;

  private:
    Extensions extensions_;
};

}  // namespace veldrin

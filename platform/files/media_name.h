// What a name in a list of media means on this disk.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// How names of a list are to be read.
enum class MediaNames {
    kPaths,     ///< as they stand; escapes only where nothing has that name
    kAddresses  ///< escapes first
};

/// Whether it names something that comes over a network: "http://example.org/live".
bool IsStream(std::string_view name);

/// The absolute path of the file or folder that the name stands for, seen from the folder
/// `folder`; none if there is no such thing, or it is neither. Names are tried as they stand, then
/// without blanks at their ends, with escapes undone, with "\" between their parts, and with bytes
/// that are not UTF-8 as Latin-1. `file:` addresses are those of this machine.
std::optional<std::string> PathOfMediaName(std::string_view name, MediaNames names,
                                           const std::string& folder);

}  // namespace platform

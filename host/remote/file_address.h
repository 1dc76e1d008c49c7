// Addresses of files, as the desktop hands them round: "file:///music/a%20b.flac".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veldrin {

/// Of an absolute path of raw bytes; everything but letters, digits and "-._~/" is escaped.
std::string FileAddress(std::string_view absolutePath);

/// The absolute path, raw bytes; nothing if it is not the address of a file on this machine.
std::optional<std::string> PathOfAddress(std::string_view address);

}  // namespace veldrin

// Addresses of files: "file:///music/a%20b.mp3". Everything is bytes: a name need not be UTF-8, and
// escapes stand for bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The path that a `file:` address of no host, of localhost or of `hostName` names; none for all
/// others, and if a zero byte comes out, which no name can hold.
std::optional<std::string> PathOfAddress(std::string_view address, std::string_view hostName);

/// The address of an absolute path: every byte that need not be legible is escaped.
std::string AddressOfPath(std::string_view path);

/// What this machine is called; empty if that cannot be told.
std::string HostName();

}  // namespace platform

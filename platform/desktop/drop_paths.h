// File names out of what is dragged over a window. Everything is bytes: a name need not be UTF-8,
// and escapes stand for bytes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform::desktop {

/// The local files of a list of addresses, a line each; lines that begin with "#" are remarks.
/// `file:` addresses of no host, of localhost and of `hostName` are local; others are left out.
std::vector<std::string> PathsOfUriList(std::string_view list, std::string_view hostName);

/// The same of plain text, where a line may also be a path from the root on.
std::vector<std::string> PathsOfText(std::string_view text, std::string_view hostName);

}  // namespace platform::desktop

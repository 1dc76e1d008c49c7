// Paths as people write them, made whole. Raw bytes: a name need not be UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The path as seen from the folder `base` (absolute): absolute, "." taken out, no symbolic link
/// resolved, no separator at the end but that of "/". ".." is taken out with the name in front of
/// it, unless that is a link: what is above the place where it leads to, the system knows.
std::string AbsolutePath(std::string_view path, std::string_view base);

}  // namespace platform

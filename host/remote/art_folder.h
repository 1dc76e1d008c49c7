// Pictures of songs as files, for others to show: named by what is in them, and only the latest few
// of them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veldrin {

inline constexpr std::size_t kMostPictures = 16;

/// The ending for a picture's bytes; empty if they are no picture that others can be expected to
/// show.
std::string_view EndingOf(std::string_view picture);

/// Puts the picture into the folder, which is made if need be, unless it is there; of all that were
/// put there the oldest go. Answers its path; nothing if it is no picture, or cannot be written.
std::optional<std::string> KeepPicture(const std::string& folder, std::string_view picture);

}  // namespace veldrin

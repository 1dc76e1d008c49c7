// Words as text, whatever they came in: files of all sorts, tags, answers of strangers.
#pragma once

#include <string>
#include <string_view>

namespace veldrin {

/// More is no song.
inline constexpr std::size_t kMostWords = std::size_t{1} << 20U;  // bytes

/// The words as valid UTF-8 with LF between lines, without NULs, empty lines at either end and
/// blanks at the very end. The bytes are UTF-8, else code page 1252, or UTF-16 where a mark at
/// their beginning says so. Empty if there are more than kMostWords.
std::string CleanWords(std::string_view bytes);

/// Clean words without what an .lrc file has besides: time stamps at the beginning of lines and
/// within them, and lines that tell artist, length and the like.
std::string WithoutTimes(std::string_view words);

}  // namespace veldrin

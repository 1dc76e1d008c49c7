// Lists of files as other players write them: m3u, pls, cue sheets. What stands in one may be
// damaged or hostile; whatever it is, the answer is the names that can be made out. Names are raw
// bytes, as they stand there.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

enum class MediaListKind { kM3u, kPls, kXspf, kCue };

/// By the ending of the name, ignoring case: m3u and m3u8, pls, xspf, cue. None for other files.
std::optional<MediaListKind> MediaListKindOf(std::string_view path);

inline constexpr std::size_t kLongestMediaList = std::size_t{64} << 20U;  ///< bytes of a file
inline constexpr std::size_t kLongestMediaName = std::size_t{64} << 10U;  ///< longer: left out
inline constexpr std::size_t kMostMediaNames = 1'000'000;                 ///< none are taken behind

// Each reads a whole file, in UTF-8 with or without a mark at its front, in UTF-16 with one, or in
// whatever else the names on this disk are in. Lines end in LF, CR LF or CR.

/// Every line but empty ones and remarks. Blanks at the ends are part of it.
std::vector<std::string> NamesInM3u(std::string_view bytes);

/// The values of File1, File2 and so on, in the order of the numbers.
std::vector<std::string> NamesInPls(std::string_view bytes);

/// The files of a cue sheet. A file with several tracks stands there once; nothing if no track
/// stands there.
std::optional<std::vector<std::string>> NamesInCue(std::string_view bytes);

}  // namespace platform

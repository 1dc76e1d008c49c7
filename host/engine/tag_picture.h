// The picture that a music file has embedded in its tags.
#pragma once

#include <string>

namespace veldrin {

/// Larger ones are passed over.
inline constexpr long kMostPictureBytes = 4L * 1024 * 1024;

/// The bytes of the picture as they stand there, that of the front cover if there are several;
/// empty if there is none. Within a second, as all that is read from tags.
std::string ReadPicture(const std::string& path);

}  // namespace veldrin

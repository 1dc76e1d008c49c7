// Finds pieces within pieces within pieces. The demuxers of MP4 and Matroska call themselves for
// each level, and the stack of their thread holds some ten thousand; files of music have ten.
#pragma once

#include <string_view>

namespace veldrin {

/// Whether these bytes are one whole piece of such a file, with its header, and have more levels
/// than a demuxer should be trusted with.
bool NestsTooDeep(std::string_view piece);

}  // namespace veldrin

// Finds the end of the sound in a file that does not end with it. Behind the sound there may be
// megabytes of something else, such as the zeros of a download that was never finished, and some
// demuxers look through all of it before they give the first sound: in steps of 8 bytes, or again
// and again from further back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace veldrin {

/// Bytes from the file's start up to where a demuxer should take it to end. Nothing if that is the
/// file's own end, or if the file is of a kind that needs no help. Looks at WAV, AIFF and Ogg.
std::optional<std::int64_t> EndOfSound(const std::string& path);

}  // namespace veldrin

// The length of an AAC stream without a container ("ADTS", files named .aac). Nothing in such a
// file tells it, and the decoder only guesses it after a while, so the frames are counted.
#pragma once

#include <string>

#include "host/engine/tag_file.h"
#include "host/engine/tag_stream.h"

namespace veldrin {

/// All 0 if the file is no such stream.
SoundFacts ReadAdtsFacts(const std::string& path, const TagLimits& limits);

}  // namespace veldrin

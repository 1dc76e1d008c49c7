// Reads how loud a file is by its tags. TagLib reads them for all formats alike: the decoders know
// them under some of their names only, and Opus' own ones not at all.
#pragma once

#include <string>

#include "host/engine/loudness.h"

namespace veldrin {

/// Within a second, as all readings of tags; on any thread.
LevelTags ReadLevelTags(const std::string& path);

}  // namespace veldrin

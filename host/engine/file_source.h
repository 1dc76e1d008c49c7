// The element that reads the file for a stream.
#pragma once

#include <string>

#include "host/engine/gst_ptr.h"

namespace veldrin {

/// A new element that puts out the bytes of the file, floating; null if there is none installed.
/// What lies behind the sound and would hold up the demuxer (see EndOfSound) is kept from it.
GstElement* MakeFileSource(const std::string& path);

}  // namespace veldrin

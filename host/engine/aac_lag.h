// A decoder of AAC that puts a wrong time on what it decodes, and what makes up for it.
#pragma once

#include "host/engine/gst_ptr.h"

namespace veldrin {

/// To be called for each element that is to decode a file, before any data reach it.
void MendAacTimes(GstElement* element);

}  // namespace veldrin

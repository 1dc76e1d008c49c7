// The elements that bring an item to its loudness.
#pragma once

#include <string>
#include <vector>

#include "host/engine/gst_ptr.h"
#include "host/engine/loudness.h"

namespace veldrin {

/// New elements for the item at this path, to be linked one behind the other; they take and give
/// 32-bit float, interleaved. Reads the item's tags, for less than a second. None for kOff, and if
/// nothing can be changed for want of a plug-in.
///
/// They are no bin: a pipeline that is started takes the bins in it back to rest on the way, and
/// with them what has been made ready for data before.
///
/// They multiply the samples, and nothing else, as long as these stay within full scale; from the
/// first one that would not, which a false or unknown peak can bring about, the rest of the item is
/// rounded off. An item whose peak is unknown and that is made louder is rounded off from its
/// beginning.
std::vector<ElementPtr> MakeLeveller(const std::string& path, Loudness loudness);

}  // namespace veldrin

// The desktop's sound device: GStreamer's best output that can be opened, in a pipeline of its own
// that goes on playing from one item to the next.
#pragma once

#include <memory>
#include <string>

#include "host/engine/drain.h"

namespace veldrin {

struct OpenedDevice {
    std::unique_ptr<Drain> drain;  ///< empty: there is none
    std::string name;              ///< its description
};

/// Looks for a device and opens it. May last as long as a sound server does not answer.
OpenedDevice OpenDevice();

}  // namespace veldrin

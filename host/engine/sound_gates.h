// Holds back what elements within the decoder put out until the decoder is linked to the rest. Some
// elements begin on a thread of their own while the decoder is still at it, find nothing linked and
// give up, for good and without a word.
#pragma once

#include <mutex>
#include <vector>

#include "host/engine/gst_ptr.h"

namespace veldrin {

class SoundGates {
  public:
    /// Closes a gate at each pad of the element that puts out decoded sound.
    void CloseFor(GstElement* element);
    void OpenAll();

  private:
    struct Gate {
        PadPtr pad;
        gulong probe;
    };
    std::mutex mutex_;  // the decoder works on several threads
    std::vector<Gate> gates_;
    bool open_ = false;  // for good
};

}  // namespace veldrin

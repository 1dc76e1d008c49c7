// Tempo and pitch. What comes out is not transparent even where both are at rest, so it is only in
// the way of the sound while one of them is not.
#pragma once

#include <cstdint>
#include <deque>
#include <span>
#include <vector>

#include "host/engine/effects.h"
#include "host/engine/element_line.h"
#include "host/engine/frames.h"

namespace veldrin {

class Stretch {
  public:
    Stretch();

    /// Whether the plug-in behind it is installed. If not, it is not to be used.
    bool IsUsable() const { return element_ != nullptr; }

    /// Begins with the sound of this rate whose first frame is the read one of this number.
    void Begin(int rate, std::int64_t from);
    /// The settings for what is sent from now on.
    void Set(const Effects& effects);
    /// Sends frames in; what comes out waits to be taken.
    void Send(std::span<const float> frames);
    /// Frames that wait to be taken.
    std::size_t Ready() const { return ready_.size() / kSides - taken_; }

    /// A run of frames that were taken at one tempo.
    struct Taken {
        std::size_t frames = 0;
        double from = 0;      ///< the read frame that is heard in the first one
        double perFrame = 0;  ///< how many of the read ones are heard in each
    };
    /// Puts such a run behind `to`, `most` frames at most, not more than are ready.
    Taken Take(std::vector<float>& to, std::size_t most);
    /// The read frame that is heard in the next one.
    double Place() const { return place_; }

  private:
    struct Run {
        std::size_t frames;
        double perFrame;
    };
    ElementLine line_;
    GstElement* element_;  // owned by the line
    double tempo_ = 1.0;
    std::vector<float> ready_;
    std::size_t taken_ = 0;  // frames of it
    std::deque<Run> runs_;   // of what is ready
    double place_ = 0;
};

}  // namespace veldrin

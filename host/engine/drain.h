// Drain is where frames end: a sound device, silence in real time, or a WAV file. It takes them at
// its own pace, which is the only clock of the whole engine, and says how many have been heard.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>

#include "host/engine/frames.h"

namespace veldrin {

class WavWriter;

/// A wait that another thread can end.
class Pace {
  public:
    /// Returns at this time, or when Break is called meanwhile.
    void Until(std::chrono::steady_clock::time_point time);
    void Break();

  private:
    std::mutex mutex_;
    std::condition_variable broken_;
    bool breaks_ = false;
};

class Drain {
  public:
    virtual ~Drain() = default;

    /// Begins to take frames of this rate; the counting begins anew. False if it cannot.
    virtual bool Begin(int rate) = 0;
    /// Takes frames, and returns when there is room for more. False: it has failed, and is of no
    /// use any more.
    virtual bool Write(std::span<const float> frames) = 0;
    /// How many frames have been heard of those that were taken, at this moment.
    virtual std::int64_t Heard() = 0;
    /// Nothing will be taken for a while; the next Write goes on from here.
    virtual void Rest() {}

    /// How much it is best given at once.
    virtual Time Portion() const = 0;
};

/// Silence, kept in time by a pace that outlives it.
std::unique_ptr<Drain> MakeSilence(Pace& pace);
/// Writes to a file that outlives it, as fast as there is something to be written.
std::unique_ptr<Drain> MakeFileDrain(WavWriter& writer);

}  // namespace veldrin

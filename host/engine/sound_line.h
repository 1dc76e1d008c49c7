// SoundLine is the thread that plays: it takes frames from the playout and writes them to the
// output, which sets the pace, from the first item of a run to the last. It is told what is to be
// heard and says what is; neither ever waits for the device or a file.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

#include "host/engine/audio_output.h"
#include "host/engine/effects.h"
#include "host/engine/playout.h"
#include "host/engine/timeline.h"

namespace veldrin {

class SoundLine {
  public:
    /// GStreamer must have been started.
    explicit SoundLine(std::shared_ptr<AudioOutput> output);
    /// Breaks off what is being heard. A thread whose device does not answer is left behind.
    ~SoundLine();
    SoundLine(const SoundLine&) = delete;
    SoundLine& operator=(const SoundLine&) = delete;

    /// Plays an item, which must be of Rate() if that is not 0: behind what is there, or instead.
    /// Instead of it without an item: silence.
    void Play(Playout::Entry entry, bool behind);
    /// The item, which was given to Play, has been jumped in.
    void Jumped(Playout::Entry entry);
    void SetPaused(bool paused);
    void SetGain(double gain);
    void SetEffects(const Effects& effects);
    /// To be called, on any thread, when a decoder has something new.
    std::function<void()> Waker() const;

    /// The rate that an item to be played has to have; 0 for any, as nothing is being heard.
    int Rate() const;
    /// What is being heard at this moment.
    Timeline::Place Heard() const;
    /// How long all that is there to be played will still be heard. Nothing while it is just being
    /// taken over.
    struct Left {
        Time toHear{0};
        Time toWrite{0};  ///< the part of it that the output does not have yet
    };
    std::optional<Left> LeftToHear() const;
    /// Waits until all has been heard, or written to a file, but no longer than this.
    void Finish(std::chrono::milliseconds longest);
    /// Waits until nobody looks for a device any more, but no longer than this; whether that is so.
    bool WaitForLook(std::chrono::nanoseconds longest) const;

  private:
    struct Bell;
    struct Shared;
    static void Run(const std::shared_ptr<Shared>& shared);

    std::shared_ptr<Shared> shared_;
    std::thread thread_;
};

}  // namespace veldrin

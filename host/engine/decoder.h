// Decoder makes frames of a file: reading, decoding, and bringing what comes out to stereo floats
// of one rate. It decodes a few tenths of a second ahead, on threads of its own, and waits for
// somebody to take them. It has no clock and no device.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "host/engine/frames.h"
#include "host/engine/gst_ptr.h"
#include "host/engine/sound_gates.h"

namespace veldrin {

class Decoder {
  public:
    struct Plan {
        std::string path;         ///< raw bytes
        int smallestRate = 8000;  ///< what is handed out has the medium's own rate,
        int largestRate = 96000;  ///< or the nearest of these
        std::chrono::milliseconds patience{5000};
        std::shared_ptr<const std::atomic<bool>> givenUp = nullptr;  ///< if somebody may do so
    };

    /// `changed` is called on threads of the decoder when there is something new to be taken, or
    /// the end has been reached. It must not wait.
    explicit Decoder(std::function<void()> changed) : changed_(std::move(changed)) {}
    /// May last as long as the file does not answer.
    ~Decoder();
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    /// Waits until the first sound is decoded, as long as the plan's patience and until it is given
    /// up; False if that never happens. To be called once, on any thread.
    bool Prepare(Plan plan);

    /// The next piece of frames that is decoded, with its time; empty if there is none at present.
    SamplePtr Take();
    /// How many frames have been decoded and not been taken.
    std::int64_t Waiting() const { return waiting_; }
    /// Nothing more will be decoded, since the file or what can be played of it is over.
    bool IsOver() const;

    /// Frames a second of what is taken; known once the first sound is decoded.
    int Rate() const { return rate_; }

    /// Whether one can go to any place of the medium.
    bool Seekable() const { return seekable_; }
    /// The nearest place that one can go to.
    Time Reachable(Time place) const;
    /// Goes to this place of the medium, which must be one of these. False if that cannot be
    /// done. What was decoded and not taken is gone afterwards. May last as long as the file does
    /// not answer. Nothing may be taken meanwhile.
    bool Seek(Time place);

    /// Length of the medium, 0 if unknown.
    Time Length();
    /// Sample rate and channels of the medium; 0 if unknown.
    int MediumRate() const;
    int MediumChannels() const;

  private:
    bool Build();
    bool AddConversion();
    GstElement* Add(const char* factory);
    bool WaitForSound();
    void Note(std::atomic<bool>& what);
    void ReadLength();
    void ReadSeekable();
    void SettleFormat(const GstStructure* medium);
    static void OnElementAdded(GstBin* decoder, GstElement* element, gpointer self);
    static void OnPadAdded(GstElement* decoder, GstPad* pad, gpointer self);
    static void OnNoMorePads(GstElement* decoder, gpointer self);
    static GstPadProbeReturn OnFormat(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn OnSound(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstBusSyncReply OnMessage(GstBus* bus, GstMessage* message, gpointer self);

    const std::function<void()> changed_;
    Plan plan_;
    ElementPtr pipeline_;
    // Owned by the pipeline.
    GstElement* convert_ = nullptr;
    GstElement* format_ = nullptr;
    GstElement* last_ = nullptr;  // where the frames are taken from
    PadPtr entry_;                // where the decoder is linked; its format is that of the medium
    PadPtr exit_;                 // of the format, in times of the medium
    SoundGates gates_;
    std::atomic<int> rate_{0};
    bool seekable_ = true;

    std::mutex mutex_;
    std::condition_variable noted_;  // one of the next three
    std::atomic<bool> sounds_{false};
    std::atomic<bool> ended_{false};
    std::atomic<bool> failed_{false};
    std::atomic<std::int64_t> waiting_{0};
    std::atomic<std::chrono::steady_clock::time_point> failedAt_{};
    std::atomic<bool> lengthChanged_{false};
    std::atomic<Time> length_{};
};

}  // namespace veldrin

// Stream is one item on its way through a pipeline: file, decoder, effects, output. It is first
// prepared, up to the first decoded sound, while another stream may still be playing; the output is
// joined to it only when it is started. So a file that cannot be played never disturbs the one that
// is, and the device passes from one to the next without being closed.
#pragma once

#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "host/engine/audio_output.h"
#include "host/engine/effects.h"
#include "host/engine/gst_ptr.h"
#include "host/engine/loudness.h"

namespace veldrin {

/// Times of the medium and of the pipeline.
using Time = std::chrono::duration<std::int64_t, std::nano>;

/// Holds back what elements within the decoder put out until the decoder is linked to the rest.
/// Some elements begin on a thread of their own while the decoder is still at it, find nothing
/// linked and give up, for good and without a word.
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

class Stream {
  public:
    struct Plan {
        std::string path;  ///< raw bytes
        Effects effects;
        double gain = 1.0;
        Loudness loudness = Loudness::kOff;
        int rate = 0;  ///< the output's sample rate, 0 for any
        Time from{0};  ///< where in the medium to start
        std::chrono::milliseconds patience{5000};
        std::shared_ptr<const std::atomic<bool>> givenUp = nullptr;  ///< if somebody may do so
    };

    /// Waits until the first sound is decoded, as long as the plan's patience and until it is given
    /// up; null if that never happens. On any thread.
    static std::unique_ptr<Stream> Prepare(const Plan& plan);
    ~Stream();
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    /// Joins the output and begins to play, or to be paused at the first sound.
    void Start(AudioOutput& output, bool paused);
    /// Leaves the output to another stream. Nothing sounds after that.
    void Release();

    /// What has happened on the streaming threads since the last call.
    enum class Event { kNothing, kEnded, kFailed, kOutputFailed };
    Event Poll(const AudioOutput& output);

    void SetPaused(bool paused);
    /// Pauses and waits until nothing moves any more, so that Position is exact.
    void Halt();
    /// False if the medium cannot be sought in.
    bool Seek(Time target);
    void Apply(const Effects& effects);
    void SetGain(double gain) { chain_->SetGain(gain); }

    /// Where in the medium the listener is.
    Time Position();
    /// Length of the medium, 0 if unknown.
    Time Length() const { return length_; }
    /// Whether one can go to any place of the medium.
    bool Seekable() const;
    /// Whether tempo and pitch can be changed in this stream.
    bool Stretches() const { return chain_->Stretches(); }
    /// A number of the medium's format, such as "rate" or "channels"; 0 if unknown.
    int FormatNumber(const char* name) const;

  private:
    explicit Stream(const Plan& plan);
    bool Build(const Plan& plan);
    bool WaitForSound(const Plan& plan);
    void ReadLength();
    void ApplyPending();
    bool ReadPosition(Time& pipelineTime);
    static void OnElementAdded(GstBin* decoder, GstElement* element, gpointer self);
    static void OnPadAdded(GstElement* decoder, GstPad* pad, gpointer self);
    static void OnNoMorePads(GstElement* decoder, gpointer self);
    static GstPadProbeReturn OnSoundOut(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn OnData(GstPad* pad, GstPadProbeInfo* info, gpointer self);

    ElementPtr pipeline_;
    BusPtr bus_;
    std::unique_ptr<EffectChain> chain_;
    SoundGates gates_;
    GstElement* output_ = nullptr;  // in the pipeline; owned by the AudioOutput
    bool keepsTime_ = true;         // whether the output knows what is heard at present
    // If not: the time of the latest sound given to it. While paused, that is where it goes on.
    std::atomic<gint64> lastOut_{0};
    gulong probe_ = 0;  // holds the sound back before the start
    Time length_{0};

    // The pipeline's position runs in listening time and goes on evenly over a change of tempo; the
    // medium's is counted from where the tempo was last changed or a seek last led.
    Time anchorMedia_{0};
    Time anchorPipeline_{0};
    double tempo_ = 1.0;
    Time held_{0};  // the last position, for as long as the pipeline has none
    std::chrono::steady_clock::time_point readAt_;  // when it was read
    bool seeking_ = false;
    bool paused_ = false;
    bool settled_ = false;            // the output has once begun to play
    std::optional<Effects> pending_;  // to be applied as soon as there is a position
};

}  // namespace veldrin

// The effects of the engine: their settings, and the chain of elements that carries them out on the
// way from the decoder to the output.
//
// The chain takes up to 63 channels at 10 Hz to 16.8 MHz; anything else is refused before an
// element of it sees the format. It turns what it takes into 32-bit float stereo of 8 to 96 kHz
// first. This is not for comfort: the element behind tempo and pitch ends the whole process when it
// meets 16 channels or more, or a rate of some 192 kHz and above. That element is part of the chain
// only while one of its two effects is away from rest, since it is not transparent at rest; the
// others are, to the bit.
#pragma once

#include <mutex>
#include <vector>

#include "host/engine/gst_ptr.h"

namespace veldrin {

/// The settings as the user sees them. At rest all are 0.
struct Effects {
    int tempo = 0;   ///< percent, -50 to 50
    int pitch = 0;   ///< semitones, -20 to 20
    int echo = 0;    ///< 0 to 6
    int reverb = 0;  ///< 0 to 20
    int bass = 0;    ///< decibels, -15 to 15
    int mid = 0;
    int treble = 0;

    /// Seconds of the medium that pass in a second of listening.
    double TempoFactor() const { return 1.0 + tempo / 100.0; }
    /// Whether the time-stretching element is needed.
    bool Stretches() const { return tempo != 0 || pitch != 0; }
    bool operator==(const Effects&) const = default;
};

class EffectChain {
  public:
    /// Adds the elements to the pipeline, which owns them from then on, and links them. `rate` is
    /// the sample rate that the chain puts out, 0 for the medium's own as far as it is in range.
    /// `leveller`: new elements that get the sound before all effects.
    EffectChain(GstBin* pipeline, const Effects& effects, int rate,
                const std::vector<ElementPtr>& leveller);
    EffectChain(const EffectChain&) = delete;
    EffectChain& operator=(const EffectChain&) = delete;

    /// False if an element without which nothing can be played is missing.
    bool Usable() const { return usable_; }
    /// Where the decoder is linked, unless its format is refused. Its caps are those of the medium.
    GstPad* Entry() const { return entry_.get(); }
    /// Between the format and the first effect: what is sent from here towards the file is in times
    /// of the medium.
    GstPad* Gate() const { return gate_.get(); }
    /// The last element, to which the output is linked.
    GstElement* Last() const { return volume_; }
    /// Its source pad.
    GstPad* Exit() const { return exit_.get(); }
    /// Whether the time-stretching element is in the chain, and with it the pipeline's times are
    /// those of listening and not those of the medium.
    bool Stretches() const { return stretch_ != nullptr; }
    /// The tempo that the pipeline's times are to be multiplied with, 1 without that element.
    double TempoFactor() const;

    /// Makes the chain ready for data. The pipeline would not know that this comes before the
    /// decoder, which is not linked to it yet.
    void Wake();

    /// Takes new settings over. The elements get them as soon as no data pass them, as some of them
    /// are not protected against a change in between.
    void Apply(const Effects& effects);
    /// The volume, 1 leaves the sound as it is.
    void SetGain(double gain);

  private:
    static GstPadProbeReturn OnFormat(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    static GstPadProbeReturn OnIdle(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    GstElement* Add(GstBin* pipeline, GstElement* element);
    GstElement* Add(GstBin* pipeline, const char* factory);
    void Configure(const Effects& effects) const;

    bool usable_ = true;
    // Owned by the pipeline; null where the plug-in is missing.
    std::vector<GstElement*> elements_;
    GstElement* convert_ = nullptr;
    GstElement* stretch_ = nullptr;
    GstElement* echo_ = nullptr;
    GstElement* reverb_ = nullptr;
    GstElement* equaliser_ = nullptr;
    GstElement* preamp_ = nullptr;
    GstElement* limiter_ = nullptr;
    GstElement* volume_ = nullptr;
    PadPtr entry_;
    PadPtr gate_;
    PadPtr exit_;

    mutable std::mutex mutex_;
    Effects effects_;       // guarded by mutex_
    bool waiting_ = false;  // guarded by mutex_: a probe is waiting for its turn
};

/// Whether the plug-in behind tempo and pitch is installed.
bool CanStretch();

}  // namespace veldrin

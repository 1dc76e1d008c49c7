#include "host/engine/effects.h"

#include <gst/base/gstbasetransform.h>

#include <algorithm>
#include <cmath>

namespace veldrin {

namespace {

constexpr const char* kStretchElement = "pitch";

// What can be mixed down and resampled. The converter ends the process when it meets more channels,
// and a rate beyond these makes the resampler lay out tables, or put out pieces, of hundreds of
// megabytes.
constexpr const char* kAccepted = "audio/x-raw, channels=(int)[1,63], rate=(int)[10,16777216]";

// Seconds of sound that go through the chain at once. Decoders give a quarter of it, and each trip
// through a dozen elements that the processor has forgotten in between costs more than the sound.
// With more, a moved slider would be heard late. A decoder may also give an hour at once, if the
// rate is low enough: it has to be cut up before the resampler makes a thousand times as much of
// it.
constexpr const char* kGathered = "1/10";

// The delay buffer is laid out once, from the longest delay; later changes of the delay are cut to
// it.
constexpr guint64 kEchoStep = 100 * GST_MSECOND;
constexpr guint64 kLongestEcho = 6 * kEchoStep;
constexpr double kEchoIntensity = 0.5;
constexpr double kEchoFeedback = 0.35;  // each repetition is 9 dB quieter than the one before

// The reverberation takes from the direct sound what it adds; the preamplifier makes up for that.
constexpr double kReverbPerStep = 0.025;
constexpr double kSmallestRoom = 0.5;
constexpr double kRoomPerStep = 0.015;

// The equaliser goes from -24 to +12 dB: cuts are taken as they are, boosts are drawn together.
constexpr double kLargestBoost = 12.0;
constexpr double kSliderEnd = 15.0;
constexpr double kBoostTakenBack = 1.0 / 6.0;

double BandGain(int decibels) {
    return decibels < 0 ? decibels : decibels * kLargestBoost / kSliderEnd;
}

/// Sends every second channel to the left and the others to the right, all at the same share. The
/// rows are the channels that come out.
void MixChannelsWithoutPlaces(GstElement* convert, int channels) {
    GValue matrix = G_VALUE_INIT;
    g_value_init(&matrix, GST_TYPE_ARRAY);
    for (int side = 0; side < 2; ++side) {
        GValue row = G_VALUE_INIT;
        g_value_init(&row, GST_TYPE_ARRAY);
        const int count = (channels + 1 - side) / 2;
        for (int channel = 0; channel < channels; ++channel) {
            GValue share = G_VALUE_INIT;
            g_value_init(&share, G_TYPE_FLOAT);
            g_value_set_float(&share, channel % 2 == side ? 1.0F / static_cast<float>(count) : 0);
            gst_value_array_append_and_take_value(&row, &share);
        }
        gst_value_array_append_and_take_value(&matrix, &row);
    }
    g_object_set_property(G_OBJECT(convert), "mix-matrix", &matrix);
    g_value_unset(&matrix);
}

double FromDecibels(double decibels) {
    return std::pow(10.0, decibels / 20.0);
}

}  // namespace

bool CanStretch() {
    GstElementFactory* factory = gst_element_factory_find(kStretchElement);
    if (factory == nullptr) {
        return false;
    }
    gst_object_unref(factory);
    return true;
}

EffectChain::EffectChain(GstBin* pipeline, const Effects& effects, int rate,
                         const std::vector<ElementPtr>& leveller)
    : effects_(effects) {
    GstElement* entrance = Add(pipeline, "capsfilter");
    convert_ = Add(pipeline, "audioconvert");
    GstElement* gather = Add(pipeline, "audiobuffersplit");
    GstElement* resample = Add(pipeline, "audioresample");
    GstElement* format = Add(pipeline, "capsfilter");
    for (const ElementPtr& element : leveller) {
        Add(pipeline, element.get());
    }
    stretch_ = effects.Stretches() ? Add(pipeline, kStretchElement) : nullptr;
    echo_ = Add(pipeline, "audioecho");
    reverb_ = Add(pipeline, "freeverb");
    equaliser_ = Add(pipeline, "equalizer-3bands");
    preamp_ = Add(pipeline, "volume");
    limiter_ = Add(pipeline, "rglimiter");
    volume_ = Add(pipeline, "volume");
    if (convert_ == nullptr || resample == nullptr || format == nullptr || volume_ == nullptr) {
        usable_ = false;
        return;
    }
    const CapsPtr accepted(gst_caps_from_string(kAccepted));
    g_object_set(entrance, "caps", accepted.get(), nullptr);
    const CapsPtr caps(gst_caps_from_string(
        "audio/x-raw, format=(string)F32LE, layout=(string)interleaved, channels=(int)2, "
        "rate=(int)[8000,96000]"));
    if (rate > 0) {
        gst_caps_set_simple(caps.get(), "rate", G_TYPE_INT, rate, nullptr);
    }
    g_object_set(format, "caps", caps.get(), nullptr);
    if (gather != nullptr) {
        gst_util_set_object_arg(G_OBJECT(gather), "output-buffer-duration", kGathered);
    }
    if (echo_ != nullptr) {
        g_object_set(echo_, "max-delay", kLongestEcho, nullptr);
    }
    Configure(effects);
    for (std::size_t i = 1; i < elements_.size(); ++i) {
        usable_ = usable_ && gst_element_link(elements_[i - 1], elements_[i]);
    }
    entry_.reset(gst_element_get_static_pad(entrance, "sink"));
    const PadPtr toMix(gst_element_get_static_pad(convert_, "sink"));
    gst_pad_add_probe(toMix.get(), GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM, &EffectChain::OnFormat,
                      this, nullptr);
    gate_.reset(gst_element_get_static_pad(format, "src"));
    exit_.reset(gst_element_get_static_pad(volume_, "src"));
}

GstElement* EffectChain::Add(GstBin* pipeline, const char* factory) {
    return Add(pipeline, gst_element_factory_make(factory, nullptr));
}

GstElement* EffectChain::Add(GstBin* pipeline, GstElement* element) {
    if (element != nullptr && gst_bin_add(pipeline, element)) {
        elements_.push_back(element);
    }
    return element;
}

void EffectChain::Wake() {
    std::for_each(elements_.rbegin(), elements_.rend(),
                  [](GstElement* element) { gst_element_set_state(element, GST_STATE_PAUSED); });
}

/// Files of many channels mostly do not say where each belongs. The converter refuses to mix them
/// down unless it is told how, and complains if not even that is said.
GstPadProbeReturn EffectChain::OnFormat(GstPad*, GstPadProbeInfo* info, gpointer self) {
    GstEvent* event = GST_PAD_PROBE_INFO_EVENT(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_CAPS) {
        return GST_PAD_PROBE_OK;
    }
    GstCaps* format = nullptr;
    gst_event_parse_caps(event, &format);
    const GstStructure* structure = gst_caps_get_structure(format, 0);
    int channels = 0;
    guint64 places = 0;
    gst_structure_get_int(structure, "channels", &channels);
    gst_structure_get(structure, "channel-mask", GST_TYPE_BITMASK, &places, nullptr);
    if (channels > 2 && places == 0) {
        MixChannelsWithoutPlaces(static_cast<EffectChain*>(self)->convert_, channels);
        const CapsPtr complete(gst_caps_copy(format));
        gst_caps_set_simple(complete.get(), "channel-mask", GST_TYPE_BITMASK, guint64{0}, nullptr);
        gst_event_unref(event);
        GST_PAD_PROBE_INFO_DATA(info) = gst_event_new_caps(complete.get());
    }
    return GST_PAD_PROBE_OK;
}

double EffectChain::TempoFactor() const {
    const std::lock_guard lock(mutex_);
    return Stretches() ? effects_.TempoFactor() : 1.0;
}

void EffectChain::Apply(const Effects& effects) {
    {
        const std::lock_guard lock(mutex_);
        effects_ = effects;
        if (waiting_) {
            return;
        }
        waiting_ = true;
    }
    // Runs at once, here, if the pad is idle, else after the data that are just passing.
    gst_pad_add_probe(gate_.get(), GST_PAD_PROBE_TYPE_IDLE, &EffectChain::OnIdle, this, nullptr);
}

GstPadProbeReturn EffectChain::OnIdle(GstPad*, GstPadProbeInfo*, gpointer self) {
    auto* chain = static_cast<EffectChain*>(self);
    // Held throughout, so that older settings cannot come in after newer ones.
    const std::lock_guard lock(chain->mutex_);
    chain->waiting_ = false;
    chain->Configure(chain->effects_);
    return GST_PAD_PROBE_REMOVE;
}

void EffectChain::Configure(const Effects& effects) const {
    const double reverbLevel = reverb_ == nullptr ? 0.0 : effects.reverb * kReverbPerStep;
    if (stretch_ != nullptr) {
        g_object_set(stretch_, "tempo", effects.TempoFactor(), "pitch",
                     std::exp2(effects.pitch / 12.0), nullptr);
    }
    if (echo_ != nullptr) {
        const bool on = effects.echo > 0;
        g_object_set(echo_, "delay", on ? kEchoStep * static_cast<guint64>(effects.echo) : 1,
                     "intensity", on ? kEchoIntensity : 0.0, "feedback", on ? kEchoFeedback : 0.0,
                     nullptr);
    }
    if (reverb_ != nullptr) {
        g_object_set(reverb_, "level", reverbLevel, "room-size",
                     kSmallestRoom + effects.reverb * kRoomPerStep, nullptr);
        // Unlike the others it computes all of its echoes for a level of 0 as well: a fifth of what
        // playing costs.
        gst_base_transform_set_passthrough(GST_BASE_TRANSFORM(reverb_), effects.reverb == 0);
    }
    if (equaliser_ != nullptr) {
        g_object_set(equaliser_, "band0", BandGain(effects.bass), "band1", BandGain(effects.mid),
                     "band2", BandGain(effects.treble), nullptr);
    }
    // What an effect adds can exceed full scale. A part of the boost is taken back, and what still
    // goes over is rounded off instead of being cut.
    const double boost = BandGain(std::max({0, effects.bass, effects.mid, effects.treble}));
    if (preamp_ != nullptr) {
        g_object_set(preamp_, "volume",
                     FromDecibels(-boost * kBoostTakenBack) / (1.0 - reverbLevel), nullptr);
    }
    if (limiter_ != nullptr) {
        const bool adds = boost > 0 || effects.echo > 0 || effects.reverb > 0;
        g_object_set(limiter_, "enabled", adds, nullptr);
    }
}

void EffectChain::SetGain(double gain) {
    g_object_set(volume_, "volume", gain, nullptr);
}

}  // namespace veldrin

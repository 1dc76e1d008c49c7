#include "host/engine/effects.h"

#include <gst/base/gstbasetransform.h>

#include <algorithm>
#include <cmath>

#include "host/engine/frames.h"

namespace veldrin {

namespace {

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

// A band moves by so much in a second, in steps that are too small and too close to be heard.
constexpr double kDecibelsASecond = 1000.0;
constexpr int kStepsASecond = 2000;

constexpr double kNearlyZero = 0.001;  // decibels

// What the bands still hold of the sound when they come to rest has died away after this.
constexpr Time kSwing = std::chrono::milliseconds(200);

double BandGain(double decibels) {
    return decibels < 0 ? decibels : decibels * kLargestBoost / kSliderEnd;
}

double FromDecibels(double decibels) {
    return std::pow(10.0, decibels / 20.0);
}

std::array<double, 3> BandsOf(const Effects& effects) {
    return {static_cast<double>(effects.bass), static_cast<double>(effects.mid),
            static_cast<double>(effects.treble)};
}

}  // namespace

EffectChain::EffectChain()
    : echo_(line_.Add("audioecho")),
      reverb_(line_.Add("freeverb")),
      equaliser_(line_.Add("equalizer-3bands")),
      preamp_(line_.Add("volume")),
      limiter_(line_.Add("rglimiter")) {
    if (echo_ != nullptr) {
        g_object_set(echo_, "max-delay", kLongestEcho, nullptr);
    }
}

void EffectChain::Begin(int rate) {
    rate_ = rate;
    fresh_ = true;
    runs_ = false;
    bands_ = BandsOf(effects_);
}

void EffectChain::Set(const Effects& effects) {
    if (effects == effects_) {
        return;
    }
    effects_ = effects;
    if (fresh_) {
        bands_ = BandsOf(effects_);
    }
    if (runs_) {
        Configure();
    }
}

bool EffectChain::IsAtRest() const {
    const auto isZero = [](double band) { return band == 0; };
    return effects_.echo == 0 && effects_.reverb == 0 && BandsOf(effects_) == bands_ &&
           std::all_of(bands_.begin(), bands_.end(), isZero);
}

void EffectChain::MoveBands(double most) {
    const auto targets = BandsOf(effects_);
    for (std::size_t i = 0; i < kBands; ++i) {
        bands_[i] += std::clamp(targets[i] - bands_[i], -most, most);
    }
    Configure();
}

void EffectChain::Process(std::span<float> frames) {
    fresh_ = false;
    const bool rests = IsAtRest();
    rested_ = rests ? rested_ + static_cast<std::int64_t>(frames.size() / kSides) : 0;
    if (line_.IsEmpty() || (rests && (!runs_ || rested_ > FramesIn(kSwing, rate_)))) {
        runs_ = false;
        return;
    }
    if (!runs_) {
        equalises_ = false;
        Configure();
        line_.Begin(rate_);
        Configure();  // beginning anew sets some of it back
        runs_ = true;
    }
    out_.clear();
    const std::size_t step = kSides * static_cast<std::size_t>(rate_ / kStepsASecond);
    for (auto rest = std::span<const float>(frames); !rest.empty();) {
        const bool moves = BandsOf(effects_) != bands_;
        if (moves) {
            MoveBands(kDecibelsASecond / kStepsASecond);
        }
        const std::size_t part = moves ? std::min(step, rest.size()) : rest.size();
        line_.Send(rest.first(part), out_);
        rest = rest.subspan(part);
    }
    // Each of these elements puts out as much as it gets.
    std::copy_n(out_.begin(), std::min(out_.size(), frames.size()), frames.begin());
}

void EffectChain::Configure() {
    const double reverbLevel = reverb_ == nullptr ? 0.0 : effects_.reverb * kReverbPerStep;
    if (echo_ != nullptr) {
        const bool on = effects_.echo > 0;
        g_object_set(echo_, "delay", on ? kEchoStep * static_cast<guint64>(effects_.echo) : 1,
                     "intensity", on ? kEchoIntensity : 0.0, "feedback", on ? kEchoFeedback : 0.0,
                     nullptr);
    }
    if (reverb_ != nullptr) {
        g_object_set(reverb_, "level", reverbLevel, "room-size",
                     kSmallestRoom + effects_.reverb * kRoomPerStep, nullptr);
        // Unlike the others it computes all of its echoes for a level of 0 as well.
        gst_base_transform_set_passthrough(GST_BASE_TRANSFORM(reverb_), effects_.reverb == 0);
    }
    // With all bands at 0 the equaliser lets the sound go by it, and what it still holds of it is
    // missing with a click. It must not find itself there while it is in use.
    equalises_ = equalises_ || bands_ != std::array<double, kBands>{};
    auto [bass, mid, treble] = bands_;
    bass = bass == 0 && equalises_ ? kNearlyZero : bass;
    if (equaliser_ != nullptr) {
        g_object_set(equaliser_, "band0", BandGain(bass), "band1", BandGain(mid), "band2",
                     BandGain(treble), nullptr);
    }
    // What an effect adds can exceed full scale. A part of the boost is taken back, and what still
    // goes over is rounded off instead of being cut.
    const double boost = BandGain(std::max({0.0, bass, mid, treble}));
    if (preamp_ != nullptr) {
        g_object_set(preamp_, "volume",
                     FromDecibels(-boost * kBoostTakenBack) / (1.0 - reverbLevel), nullptr);
    }
    if (limiter_ != nullptr) {
        const bool adds = boost > 0 || effects_.echo > 0 || effects_.reverb > 0;
        g_object_set(limiter_, "enabled", adds, nullptr);
    }
}

}  // namespace veldrin

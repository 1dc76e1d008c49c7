// The effects of the engine: their settings, and those of them that colour the sound without
// changing its time: echo, reverb, and the three bands. Tempo and pitch are stretch.h's.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "host/engine/element_line.h"

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
    /// Whether tempo or pitch is away from rest.
    bool Stretches() const { return tempo != 0 || pitch != 0; }
    bool operator==(const Effects&) const = default;
};

/// Echo, reverb and bands. At rest the sound goes by it, and is untouched to the bit.
class EffectChain {
  public:
    EffectChain();

    /// Begins a sound of this rate: nothing is left of the one before, and the settings hold from
    /// its first frame on.
    void Begin(int rate);
    /// Takes new settings over. The bands take about a hundredth of a second, so that nothing
    /// clicks.
    void Set(const Effects& effects);
    /// Colours the frames, in their place.
    void Process(std::span<float> frames);

  private:
    static constexpr std::size_t kBands = 3;
    bool IsAtRest() const;
    void MoveBands(double most);
    void Configure();

    ElementLine line_;
    // Owned by the line; null where the plug-in is missing.
    GstElement* echo_;
    GstElement* reverb_;
    GstElement* equaliser_;
    GstElement* preamp_;
    GstElement* limiter_;

    int rate_ = 0;
    Effects effects_;
    std::array<double, kBands> bands_{};  // decibels of the slider, on their way to the settings
    bool fresh_ = true;                   // nothing has been heard since Begin
    bool runs_ = false;                   // the line has begun
    bool equalises_ = false;              // the bands have been in use since
    std::int64_t rested_ = 0;             // frames since all came to rest
    std::vector<float> out_;              // kept for its memory
};

}  // namespace veldrin

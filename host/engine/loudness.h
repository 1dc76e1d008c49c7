// Loudness says whether items are brought to one loudness, and by how much one is changed for it:
// what its tags say, within what can be believed. Sound itself passes elsewhere (leveller.h).
//
// The tags are those of ReplayGain, in decibels that bring the item to -18 LUFS, and those of Opus,
// in 256ths of a decibel that bring it to -23 LUFS.
#pragma once

#include <optional>
#include <string_view>

namespace veldrin {

enum class Loudness {
    kOff,
    kTrack,  ///< each item is as loud as the others
    kAlbum,  ///< each album is; its items differ as they were made
};

/// Reads "off", "track" or "album"; nothing for any other text.
std::optional<Loudness> ParseLoudness(std::string_view text);

/// What the tags of one item say; nothing of what they do not say or what is damaged.
struct LevelTags {
    std::optional<double> trackGain = {};  ///< decibels
    std::optional<double> trackPeak = {};  ///< of the samples, 1 is full scale
    std::optional<double> albumGain = {};
    std::optional<double> albumPeak = {};
};

/// A gain of ReplayGain, such as "-7.25 dB".
std::optional<double> ParseGain(std::string_view text);
/// A gain of Opus, such as "-1856", as one of ReplayGain.
std::optional<double> ParseOpusGain(std::string_view text);
/// A peak, such as "0.988312".
std::optional<double> ParsePeak(std::string_view text);
/// The number itself, if a gain or a peak can be as large.
std::optional<double> BelievedGain(double decibels);
std::optional<double> BelievedPeak(double peak);

/// The gain of items that say nothing, in decibels. Most of what has no tags is music mastered
/// loud, at some -9 to -12 LUFS: this takes it to between -15 and -18, where the others are. It
/// takes away only, so it cannot clip, and what is quiet by nature stays near what it was.
inline constexpr double kUntaggedGain = -6.0;

/// What is to be done to an item.
struct Level {
    double gain = 0;         ///< decibels, -60 to 20
    bool mayExceed = false;  ///< whether it raises a peak that nobody knows
    bool operator==(const Level&) const = default;
};

/// An item without the gain that is asked for takes the other one. A known peak is not raised over
/// full scale; a track's peak is at most that of its album. `loudness` is not kOff.
Level LevelFor(const LevelTags& tags, Loudness loudness);

}  // namespace veldrin

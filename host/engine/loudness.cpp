#include "host/engine/loudness.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace veldrin {

namespace {

// Between silence and full scale of 16 bits lie 96 decibels. Whoever is to be changed by more than
// this was measured wrong.
constexpr double kLargestGain = 60.0;
// What lossy coding adds to a sound goes over full scale by a few decibels; some wrote the peak as
// a number of 16 bits.
constexpr double kLargestPeak = 16.0;
constexpr double kLargestBoost = 20.0;

constexpr double kOpusSteps = 256.0;          // in a decibel
constexpr double kOpusBelowReplayGain = 5.0;  // -23 LUFS, and -18

/// The number at the beginning, whatever stands behind it.
std::optional<double> NumberIn(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t+"), text.size()));
    std::string plain(text.substr(0, 32));
    std::replace(plain.begin(), plain.end(), ',', '.');  // as some write it by their language
    double number = 0;
    const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), number);
    return error == std::errc() ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<Loudness> ParseLoudness(std::string_view text) {
    if (text == "off") {
        return Loudness::kOff;
    }
    if (text == "track") {
        return Loudness::kTrack;
    }
    return text == "album" ? std::optional(Loudness::kAlbum) : std::nullopt;
}

std::optional<double> BelievedGain(double decibels) {
    // False for what is no number, too.
    return std::abs(decibels) <= kLargestGain ? std::optional(decibels) : std::nullopt;
}

std::optional<double> BelievedPeak(double peak) {
    return peak > 0 && peak <= kLargestPeak ? std::optional(peak) : std::nullopt;
}

std::optional<double> ParseGain(std::string_view text) {
    const auto number = NumberIn(text);
    return number ? BelievedGain(*number) : std::nullopt;
}

std::optional<double> ParseOpusGain(std::string_view text) {
    const auto number = NumberIn(text);
    return number ? BelievedGain(*number / kOpusSteps + kOpusBelowReplayGain) : std::nullopt;
}

std::optional<double> ParsePeak(std::string_view text) {
    const auto number = NumberIn(text);
    return number ? BelievedPeak(*number) : std::nullopt;
}

Level LevelFor(const LevelTags& tags, Loudness loudness) {
    const bool byAlbum = tags.albumGain && (loudness == Loudness::kAlbum || !tags.trackGain);
    const auto gain = byAlbum ? tags.albumGain : tags.trackGain;
    auto peak = tags.albumPeak;
    if (!byAlbum && tags.trackPeak) {
        peak = tags.trackPeak;
    }
    Level level{gain.value_or(kUntaggedGain)};
    if (peak) {
        level.gain = std::min(level.gain, -20.0 * std::log10(*peak));
    }
    level.gain = std::min(level.gain, kLargestBoost);
    level.mayExceed = !peak && level.gain > 0;
    return level;
}

}  // namespace veldrin

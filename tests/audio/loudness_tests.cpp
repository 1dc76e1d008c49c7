// By how much an item is changed, worked out by hand from what its tags say.
#include "host/engine/loudness.h"

#include <gtest/gtest.h>

#include <limits>

namespace audio_tests {
namespace {

using veldrin::BelievedGain;
using veldrin::BelievedPeak;
using veldrin::Level;
using veldrin::LevelFor;
using veldrin::LevelTags;
using veldrin::Loudness;
using veldrin::ParseGain;
using veldrin::ParseLoudness;
using veldrin::ParseOpusGain;
using veldrin::ParsePeak;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

double TrackGain(const LevelTags& tags) {
    return LevelFor(tags, Loudness::kTrack).gain;
}
double AlbumGain(const LevelTags& tags) {
    return LevelFor(tags, Loudness::kAlbum).gain;
}

TEST(LoudnessTest, NamesAreExact) {
    EXPECT_EQ(ParseLoudness("off"), Loudness::kOff);
    EXPECT_EQ(ParseLoudness("track"), Loudness::kTrack);
    EXPECT_EQ(ParseLoudness("album"), Loudness::kAlbum);
    for (const char* text : {"", "Off", "tracks", "album ", "on", "1"}) {
        EXPECT_FALSE(ParseLoudness(text)) << text;
    }
}

TEST(LoudnessTest, GainsAreReadAsTheyAreWritten) {
    EXPECT_EQ(ParseGain("-7.25 dB"), -7.25);
    EXPECT_EQ(ParseGain("+3.5 dB"), 3.5);
    EXPECT_EQ(ParseGain(" 0 "), 0.0);
    EXPECT_EQ(ParseGain("-6,50 dB"), -6.5);
    EXPECT_EQ(ParseGain("60"), 60.0);
    EXPECT_EQ(ParseGain("-60"), -60.0);
}

TEST(LoudnessTest, DamagedGainsAreNone) {
    for (const char* text : {"", " ", "dB", "--3", "nan", "-nan", "inf", "-inf dB", "1e400",
                             "1e30 dB", "60.01 dB", "-60.01 dB", "\xFF\xFE", "+"}) {
        EXPECT_FALSE(ParseGain(text)) << text;
    }
    for (const double number : {kNan, kInfinite, -kInfinite}) {
        EXPECT_FALSE(BelievedGain(number)) << number;
    }
}

TEST(LoudnessTest, GainsOfOpusAreInStepsFromALowerLevel) {
    EXPECT_EQ(ParseOpusGain("0"), 5.0);
    EXPECT_EQ(ParseOpusGain("256"), 6.0);
    EXPECT_EQ(ParseOpusGain("-1856"), -2.25);
    EXPECT_EQ(ParseOpusGain("-16640"), -60.0);
    for (const char* text : {"", "x", "nan", "14081", "-16641"}) {
        EXPECT_FALSE(ParseOpusGain(text)) << text;
    }
}

TEST(LoudnessTest, DamagedPeaksAreNone) {
    EXPECT_EQ(ParsePeak("0.988312"), 0.988312);
    EXPECT_EQ(ParsePeak("1.25"), 1.25);
    EXPECT_EQ(ParsePeak("16"), 16.0);
    for (const char* text : {"", "x", "0", "-0.5", "nan", "inf", "16.1", "32767", "1e300"}) {
        EXPECT_FALSE(ParsePeak(text)) << text;
    }
    for (const double number : {kNan, kInfinite, -kInfinite, 0.0}) {
        EXPECT_FALSE(BelievedPeak(number)) << number;
    }
}

TEST(LoudnessTest, EachItsOwnGainAndTheOtherInItsPlace) {
    const LevelTags both{.trackGain = -4.0, .albumGain = -9.5};
    EXPECT_EQ(TrackGain(both), -4.0);
    EXPECT_EQ(AlbumGain(both), -9.5);
    EXPECT_EQ(AlbumGain({.trackGain = -4.0}), -4.0);
    EXPECT_EQ(TrackGain({.albumGain = -9.5}), -9.5);
}

TEST(LoudnessTest, NoTagsTakeSixDecibelsAway) {
    EXPECT_EQ(LevelFor({}, Loudness::kTrack), (Level{-6.0, false}));
    EXPECT_EQ(LevelFor({}, Loudness::kAlbum), (Level{-6.0, false}));
    EXPECT_EQ(TrackGain({.trackPeak = 0.1}), -6.0);
}

TEST(LoudnessTest, AKnownPeakIsNotRaisedOverFullScale) {
    // A quarter of full scale leaves room for 12.04 dB.
    EXPECT_NEAR(TrackGain({.trackGain = 15.0, .trackPeak = 0.25}), 12.04, 0.005);
    EXPECT_EQ(TrackGain({.trackGain = 12.0, .trackPeak = 0.25}), 12.0);
    EXPECT_NEAR(TrackGain({.trackGain = -1.0, .trackPeak = 2.0}), -6.02, 0.005);
    EXPECT_FALSE(LevelFor({.trackGain = 15.0, .trackPeak = 0.25}, Loudness::kTrack).mayExceed);
}

TEST(LoudnessTest, APeakBelongsToItsGain) {
    const LevelTags tags{.trackGain = 10.0, .trackPeak = 0.25, .albumGain = 10.0, .albumPeak = 0.5};
    EXPECT_EQ(TrackGain(tags), 10.0);
    EXPECT_NEAR(AlbumGain(tags), 6.02, 0.005);
    // What no item of the album exceeds, this one does not; what it does not, others may.
    EXPECT_NEAR(TrackGain({.trackGain = 10.0, .albumPeak = 0.5}), 6.02, 0.005);
    EXPECT_EQ(LevelFor({.trackPeak = 0.5, .albumGain = 10.0}, Loudness::kAlbum),
              (Level{10.0, true}));
}

TEST(LoudnessTest, OnlyAnUnknownPeakThatIsRaisedMayExceed) {
    EXPECT_EQ(LevelFor({.trackGain = 0.5}, Loudness::kTrack), (Level{0.5, true}));
    EXPECT_EQ(LevelFor({.trackGain = 0.0}, Loudness::kTrack), (Level{0.0, false}));
    EXPECT_EQ(LevelFor({.trackGain = -0.5}, Loudness::kTrack), (Level{-0.5, false}));
}

TEST(LoudnessTest, NothingIsRaisedMoreThanTenfold) {
    EXPECT_EQ(TrackGain({.trackGain = 45.0}), 20.0);
    EXPECT_EQ(TrackGain({.trackGain = 45.0, .trackPeak = 0.001}), 20.0);
    EXPECT_EQ(TrackGain({.trackGain = -45.0}), -45.0);
}

}  // namespace
}  // namespace audio_tests

// Items brought to one loudness by their tags: what comes out, measured.
#include <taglib/mp4file.h>

#include <cmath>

#include "engine_fixture.h"
#include "tagged_files.h"

namespace audio_tests {
namespace {

using veldrin::Loudness;

constexpr double kExact = 0.1;  // decibels
constexpr double kPitch = 440;

class LoudnessEngine : public EngineTest {
  protected:
    /// The path of a new file of this sound with a gain for the track, and one for the album.
    std::string Tagged(const std::string& name, const Sound& sound, const char* trackGain,
                       const char* albumGain = nullptr) const {
        WriteWav(directory_ / "plain.wav", sound);
        const std::string path = directory_ / name;
        EXPECT_TRUE(Encode(directory_ / "plain.wav", "flacenc", path));
        SetTag(path, "REPLAYGAIN_TRACK_GAIN", trackGain);
        if (albumGain != nullptr) {
            SetTag(path, "REPLAYGAIN_ALBUM_GAIN", albumGain);
        }
        return path;
    }
    /// What comes out of the files, one after the other.
    Sound Out(const std::vector<std::string>& paths, Loudness loudness) const {
        auto engine = FileEngine(loudness);
        for (const std::string& path : paths) {
            EXPECT_TRUE(engine->Open(path)) << path;
            EXPECT_TRUE(WaitForEnd(*engine));
        }
        engine.reset();
        return ReadWav(OutPath());
    }
    /// The decibels that it makes of one file.
    double Change(const std::string& path, Loudness loudness) const {
        const Sound before = Out({path}, Loudness::kOff);
        return Gain(kPitch, Out({path}, loudness), before);
    }
    static Sound Quiet() { return Tone(kPitch, 1.4, 44100, 2, 0.1); }
    static Sound Loud() { return Tone(kPitch, 1.4, 44100, 2, 0.8); }
};

/// -4 dB for the track and -9.5 for the album, by the names that the format has for them.
void SetGains(const std::string& path, const std::string& extension) {
    if (extension == "opus") {
        SetTag(path, "R128_TRACK_GAIN", "-2304");
        SetTag(path, "R128_ALBUM_GAIN", "-3712");
    } else if (extension == "m4a") {
        TagLib::MP4::File file(path.c_str(), false);
        for (const auto& [name, value] :
             {std::pair("track", "-4.00 dB"), std::pair("album", "-9.50 dB")}) {
            file.tag()->setItem("----:com.apple.iTunes:replaygain_" + std::string(name) + "_gain",
                                TagLib::MP4::Item(TagLib::StringList(value)));
        }
        ASSERT_TRUE(file.save());
    } else {
        SetTag(path, "REPLAYGAIN_TRACK_GAIN", "-4.00 dB");
        SetTag(path, "REPLAYGAIN_ALBUM_GAIN", "-9.50 dB");
    }
}

TEST_F(LoudnessEngine, FormatsArePlayedAsTheirTagsSay) {
    WriteWav(directory_ / "plain.wav", Tone(kPitch, 1.4));
    int made = 0;
    for (const auto& [extension, chain] : kTaggedFormats) {
        SCOPED_TRACE(extension);
        const std::string path = directory_ / (std::string("made.") + extension);
        if (!Encode(directory_ / "plain.wav", chain, path)) {
            continue;
        }
        ++made;
        const Sound before = Out({path}, Loudness::kOff);
        SetGains(path, extension);
        EXPECT_NEAR(Gain(kPitch, Out({path}, Loudness::kOff), before), 0, kExact);
        EXPECT_NEAR(Gain(kPitch, Out({path}, Loudness::kTrack), before), -4.0, kExact);
        EXPECT_NEAR(Gain(kPitch, Out({path}, Loudness::kAlbum), before), -9.5, kExact);
    }
    EXPECT_GE(made, 5);
}

TEST_F(LoudnessEngine, OffLeavesTheSoundUntouched) {
    const Sound noise = Noise(1.0);
    EXPECT_EQ(Out({Tagged("a.flac", noise, "-4 dB")}, Loudness::kOff).samples, noise.samples);
}

TEST_F(LoudnessEngine, GainOfNothingLeavesTheSoundUntouched) {
    const Sound noise = Noise(1.0);
    EXPECT_EQ(Out({Tagged("a.flac", noise, "0 dB")}, Loudness::kTrack).samples, noise.samples);
}

TEST_F(LoudnessEngine, WithoutTagsSixDecibelsAreTakenAway) {
    const std::string path = Wav("plain.wav", Loud());
    EXPECT_NEAR(Change(path, Loudness::kTrack), -6.0, kExact);
    EXPECT_NEAR(Change(path, Loudness::kAlbum), -6.0, kExact);
}

TEST_F(LoudnessEngine, DamagedTagsAreNone) {
    const std::string path = Tagged("a.flac", Loud(), "1e30 dB", "nan");
    SetTag(path, "REPLAYGAIN_TRACK_PEAK", "-1");
    EXPECT_NEAR(Change(path, Loudness::kTrack), -6.0, kExact);
}

TEST_F(LoudnessEngine, ItemsOfAnAlbumKeepTheirDifferences) {
    const std::string first = Tagged("1.flac", Tone(kPitch, 1.4), "-3 dB", "+1.5 dB");
    const std::string second = Tagged("2.flac", Tone(kPitch, 1.4), "+6 dB", "+1.5 dB");
    for (const std::string& path : {first, second}) {
        SetTag(path, "REPLAYGAIN_ALBUM_PEAK", "0.5");
    }
    // One tone, cut between two samples into two items: 1.4 seconds are 616 of its waves.
    const Sound album = Out({first, second}, Loudness::kAlbum);
    ASSERT_NEAR(album.Seconds(), 2.8, 0.001);
    const auto left = album.Channel(0, 0, album.Seconds());
    float step = 0;
    for (std::size_t i = 1; i < left.size(); ++i) {
        step = std::max(step, std::abs(left[i] - left[i - 1]));
    }
    // 0.25 at 1.5 dB more is 0.2971, of which a sample changes by a 15.95th at the most.
    EXPECT_NEAR(Peak(left), 0.2971F, 0.0005F);
    EXPECT_NEAR(step, 0.2971F / 15.95F, 0.0005F);

    const Sound tracks = Out({first, second}, Loudness::kTrack);
    EXPECT_NEAR(Peak(tracks.Channel(0, 0.2, 1.2)), 0.25F * 0.7079F, 0.0005F);
    EXPECT_NEAR(Peak(tracks.Channel(0, 1.6, 2.6)), 0.25F * 1.9953F, 0.0005F);
}

TEST_F(LoudnessEngine, AKnownPeakIsRaisedToFullScaleAndNotBent) {
    const std::string path = Tagged("a.flac", Loud(), "+10 dB");
    SetTag(path, "REPLAYGAIN_TRACK_PEAK", "0.8");
    const Sound out = Out({path}, Loudness::kTrack);
    EXPECT_NEAR(Gain(kPitch, out, Loud()), 1.938, 0.01);
    EXPECT_LT(AmplitudeOf(3 * kPitch, Middle(out), out.rate), 0.0005);
}

TEST_F(LoudnessEngine, AnUnknownPeakIsRoundedOffBelowFullScale) {
    // 0.8 at 6 dB more would be 1.6. What is below a half is raised as it is.
    const Sound out = Out({Tagged("a.flac", Quiet() + Loud(), "+6 dB")}, Loudness::kTrack);
    EXPECT_NEAR(Peak(out.Channel(0, 0.2, 1.2)), 0.1995F, 0.001F);
    EXPECT_GT(Peak(out.Channel(0, 1.6, 2.6)), 0.95F);
    EXPECT_LT(Peak(out.samples), 0.995F);
}

TEST_F(LoudnessEngine, AFalsePeakDoesNotClip) {
    const std::string path = Tagged("a.flac", Quiet() + Loud() + Quiet(), "+6 dB");
    SetTag(path, "REPLAYGAIN_TRACK_PEAK", "0.1");
    const Sound out = Out({path}, Loudness::kTrack);
    EXPECT_NEAR(Peak(out.Channel(0, 0.2, 1.2)), 0.1995F, 0.001F);
    EXPECT_LT(Peak(out.samples), 0.995F);
    EXPECT_NEAR(Peak(out.Channel(0, 3.0, 4.0)), 0.1995F, 0.001F);
}

TEST_F(LoudnessEngine, AChangeOfTempoKeepsTheGain) {
    const std::string path = Tagged("a.flac", Loud(), "-4 dB");
    auto engine = FileEngine(Loudness::kTrack);
    engine->SetTempo(10);
    ASSERT_TRUE(engine->Open(path));
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    const auto out = ReadWav(OutPath()).Channel(0, 0.3, 1.0);
    EXPECT_NEAR(20 * std::log10(LoudnessOf(out) / LoudnessOf(Middle(Loud()))), -4.0, 0.2);
}

TEST_F(LoudnessEngine, PartsNameItUnlessItIsOff) {
    EXPECT_EQ(FileEngine()->Parts().size(), 3U);
    EXPECT_EQ(FileEngine(Loudness::kTrack)->Parts().at(3), "Loudness: by track");
    EXPECT_EQ(FileEngine(Loudness::kAlbum)->Parts().at(3), "Loudness: by album");
}

}  // namespace
}  // namespace audio_tests

// What the volume and the seven effects do to what is heard.
#include <cmath>

#include "engine_fixture.h"

namespace audio_tests {
namespace {

using veldrin::Engine;

using EffectsTest = EngineTest;

Sound Times(Sound sound, float factor) {
    for (float& sample : sound.samples) {
        sample *= factor;
    }
    return sound;
}

/// The most samples in a row at full scale: a sine that is cut there stays there for many.
int LongestCut(const Sound& sound) {
    int longest = 0;
    int run = 0;
    for (const float sample : Middle(sound)) {
        run = std::abs(sample) > 0.9999F ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

TEST_F(EffectsTest, AtRestTheSoundIsUntouched) {
    const Sound noise = Noise(2.0);
    const Sound played = Played(noise);
    EXPECT_EQ(played.rate, 44100);
    EXPECT_EQ(played.samples, noise.samples);
}

TEST_F(EffectsTest, BackAtRestTheSoundIsUntouched) {
    const Sound noise = Noise(2.0);
    const Sound played = Played(noise, [](Engine& engine) {
        for (const int value : {7, 0}) {
            engine.SetTempo(value);
            engine.SetPitch(value);
            engine.SetEcho(value);
            engine.SetReverb(value);
            engine.SetBass(value);
            engine.SetMid(value);
            engine.SetTreble(value);
        }
    });
    EXPECT_EQ(played.samples, noise.samples);
}

TEST_F(EffectsTest, TempoChangesTheTimeAndNotThePitch) {
    const Sound tone = Tone(440, 6.0);
    const Sound fast = Played(tone, [](Engine& engine) { engine.SetTempo(50); });
    EXPECT_NEAR(fast.Seconds(), 6.0 / 1.5, 0.05);
    EXPECT_NEAR(FrequencyOf(Middle(fast), fast.rate), 440.0, 2.0);
    EXPECT_NEAR(Gain(440, fast, tone), 0.0, 0.5);

    const Sound slow = Played(tone, [](Engine& engine) { engine.SetTempo(-50); });
    EXPECT_NEAR(slow.Seconds(), 6.0 / 0.5, 0.05);
    EXPECT_NEAR(FrequencyOf(Middle(slow), slow.rate), 440.0, 2.0);
}

TEST_F(EffectsTest, PitchChangesThePitchAndNotTheTime) {
    const Sound tone = Tone(440, 4.0);
    const Sound fourth = Played(tone, [](Engine& engine) { engine.SetPitch(5); });
    EXPECT_NEAR(fourth.Seconds(), 4.0, 0.05);
    EXPECT_NEAR(FrequencyOf(Middle(fourth), fourth.rate), 587.33, 2.0);

    const Sound octaveBelow = Played(tone, [](Engine& engine) { engine.SetPitch(-12); });
    EXPECT_NEAR(octaveBelow.Seconds(), 4.0, 0.05);
    EXPECT_NEAR(FrequencyOf(Middle(octaveBelow), octaveBelow.rate), 220.0, 1.0);
}

TEST_F(EffectsTest, ValuesOutOfRangeAreTakenAsTheNearestEnd) {
    const Sound tone = Tone(440, 3.0);
    const Sound fast = Played(tone, [](Engine& engine) {
        engine.SetTempo(1000);
        engine.SetPitch(0);
    });
    EXPECT_NEAR(fast.Seconds(), 3.0 / 1.5, 0.05);
    const Sound high = Played(tone, [](Engine& engine) { engine.SetPitch(1000); });
    EXPECT_NEAR(FrequencyOf(Middle(high), high.rate), 440.0 * std::exp2(20.0 / 12.0), 5.0);
}

TEST_F(EffectsTest, EveryEffectEndsWhereItsSliderEnds) {
    struct Effect {
        const char* name;
        void (Engine::*set)(int);
        int smallest;
        int largest;
    };
    const Effect effects[] = {
        {"tempo", &Engine::SetTempo, -50, 50},  {"pitch", &Engine::SetPitch, -20, 20},
        {"echo", &Engine::SetEcho, 0, 6},       {"reverb", &Engine::SetReverb, 0, 20},
        {"bass", &Engine::SetBass, -15, 15},    {"mid", &Engine::SetMid, -15, 15},
        {"treble", &Engine::SetTreble, -15, 15}};
    const Sound noise = Times(Noise(0.8), 0.1F);
    for (const Effect& effect : effects) {
        const auto with = [&](int value) {
            return Played(noise, [&](Engine& engine) { (engine.*effect.set)(value); }).samples;
        };
        EXPECT_TRUE(with(effect.largest) == with(1000)) << effect.name;
        EXPECT_TRUE(with(effect.smallest) == with(-1000)) << effect.name;
        EXPECT_FALSE(with(effect.largest) == with(effect.largest - 1)) << effect.name;
        EXPECT_FALSE(with(effect.smallest) == with(effect.smallest + 1)) << effect.name;
    }
}

void SetBand(Engine& engine, int band, int decibels) {
    if (band == 0) {
        engine.SetBass(decibels);
    } else if (band == 1) {
        engine.SetMid(decibels);
    } else {
        engine.SetTreble(decibels);
    }
}

TEST_F(EffectsTest, BassMidAndTrebleActOnTheirBands) {
    // In the midst of each band; the first and the last go on beyond it.
    const double frequencies[] = {60, 1100, 14000};
    for (int band = 0; band < 3; ++band) {
        const double frequency = frequencies[band];
        SCOPED_TRACE(frequency);
        const Sound tone = Tone(frequency, 3.0);
        const auto gainWith = [&](int changed, int decibels) {
            const Sound played =
                Played(tone, [&](Engine& engine) { SetBand(engine, changed, decibels); });
            return Gain(frequency, played, tone);
        };
        EXPECT_GT(gainWith(band, 15), 3.0);
        EXPECT_LT(gainWith(band, -15), -6.0);
        // The two neighbours hardly change it.
        EXPECT_NEAR(gainWith((band + 1) % 3, -15), 0.0, 2.0);
        EXPECT_NEAR(gainWith((band + 2) % 3, -15), 0.0, 2.0);
    }
}

TEST_F(EffectsTest, BassLifts100Hertz) {
    const Sound tone = Tone(100, 3.0);
    const Sound played = Played(tone, [](Engine& engine) { engine.SetBass(15); });
    EXPECT_GT(Gain(100, played, tone), 3.0);
}

TEST_F(EffectsTest, CutsAreTakenInDecibelsAndBoostsAreDrawnTogether) {
    // The slider's 15 dB are 12 of the equaliser, of which a sixth is taken back for all bands.
    const Sound tone = Tone(1100, 3.0, 44100, 2, 0.1);
    const std::pair<int, double> expected[] = {
        {-15, -15.0}, {-5, -5.0}, {5, 4.0 * 5 / 6}, {15, 12.0 * 5 / 6}};
    for (const auto& [decibels, gain] : expected) {
        const int value = decibels;
        const Sound played = Played(tone, [&](Engine& engine) { engine.SetMid(value); });
        EXPECT_NEAR(Gain(1100, played, tone), gain, 0.1) << value;
    }
}

TEST_F(EffectsTest, BoostsOfLoudSoundAreRoundedOffAndNotCut) {
    const Sound loud = Tone(60, 3.0, 44100, 2, 0.95);
    const Sound played = Played(loud, [](Engine& engine) { engine.SetBass(15); });
    EXPECT_LT(LongestCut(played), 20);
    EXPECT_GT(LoudnessOf(Middle(played)), LoudnessOf(Middle(loud)));
}

/// A short click and then silence.
Sound Click() {
    Sound sound = Tone(0, 2.0);
    for (std::size_t i = 0; i < 2 * 44; ++i) {
        sound.samples[i] = 0.5F;
    }
    return sound;
}

TEST_F(EffectsTest, EchoRepeatsTheSoundALittleQuieterEachTime) {
    const Sound played = Played(Click(), [](Engine& engine) { engine.SetEcho(3); });
    const auto loudest = [&](double from) { return Peak(played.Channel(0, from, from + 0.05)); };
    EXPECT_GT(loudest(0.0), 0.4F);
    EXPECT_LT(loudest(0.15), 0.01F);
    EXPECT_GT(loudest(0.3), 0.1F);
    EXPECT_LT(loudest(0.45), 0.01F);
    EXPECT_GT(loudest(0.6), 0.02F);
    EXPECT_LT(loudest(0.6), loudest(0.3));
    EXPECT_LT(loudest(1.8), 0.02F);
}

TEST_F(EffectsTest, EachStepOfTheEchoIsATenthOfASecond) {
    for (int step = 1; step <= 6; ++step) {
        SCOPED_TRACE(step);
        const Sound played = Played(Click(), [&](Engine& engine) { engine.SetEcho(step); });
        const double first = 0.1 * step;
        EXPECT_LT(Peak(played.Channel(0, 0.02, first - 0.01)), 0.001F);
        EXPECT_NEAR(Peak(played.Channel(0, first - 0.01, first + 0.02)), 0.25F, 0.01F);
        // The next one is 9 dB quieter.
        EXPECT_NEAR(Peak(played.Channel(0, 2 * first - 0.01, 2 * first + 0.02)), 0.089F, 0.003F);
    }
}

TEST_F(EffectsTest, TheLongestEchoCanBeChosenUnderWay) {
    Sound sound = Tone(0, 30.0, 8000, 1);
    std::fill_n(sound.samples.begin() + 20 * 8000, 8, 0.5F);
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(Wav("click.wav", sound)));
    engine->Pause();
    engine->SetEcho(6);
    engine->Seek(15);
    engine->Toggle();
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    const Sound played = ReadWav(OutPath());
    const double click = played.Seconds() - 10.0;
    EXPECT_LT(Peak(played.Channel(0, click + 0.02, click + 0.58)), 0.001F);
    EXPECT_NEAR(Peak(played.Channel(0, click + 0.58, click + 0.62)), 0.25F, 0.01F);
}

TEST_F(EffectsTest, EchoAndReverbKeepTheLoudness) {
    const Sound noise = Times(Noise(3.0), 0.1F);
    const auto louder = [&](const Sound& played) {
        return 20.0 * std::log10(LoudnessOf(Middle(played)) / LoudnessOf(Middle(noise)));
    };
    // Repetitions at half the level and then 9 dB less each time add a quarter and an eighth of it
    // again to the power of a noise: 1.1 dB.
    for (const int step : {1, 3, 6}) {
        const Sound played = Played(noise, [&](Engine& engine) { engine.SetEcho(step); });
        EXPECT_NEAR(louder(played), 1.1, 0.3) << step;
    }
    // The direct sound keeps its level, and what is added to it stays below it.
    for (const int step : {1, 10, 20}) {
        const auto reverb = [&](Engine& engine) { engine.SetReverb(step); };
        EXPECT_NEAR(Peak(Played(Click(), reverb).Channel(0, 0, 0.002)), 0.5F, 0.01F) << step;
        EXPECT_NEAR(louder(Played(noise, reverb)), 0.5, 0.6) << step;
    }
}

TEST_F(EffectsTest, EchoAndReverbOfLoudSoundAreRoundedOffAndNotCut) {
    const Sound loud = Tone(440, 3.0, 44100, 2, 0.95);
    // 132 periods fit between two repetitions, so that they meet in step.
    const Sound echo = Played(loud, [](Engine& engine) { engine.SetEcho(3); });
    EXPECT_LT(LongestCut(echo), 10);
    EXPECT_GT(Gain(440, echo, loud), 1.0);
    const Sound high = Tone(1000, 3.0, 44100, 2, 0.95);
    const Sound reverb = Played(high, [](Engine& engine) { engine.SetReverb(20); });
    EXPECT_LT(LongestCut(reverb), 10);
    EXPECT_GT(Gain(1000, reverb, high), -1.0);
}

TEST_F(EffectsTest, TheSmallestStepOfTheReverbIsHeard) {
    const Sound played = Played(Click(), [](Engine& engine) { engine.SetReverb(1); });
    EXPECT_GT(LoudnessOf(played.Channel(0, 0.05, 0.2)), 0.00001);
}

TEST_F(EffectsTest, ReverbLeavesATailThatGrowsWithItsSteps) {
    const auto tail = [&](int step) {
        const Sound played = Played(Click(), [&](Engine& engine) { engine.SetReverb(step); });
        return LoudnessOf(played.Channel(0, 0.2, 0.6));
    };
    const double dry = tail(0);
    const double some = tail(5);
    const double much = tail(20);
    EXPECT_EQ(dry, 0.0);
    EXPECT_GT(some, 0.0001);
    EXPECT_GT(much, 2.0 * some);
}

TEST_F(EffectsTest, VolumeIsCubic) {
    const Sound tone = Tone(440, 2.0);
    const auto loudness = [&](int volume) {
        return LoudnessOf(Middle(Played(tone, [&](Engine& engine) { engine.SetVolume(volume); })));
    };
    const double full = LoudnessOf(Middle(tone));
    EXPECT_NEAR(loudness(100) / full, 1.0, 0.001);
    EXPECT_NEAR(loudness(50) / full, 0.125, 0.001);
    EXPECT_NEAR(loudness(80) / full, 0.512, 0.001);
    EXPECT_EQ(loudness(0), 0.0);
    EXPECT_NEAR(loudness(1000) / full, 1.0, 0.001);
    EXPECT_EQ(loudness(-5), 0.0);
}

TEST_F(EffectsTest, SettingsStayForTheNextItem) {
    const std::string path = Wav("tone.wav", Tone(440, 3.0));
    auto engine = FileEngine();
    engine->SetTempo(50);
    engine->SetVolume(50);
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(engine->Open(path));
        ASSERT_TRUE(WaitForEnd(*engine));
    }
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_NEAR(played.Seconds(), 4.0, 0.1);
    const double full = LoudnessOf(Tone(440, 1.0).samples);
    EXPECT_NEAR(LoudnessOf(played.Channel(0, 2.5, 3.5)) / full, 0.125, 0.005);
}

TEST_F(EffectsTest, ChangesUnderWayAreHeard) {
    // Paused right after the start, so that most of the item is heard with the new settings. The
    // change from rest puts the time-stretching element in, in the midst of the item.
    const std::string path = Wav("tone.wav", Tone(440, 300.0, 8000, 1));
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(path));
    engine->Pause();
    engine->SetPitch(12);
    engine->SetTempo(50);
    engine->SetVolume(50);
    EXPECT_TRUE(engine->IsPaused());
    engine->Toggle();
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_LT(played.Seconds(), 290.0);
    const std::vector<float> last =
        played.Channel(0, played.Seconds() - 10.0, played.Seconds() - 1.0);
    EXPECT_NEAR(FrequencyOf(last, played.rate), 880.0, 4.0);
    EXPECT_NEAR(LoudnessOf(last) / LoudnessOf(Tone(440, 1.0).samples), 0.125, 0.005);
}

TEST_F(EffectsTest, OneChangeAfterTheOtherIsHeard) {
    // The seek lets the first change take hold.
    const Sound tone = Tone(1100, 60.0, 8000, 1, 0.1);
    const std::string path = Wav("tone.wav", tone);
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(path));
    engine->Pause();
    engine->SetMid(-15);
    engine->Seek(10);
    engine->SetMid(-5);
    engine->Seek(50);
    engine->Toggle();
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    const Sound played = ReadWav(OutPath());
    const auto last = [](const Sound& sound) {
        return sound.Channel(0, sound.Seconds() - 5.0, sound.Seconds() - 1.0);
    };
    EXPECT_NEAR(20.0 * std::log10(LoudnessOf(last(played)) / LoudnessOf(last(tone))), -5.0, 0.2);
}

TEST_F(EffectsTest, GoingToRestUnderWayLosesNothing) {
    const std::string path = Wav("tone.wav", Tone(440, 200.0, 8000, 1) + Tone(880, 10.0, 8000, 1));
    auto engine = FileEngine();
    engine->SetPitch(-12);
    ASSERT_TRUE(engine->Open(path));
    engine->Pause();
    engine->SetPitch(0);
    engine->Toggle();
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_NEAR(played.Seconds(), 210.0, 0.3);
    EXPECT_NEAR(FrequencyOf(played.Channel(0, 201.0, 209.0), played.rate), 880.0, 1.0);
}

}  // namespace
}  // namespace audio_tests

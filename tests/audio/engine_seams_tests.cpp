// One item after the other, as the component plays them: it asks whether the present one still
// plays, and opens the next.
#include <filesystem>

#include "engine_fixture.h"

namespace audio_tests {
namespace {

using std::chrono::steady_clock;
using veldrin::Engine;

class SeamsTest : public EngineTest {
  protected:
    /// Plays these, each when the one before has been let go.
    static void PlayAll(Engine& engine, const std::vector<std::string>& paths) {
        for (const std::string& path : paths) {
            ASSERT_TRUE(engine.Open(path)) << path;
            ASSERT_TRUE(WaitForEnd(engine));
        }
        engine.Stop();
    }
    static double SecondsSince(steady_clock::time_point start) {
        return std::chrono::duration<double>(steady_clock::now() - start).count();
    }
};

TEST_F(SeamsTest, ThreePiecesAreOneAlsoWhenTheLastIsStopped) {
    const Sound noise = Noise(3.0);
    const auto third = static_cast<std::ptrdiff_t>(noise.samples.size() / 3);
    std::vector<std::string> paths;
    for (std::ptrdiff_t i = 0; i < 3; ++i) {
        paths.push_back(
            Wav(std::to_string(i) + ".wav",
                {44100,
                 2,
                 {noise.samples.begin() + i * third, noise.samples.begin() + (i + 1) * third}}));
    }
    auto engine = FileEngine();
    PlayAll(*engine, paths);
    engine.reset();
    EXPECT_EQ(ReadWav(OutPath()).samples, noise.samples);
}

TEST_F(SeamsTest, TheTailIsThereAtAnyTempo) {
    auto engine = FileEngine();
    engine->SetTempo(-50);
    PlayAll(*engine, {Wav("one.wav", Tone(440, 1.0)), Wav("two.wav", Tone(440, 1.0))});
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_NEAR(played.Seconds(), 4.0, 0.001);
    // The stretching places its pieces within some hundredths of a second.
    EXPECT_GT(Peak(played.Channel(0, 3.94, 3.96)), 0.2F);
}

TEST_F(SeamsTest, ItemsTakeTheirOwnTimeAndNoMore) {
    const auto start = steady_clock::now();
    {
        auto engine = SilentEngine();
        const std::string path = Wav("short.wav", Tone(440, 0.5, 8000, 1));
        PlayAll(*engine, {path, path, path, path});
    }
    EXPECT_GE(SecondsSince(start), 1.95);
    EXPECT_LT(SecondsSince(start), 3.5);
}

TEST_F(SeamsTest, ThePositionIsThatOfTheNewItemAtOnce) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("one.wav", Tone(440, 3.0, 8000, 1))));
    ASSERT_TRUE(WaitForEnd(*engine));
    EXPECT_EQ(engine->Position(), 3);
    ASSERT_TRUE(engine->Open(Wav("two.wav", Tone(440, 5.0, 8000, 1))));
    EXPECT_EQ(engine->Position(), 0);
    EXPECT_EQ(engine->Length(), 5);
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() == 1; }));
}

TEST_F(SeamsTest, AStopUnderWayEndsAtOnce) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", Tone(440, 100.0, 8000, 1))));
    ASSERT_TRUE(WaitUntil([&] { return engine->Position() >= 1; }));
    const auto start = steady_clock::now();
    engine->Stop();
    engine.reset();
    EXPECT_LT(SecondsSince(start), 10.0);
    EXPECT_FALSE(std::filesystem::exists(OutPath()));
}

TEST_F(SeamsTest, OneSampleIsAnItem) {
    std::vector<std::string> paths;
    Sound all{44100, 2, {}};
    for (int i = 1; i <= 20; ++i) {
        const Sound one{44100, 2, {0.01F * static_cast<float>(i), -0.5F}};
        paths.push_back(Wav("one" + std::to_string(i) + ".wav", one));
        all = all + ReadWav(paths.back());
    }
    auto engine = FileEngine();
    PlayAll(*engine, paths);
    engine.reset();
    EXPECT_EQ(ReadWav(OutPath()).samples, all.samples);
}

TEST_F(SeamsTest, AnotherRateIsJoinedAtTheOneThatPlays) {
    auto engine = FileEngine();
    PlayAll(*engine, {Wav("one.wav", Tone(440, 1.0, 44100)), Wav("two.wav", Tone(440, 1.0, 48000)),
                      Wav("three.wav", Tone(440, 1.0, 22050, 1))});
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_EQ(played.rate, 44100);
    EXPECT_NEAR(played.Seconds(), 3.0, 0.001);
    EXPECT_NEAR(FrequencyOf(played.Channel(0, 0.9, 2.9), 44100), 440.0, 0.5);
}

TEST_F(SeamsTest, AChainOfStreamsInOneFileIsPlayedWhole) {
    // The second link has another rate and number of channels.
    const std::string one = Wav("one.wav", Tone(440, 1.0, 44100, 2));
    const std::string two = Wav("two.wav", Tone(880, 1.0, 22050, 1));
    const std::string path = directory_ / "chain.ogg";
    ASSERT_TRUE(Encode(one, "vorbisenc ! oggmux", directory_ / "one.ogg"));
    ASSERT_TRUE(Encode(two, "vorbisenc ! oggmux", directory_ / "two.ogg"));
    WriteText(path, ReadText(directory_ / "one.ogg") + ReadText(directory_ / "two.ogg"));
    auto engine = FileEngine();
    PlayAll(*engine, {path, Wav("after.wav", Tone(660, 1.0, 44100, 2))});
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_EQ(played.rate, 44100);
    EXPECT_NEAR(played.Seconds(), 3.0, 0.01);
    EXPECT_NEAR(FrequencyOf(played.Channel(0, 0.1, 0.9), 44100), 440.0, 1.0);
    EXPECT_NEAR(FrequencyOf(played.Channel(0, 1.1, 1.9), 44100), 880.0, 1.0);
    EXPECT_NEAR(FrequencyOf(played.Channel(0, 2.1, 2.9), 44100), 660.0, 1.0);
}

TEST_F(SeamsTest, ABrokenEndCostsNoGap) {
    const std::string cut = Wav("cut.wav", Tone(440, 2.0));
    std::filesystem::resize_file(cut, 44 + 44100 * 4 + 3);
    auto engine = FileEngine();
    PlayAll(*engine, {cut, Wav("after.wav", Tone(660, 1.0))});
    engine.reset();
    EXPECT_NEAR(ReadWav(OutPath()).Seconds(), 2.0, 0.001);
}

}  // namespace
}  // namespace audio_tests

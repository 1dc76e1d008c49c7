// Pausing, seeking, stopping, and where the engine says it stands.
#include <filesystem>

#include "engine_fixture.h"

namespace audio_tests {
namespace {

using veldrin::Engine;

using TransportTest = EngineTest;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int kRate = 8000;

/// 600 seconds, of which the last ten are an octave higher.
Sound LongSound() {
    return Tone(440, 590.0, kRate, 1) + Tone(880, 10.0, kRate, 1);
}

/// Seconds at the end of the sound that are nearer to 880 Hz than to 440.
double SecondsOfHighTone(const Sound& sound) {
    constexpr double kStep = 0.1;
    double seconds = 0;
    for (double end = sound.Seconds(); end > kStep; end -= kStep) {
        const auto piece = sound.Channel(0, end - kStep, end);
        if (AmplitudeOf(880, piece, sound.rate) < AmplitudeOf(440, piece, sound.rate)) {
            break;
        }
        seconds += kStep;
    }
    return seconds;
}

TEST_F(TransportTest, WithoutAnItemEverythingIsAtRest) {
    auto engine = SilentEngine();
    EXPECT_FALSE(engine->IsPlaying());
    EXPECT_FALSE(engine->IsPaused());
    engine->Pause();
    engine->Toggle();
    engine->Seek(10);
    engine->Stop();
    EXPECT_FALSE(engine->IsPlaying());
    EXPECT_FALSE(engine->IsPaused());
    EXPECT_EQ(engine->Position(), 0);
    EXPECT_EQ(engine->PlayedText(), "0:00");
    EXPECT_EQ(engine->RemainingText(), "-0:00");
    EXPECT_EQ(engine->LengthText(), "0:00");
}

TEST_F(TransportTest, PauseHoldsAndToggleGoesOn) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_FALSE(engine->IsPaused());
    ASSERT_TRUE(WaitUntil([&] { return engine->Position() >= 1; }));
    engine->Pause();
    engine->Pause();
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_TRUE(engine->IsPaused());
    const int position = engine->Position();
    std::this_thread::sleep_for(milliseconds(1200));
    EXPECT_EQ(engine->Position(), position);
    engine->Toggle();
    EXPECT_FALSE(engine->IsPaused());
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() > position; }, milliseconds(3000)));
    engine->Toggle();
    EXPECT_TRUE(engine->IsPaused());
}

TEST_F(TransportTest, PositionFollowsTheClock) {
    auto engine = SilentEngine();
    const std::string path = Wav("long.wav", LongSound());
    const auto start = steady_clock::now();
    ASSERT_TRUE(engine->Open(path));
    ASSERT_TRUE(WaitUntil([&] { return engine->Position() >= 2; }));
    const std::chrono::duration<double> taken = steady_clock::now() - start;
    EXPECT_GE(taken.count(), 1.95);
    EXPECT_LT(taken.count(), 3.0);
}

TEST_F(TransportTest, PositionNeverGoesBackWithoutASeek) {
    auto engine = SilentEngine();
    engine->SetTempo(30);
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    engine->Seek(100);
    int last = 100;
    const auto end = steady_clock::now() + milliseconds(1500);
    for (int tempo = 30; steady_clock::now() < end; tempo = tempo == 50 ? 30 : tempo + 1) {
        engine->SetTempo(tempo);
        const int position = engine->Position();
        EXPECT_GE(position, last);
        EXPECT_LE(position, 103);
        last = position;
        std::this_thread::sleep_for(milliseconds(20));
    }
    EXPECT_GE(last, 101);
}

TEST_F(TransportTest, PositionCountsTheMediumAtAnyTempo) {
    auto engine = SilentEngine();
    const std::string path = Wav("long.wav", LongSound());
    for (const auto& [tempo, second] : {std::pair{50, 3}, std::pair{-50, 1}}) {
        SCOPED_TRACE(tempo);
        engine->SetTempo(tempo);
        const auto start = steady_clock::now();
        ASSERT_TRUE(engine->Open(path));
        EXPECT_EQ(engine->Length(), 600);
        ASSERT_TRUE(WaitUntil([&, least = second] { return engine->Position() >= least; }));
        const std::chrono::duration<double> taken = steady_clock::now() - start;
        EXPECT_NEAR(taken.count(), second / (1.0 + tempo / 100.0), 0.6);
        EXPECT_EQ(engine->Length(), 600);
    }
}

TEST_F(TransportTest, PositionIsKeptOverAChangeOfTempo) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    engine->Seek(300);
    // Out of rest, from one tempo to another, and back to rest.
    for (const int tempo : {50, 10, 25, 0}) {
        SCOPED_TRACE(tempo);
        const int before = engine->Position();
        engine->SetTempo(tempo);
        const int after = engine->Position();
        EXPECT_GE(after, before);
        EXPECT_LE(after, before + 1);
        EXPECT_TRUE(WaitUntil([&] { return engine->Position() > after; }, milliseconds(4000)));
    }
    EXPECT_LE(engine->Position(), 312);
}

TEST_F(TransportTest, PositionOfAPausedItemIsKeptOverAChangeOfTempo) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    engine->Seek(300);
    engine->Pause();
    for (const int tempo : {50, 10, -50, 0, 25, 0}) {
        SCOPED_TRACE(tempo);
        engine->SetTempo(tempo);
        EXPECT_EQ(engine->Position(), 300);
        EXPECT_TRUE(engine->IsPaused());
    }
    engine->Toggle();
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() == 301; }, milliseconds(3000)));
}

TEST_F(TransportTest, APausedItemIsStillSilentAfterAChangeOfTempo) {
    // To a file it would be through in no time.
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    engine->Pause();
    engine->Seek(300);
    for (const int tempo : {50, 20, 0}) {
        SCOPED_TRACE(tempo);
        engine->SetTempo(tempo);
        EXPECT_FALSE(WaitUntil([&] { return !engine->IsPlaying() || engine->Position() != 300; },
                               milliseconds(200)));
        EXPECT_TRUE(engine->IsPaused());
    }
    engine->Toggle();
    EXPECT_TRUE(WaitForEnd(*engine));
}

TEST_F(TransportTest, AChangeOfTempoThatFailsLetsTheSoundGoOn) {
    const std::string path = Wav("long.wav", LongSound());
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(path));
    engine->Seek(300);
    // The file that is open goes on being readable, but it cannot be opened anew.
    std::filesystem::rename(path, directory_ / "elsewhere.wav");
    engine->SetTempo(50);
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_FALSE(engine->IsPaused());
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 301; }, milliseconds(5000)));
    EXPECT_LE(engine->Position(), 305);
}

TEST_F(TransportTest, AChangeOfTempoThatFailsLeavesAPausedItemPaused) {
    const std::string path = Wav("long.wav", LongSound());
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(path));
    engine->Pause();
    engine->Seek(300);
    std::filesystem::remove(path);
    engine->SetTempo(50);
    EXPECT_FALSE(WaitUntil([&] { return !engine->IsPlaying() || engine->Position() != 300; },
                           milliseconds(200)));
    EXPECT_TRUE(engine->IsPaused());
    engine->Toggle();
    EXPECT_TRUE(WaitForEnd(*engine));
}

TEST_F(TransportTest, SeekIsToSecondsOfTheMedium) {
    auto engine = SilentEngine();
    for (const int tempo : {0, 50, -50}) {
        SCOPED_TRACE(tempo);
        engine->SetTempo(tempo);
        ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
        for (const int target : {300, 90, 90, 590}) {
            engine->Seek(target);
            EXPECT_EQ(engine->Position(), target);
            std::this_thread::sleep_for(milliseconds(150));
            EXPECT_GE(engine->Position(), target);
            EXPECT_LE(engine->Position(), target + 1);
        }
        EXPECT_EQ(engine->PlayedText(), "9:50");
        EXPECT_EQ(engine->RemainingText(), "-0:10");
        EXPECT_EQ(engine->LengthText(), "10:00");
    }
}

TEST_F(TransportTest, WhatIsHeardAfterASeekIsFromThere) {
    for (const int tempo : {0, 50, -50}) {
        SCOPED_TRACE(tempo);
        auto engine = FileEngine();
        engine->SetTempo(tempo);
        ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
        engine->Pause();
        engine->Seek(585);
        engine->Toggle();
        ASSERT_TRUE(WaitForEnd(*engine));
        engine.reset();
        const Sound played = ReadWav(OutPath());
        const double factor = 1.0 + tempo / 100.0;
        EXPECT_LT(played.Seconds(), 500.0 / factor);  // something was left out
        EXPECT_GE(played.Seconds(), 14.9 / factor);
        EXPECT_NEAR(SecondsOfHighTone(played), 10.0 / factor, 0.4);
    }
}

TEST_F(TransportTest, ATempoSetWhilePausedHoldsForTheSeekAfterIt) {
    auto engine = FileEngine();
    engine->SetTempo(20);
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    engine->Pause();
    engine->SetTempo(50);
    engine->Seek(585);
    EXPECT_EQ(engine->Position(), 585);
    std::this_thread::sleep_for(milliseconds(100));
    EXPECT_EQ(engine->Position(), 585);
    engine->Toggle();
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    EXPECT_NEAR(SecondsOfHighTone(ReadWav(OutPath())), 10.0 / 1.5, 0.4);
}

TEST_F(TransportTest, SeekOutsideOfTheMediumIsTakenAsItsNearestEnd) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    engine->Seek(-5);
    EXPECT_EQ(engine->Position(), 0);
    engine->Seek(5000);
    EXPECT_EQ(engine->Position(), 599);
    EXPECT_TRUE(WaitUntil([&] { return !engine->IsPlaying(); }, milliseconds(3000)));
    EXPECT_EQ(engine->Position(), 600);
    EXPECT_EQ(engine->RemainingText(), "-0:00");
}

TEST_F(TransportTest, SeekInAPausedItemStaysPaused) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    engine->Pause();
    engine->Seek(200);
    std::this_thread::sleep_for(milliseconds(300));
    EXPECT_TRUE(engine->IsPaused());
    EXPECT_EQ(engine->Position(), 200);
    engine->Seek(100);
    engine->Toggle();
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() == 101; }, milliseconds(3000)));
}

TEST_F(TransportTest, SeeksInCompressedFilesAreExact) {
    const std::string wav = Wav("long.wav", Tone(440, 50.0, 44100, 1) + Tone(880, 10.0, 44100, 1));
    for (const char* chain : {"flacenc", "vorbisenc ! oggmux", "lamemp3enc ! xingmux"}) {
        SCOPED_TRACE(chain);
        const std::string path = directory_ / "long.compressed";
        if (!Encode(wav, chain, path)) {
            continue;
        }
        auto engine = FileEngine();
        ASSERT_TRUE(engine->Open(path));
        EXPECT_EQ(engine->Length(), 60);
        engine->Pause();
        engine->Seek(55);
        EXPECT_EQ(engine->Position(), 55);
        engine->Toggle();
        ASSERT_TRUE(WaitForEnd(*engine));
        engine.reset();
        EXPECT_NEAR(SecondsOfHighTone(ReadWav(OutPath())), 5.0, 0.35);
    }
}

TEST_F(TransportTest, ManySeeksInARowEndWhereTheLastOneLed) {
    auto engine = SilentEngine();
    engine->SetTempo(50);
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    for (int i = 0; i < 100; ++i) {
        engine->Seek((i * 37) % 590);
        engine->IsPlaying();
    }
    engine->Seek(400);
    std::this_thread::sleep_for(milliseconds(300));
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_GE(engine->Position(), 400);
    EXPECT_LE(engine->Position(), 402);
}

TEST_F(TransportTest, ASeekRightAfterTheStartNeitherEndsNorHoldsTheItem) {
    const std::string path = Wav("long.wav", LongSound());
    for (int i = 0; i < 30; ++i) {
        auto engine = FileEngine();
        ASSERT_TRUE(engine->Open(path));
        engine->Seek(595);
        EXPECT_TRUE(engine->Position() >= 595);
        ASSERT_TRUE(WaitForEnd(*engine));
        EXPECT_EQ(engine->Position(), 600);
        engine.reset();
        EXPECT_NEAR(SecondsOfHighTone(ReadWav(OutPath())), 5.0, 0.35);
    }
}

TEST_F(TransportTest, StopEndsTheItem) {
    auto engine = SilentEngine();
    const std::string path = Wav("long.wav", LongSound());
    ASSERT_TRUE(engine->Open(path));
    engine->Pause();
    engine->Stop();
    EXPECT_FALSE(engine->IsPlaying());
    EXPECT_FALSE(engine->IsPaused());
    EXPECT_EQ(engine->Position(), 0);
    EXPECT_EQ(engine->Length(), 0);
    engine->Toggle();
    EXPECT_FALSE(engine->IsPlaying());
    ASSERT_TRUE(engine->Open(path));
    EXPECT_FALSE(engine->IsPaused());
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 1; }));
}

// It is noticed a quarter of a second early, so that the next item can be joined.
TEST_F(TransportTest, TheEndIsNoticedInRealTime) {
    auto engine = SilentEngine();
    const std::string path = Wav("short.wav", Tone(440, 1.0, kRate, 1));
    const auto start = steady_clock::now();
    ASSERT_TRUE(engine->Open(path));
    ASSERT_TRUE(WaitForEnd(*engine));
    const std::chrono::duration<double> taken = steady_clock::now() - start;
    EXPECT_GE(taken.count(), 0.70);
    EXPECT_LT(taken.count(), 2.5);
    EXPECT_FALSE(engine->IsPlaying());
    EXPECT_EQ(engine->Position(), 1);
    engine->Toggle();
    engine->Seek(0);
    EXPECT_FALSE(engine->IsPlaying());
}

TEST_F(TransportTest, AskingIsCheap) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", LongSound())));
    const auto start = steady_clock::now();
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(engine->IsPlaying());
        EXPECT_LE(engine->Position(), 5);
    }
    EXPECT_LT(steady_clock::now() - start, milliseconds(500));
}

}  // namespace
}  // namespace audio_tests

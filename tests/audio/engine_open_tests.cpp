// What can be opened and what cannot, and what an open does to the item before.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <random>

#include "engine_fixture.h"

namespace audio_tests {
namespace {

using veldrin::Engine;
using veldrin::Output;

using OpenTest = EngineTest;

std::ptrdiff_t CountEntries(const char* directory) {
    return std::distance(std::filesystem::directory_iterator(directory),
                         std::filesystem::directory_iterator());
}

struct Format {
    const char* extension;
    const char* chain;
    double frequencyTolerance;
};

const Format kFormats[] = {
    {"flac", "flacenc", 0.5},
    {"ogg", "vorbisenc quality=0.6 ! oggmux", 0.5},
    {"oga", "vorbisenc ! oggmux", 0.5},
    {"mp3", "lamemp3enc target=bitrate bitrate=128 cbr=true ! xingmux ! id3v2mux", 0.5},
    {"opus", "opusenc ! oggmux", 0.5},
    {"wv", "wavpackenc", 0.5},
    {"spx", "speexenc ! oggmux", 0.5},
    {"m4a", "voaacenc ! mp4mux", 0.5},
    {"aac", "voaacenc ! audio/mpeg,stream-format=adts", 0.5},
    {"mp2", "twolamemp2enc", 0.5},
    {"aiff", "aiffmux", 0.5},
    {"aif", "aiffmux", 0.5},
    {"mka", "vorbisenc ! matroskamux", 0.5},
};

TEST_F(OpenTest, PlaysEveryFormatThatCanBeMadeHere) {
    const std::string wav = Wav("tone.wav", Tone(440, 3.0));
    int made = 0;
    for (const Format& format : kFormats) {
        SCOPED_TRACE(format.extension);
        const std::string path = directory_ / (std::string("tone.") + format.extension);
        if (!Encode(wav, format.chain, path)) {
            continue;
        }
        ++made;
        auto engine = FileEngine();
        EXPECT_TRUE(engine->Supports(path));
        ASSERT_TRUE(engine->Open(path));
        EXPECT_EQ(engine->Length(), 3);
        EXPECT_EQ(engine->LengthText(), "0:03");
        EXPECT_EQ(engine->Channels(), 2);
        EXPECT_GT(engine->SampleRate(), 31000);
        EXPECT_GT(std::stoi(BitRate(*engine)), 10);
        ASSERT_TRUE(WaitForEnd(*engine));
        EXPECT_EQ(engine->Position(), 3);
        engine.reset();
        const Sound played = ReadWav(OutPath());
        EXPECT_NEAR(played.Seconds(), 3.0, 0.12);
        EXPECT_NEAR(FrequencyOf(played.Channel(0, 0.5, 2.5), played.rate), 440.0,
                    format.frequencyTolerance);
    }
    EXPECT_GE(made, 4);  // flac, ogg, mp3 and one more are expected wherever this is built
}

TEST_F(OpenTest, LosslessFormatsPlayExactly) {
    const Sound noise = Noise(1.0);
    const std::string wav = Wav("noise.wav", noise);
    for (const Format& format : {Format{"flac", "flacenc", 0}, Format{"wv", "wavpackenc", 0}}) {
        const std::string path = directory_ / (std::string("noise.") + format.extension);
        if (Encode(wav, format.chain, path)) {
            auto engine = FileEngine();
            ASSERT_TRUE(engine->Open(path));
            ASSERT_TRUE(WaitForEnd(*engine));
            engine.reset();
            EXPECT_EQ(ReadWav(OutPath()).samples, noise.samples) << format.extension;
        }
    }
}

TEST_F(OpenTest, ManyChannelsAreMixedDown) {
    // More channels than the time-stretching element survives, both with it and without.
    const Sound sound = Tone(440, 1.0, 44100, 24);
    for (const int tempo : {0, 50}) {
        const Sound played = Played(sound, [&](Engine& engine) { engine.SetTempo(tempo); });
        EXPECT_EQ(played.channels, 2);
        EXPECT_NEAR(played.Seconds(), tempo == 0 ? 1.0 : 1.0 / 1.5, 0.05);
        for (const int channel : {0, 1}) {
            const auto middle = played.Channel(channel, 0.2, 0.6);
            EXPECT_NEAR(FrequencyOf(middle, played.rate), 440.0, 2.0);
            EXPECT_NEAR(AmplitudeOf(440, middle, played.rate), 0.25, 0.02);
        }
    }
}

TEST_F(OpenTest, ManyChannelsOfAnOddNumberAreMixedDownAtTheSameLevel) {
    const Sound played = Played(Tone(440, 1.0, 44100, 9));
    for (const int channel : {0, 1}) {
        const auto middle = played.Channel(channel, 0.2, 0.8);
        EXPECT_NEAR(AmplitudeOf(440, middle, played.rate), 0.25, 0.01) << channel;
    }
}

TEST_F(OpenTest, TooHighRatesAreBroughtDown) {
    const Sound sound = Tone(440, 1.0, 384000, 2);
    for (const int tempo : {0, 50}) {
        const Sound played = Played(sound, [&](Engine& engine) { engine.SetTempo(tempo); });
        EXPECT_EQ(played.rate, 96000);
        EXPECT_NEAR(played.Seconds(), tempo == 0 ? 1.0 : 1.0 / 1.5, 0.05);
        EXPECT_NEAR(FrequencyOf(played.Channel(0, 0.2, 0.6), played.rate), 440.0, 2.0);
    }
}

TEST_F(OpenTest, OneFileHoldsTheWholeRunAtTheRateOfItsFirstItem) {
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(Wav("one.wav", Tone(440, 1.0, 22050, 1))));
    ASSERT_TRUE(WaitForEnd(*engine));
    ASSERT_TRUE(engine->Open(Wav("two.wav", Tone(880, 2.0, 48000, 2))));
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_EQ(played.rate, 22050);
    EXPECT_EQ(played.channels, 2);
    EXPECT_NEAR(played.Seconds(), 3.0, 0.01);
    EXPECT_NEAR(FrequencyOf(played.Channel(1, 0.1, 0.9), played.rate), 440.0, 0.5);
    EXPECT_NEAR(FrequencyOf(played.Channel(1, 1.1, 2.9), played.rate), 880.0, 0.5);
}

TEST_F(OpenTest, AnOutputFileOfNothingIsSoundAndEmpty) {
    FileEngine().reset();
    EXPECT_EQ(ReadText(OutPath()).size(), 44U);
    EXPECT_TRUE(ReadWav(OutPath()).samples.empty());
    EXPECT_EQ(ReadWav(OutPath()).rate, 44100);
}

TEST_F(OpenTest, AnOutputFileThatCannotBeWrittenIsSaid) {
    std::vector<std::string> lines;
    Engine engine(Output{Output::Kind::kFile, directory_ / "no/such/out.wav"},
                  [&](const std::string& line) { lines.push_back(line); });
    EXPECT_FALSE(engine.OutputReady());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].find("Cannot write "), 0U);
    EXPECT_TRUE(FileEngine()->OutputReady());
}

TEST_F(OpenTest, WhatCannotBePlayedIsRefusedQuicklyAndInSilence) {
    const std::string wav = Wav("good.wav", Tone(440, 2.0));
    const std::string goodBytes = ReadText(wav);
    WriteText(directory_ / "text.mp3", "This is a letter.\n\nIt has two lines.\n");
    WriteText(directory_ / "empty.mp3", "");
    WriteText(directory_ / "header.wav", goodBytes.substr(0, 20));
    WriteText(directory_ / "zeros.mp3", std::string(300000, '\0'));
    std::filesystem::create_directory(directory_ / "folder.mp3");
    ASSERT_EQ(mkfifo((directory_ / "fifo.mp3").c_str(), 0600), 0);
    std::vector<std::string> names = {"text.mp3",   "empty.mp3", "header.wav",  "zeros.mp3",
                                      "folder.mp3", "fifo.mp3",  "missing.mp3", ""};
    struct Cut {
        const char* chain;
        std::string name;
        std::size_t bytes;
    };
    // Cut within what comes before the first sound.
    for (const Cut& cut :
         {Cut{"flacenc", "cut.flac", 60}, Cut{"vorbisenc ! oggmux", "cut.ogg", 100},
          Cut{"vorbisenc ! oggmux", "cut2.ogg", 1500}, Cut{"wavpackenc", "cut.wv", 20},
          Cut{"opusenc ! oggmux", "cut.opus", 60}}) {
        if (Encode(wav, cut.chain, directory_ / "whole")) {
            WriteText(directory_ / cut.name, ReadText(directory_ / "whole").substr(0, cut.bytes));
            names.push_back(cut.name);
        }
    }
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(wav));  // so that GStreamer has been started
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(engine->Open(directory_ / name));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(OpenTest, AFileWithoutReadPermissionIsRefused) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "root may read everything";
    }
    const std::string path = Wav("secret.wav", Tone(440, 1.0));
    ASSERT_EQ(chmod(path.c_str(), 0), 0);
    EXPECT_FALSE(FileEngine()->Open(path));
}

TEST_F(OpenTest, AFileCutInItsSoundPlaysUpToThere) {
    const std::string path = Wav("tone.wav", Tone(440, 2.0));
    std::filesystem::resize_file(path, 44 + 44100 * 4);
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(path));
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    EXPECT_NEAR(ReadWav(OutPath()).Seconds(), 1.0, 0.01);
}

TEST_F(OpenTest, DamagedFilesDoNoHarmAndAreNotComplainedAbout) {
    const std::string wav = Wav("noise.wav", Noise(1.0));
    std::mt19937 random(5);
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(wav));  // so that GStreamer has been started
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    for (const char* chain : {"lamemp3enc ! xingmux ! id3v2mux", "vorbisenc ! oggmux", "flacenc",
                              "wavenc", "wavpackenc"}) {
        if (!Encode(wav, chain, directory_ / "whole")) {
            continue;
        }
        const std::string whole = ReadText(directory_ / "whole");
        for (int round = 0; round < 20; ++round) {
            std::string bytes = whole;
            const std::size_t range = round % 2 == 0 ? bytes.size() : 2000;
            for (auto left = 1 + random() % 40; left > 0; --left) {
                bytes[random() % range] = static_cast<char>(random());
            }
            WriteText(directory_ / "damaged", bytes);
            if (engine->Open(directory_ / "damaged")) {
                // A damaged length may be a long one, so not to the end.
                WaitUntil([&] { return !engine->IsPlaying(); }, std::chrono::milliseconds(200));
            }
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(engine->Open(wav));
}

TEST_F(OpenTest, PicturesInAFileAreNotTakenForSound) {
    const std::string path = directory_ / "film.mkv";
    if (!MakeFilm(path, true)) {
        GTEST_SKIP() << "no encoder for a film here";
    }
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(path));
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    EXPECT_NEAR(ReadWav(OutPath()).Seconds(), 1.0, 0.1);
    ASSERT_TRUE(MakeFilm(path, false));
    EXPECT_FALSE(SilentEngine()->Open(path));
}

TEST_F(OpenTest, NamesAreRawBytes) {
    const Sound tone = Tone(440, 0.5);
    for (const std::string name :
         {"caf\xE9.wav", "100% #1?.wav", "a b&c=d;e.wav", "\xFF\xFE.wav", "new\nline.wav"}) {
        auto engine = FileEngine();
        EXPECT_TRUE(engine->Open(Wav(name, tone))) << name;
        EXPECT_TRUE(WaitForEnd(*engine));
        engine.reset();
        EXPECT_NEAR(ReadWav(OutPath()).Seconds(), 0.5, 0.01) << name;
    }
}

TEST_F(OpenTest, AFailedOpenLeavesTheItemPlaying) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", Tone(440, 60.0, 8000, 1))));
    engine->Seek(30);
    ASSERT_TRUE(WaitUntil([&] { return engine->Position() >= 30; }));
    WriteText(directory_ / "text.mp3", "no music");
    EXPECT_FALSE(engine->Open(directory_ / "text.mp3"));
    EXPECT_FALSE(engine->Open(directory_ / "missing.mp3"));
    EXPECT_TRUE(engine->IsPlaying());
    EXPECT_EQ(engine->Length(), 60);
    EXPECT_EQ(engine->SampleRate(), 8000);
    EXPECT_GE(engine->Position(), 30);
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 31; }));  // and it moves on
}

TEST_F(OpenTest, AFailedOpenLeavesAPausedItemPaused) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", Tone(440, 60.0, 8000, 1))));
    engine->Pause();
    engine->Seek(30);
    WriteText(directory_ / "text.mp3", "no music");
    EXPECT_FALSE(engine->Open(directory_ / "text.mp3"));
    EXPECT_TRUE(engine->IsPaused());
    EXPECT_EQ(engine->Position(), 30);
    EXPECT_EQ(BitRate(*engine), "128");
    engine->Toggle();
    EXPECT_FALSE(engine->IsPaused());
}

TEST_F(OpenTest, ReplacingAnItemManyTimesLeavesNothingBehind) {
    const std::string one = Wav("one.wav", Tone(440, 30.0, 8000, 1));
    const std::string two = Wav("two.wav", Tone(880, 30.0, 44100, 2));
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(one));
    ASSERT_TRUE(engine->Open(two));
    const auto files = CountEntries("/proc/self/fd");
    const auto threads = CountEntries("/proc/self/task");
    for (int i = 0; i < 25; ++i) {
        ASSERT_TRUE(engine->Open(one));
        ASSERT_TRUE(engine->Open(two));
        engine->SetTempo(i % 2 == 0 ? 10 : 0);
    }
    // Each pipeline left behind would hold three files and one thread or more. GLib keeps some idle
    // threads for later use, and takes a moment to close what they had open.
    EXPECT_TRUE(WaitUntil([&] {
        return CountEntries("/proc/self/fd") <= files + 10 &&
               CountEntries("/proc/self/task") <= threads + 10;
    }));
    engine->Stop();
    EXPECT_TRUE(WaitUntil([&] { return CountEntries("/proc/self/fd") <= files; }));
}

TEST_F(OpenTest, ANewItemIsHeardInPlaceOfTheOld) {
    auto engine = FileEngine();
    ASSERT_TRUE(engine->Open(Wav("long.wav", Tone(440, 600.0, 8000, 1))));
    ASSERT_TRUE(engine->Open(Wav("short.wav", Tone(880, 2.0, 8000, 1))));
    ASSERT_TRUE(WaitForEnd(*engine));
    engine.reset();
    const Sound played = ReadWav(OutPath());
    EXPECT_LT(played.Seconds(), 590.0);
    const double start = played.Seconds() - 2.0;  // of the second item, which is there whole
    ASSERT_GE(start, -0.001);
    EXPECT_NEAR(FrequencyOf(played.Channel(0, start + 0.01, start + 2.0), played.rate), 880.0, 0.5);
}

TEST_F(OpenTest, OutputTextsAreRead) {
    EXPECT_EQ(Output::Parse("auto")->kind, Output::Kind::kAuto);
    EXPECT_EQ(Output::Parse("null")->kind, Output::Kind::kNull);
    const auto file = Output::Parse("file:/tmp/a:b.wav");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->kind, Output::Kind::kFile);
    EXPECT_EQ(file->path, "/tmp/a:b.wav");
    EXPECT_FALSE(Output::Parse("file:"));
    EXPECT_FALSE(Output::Parse(""));
    EXPECT_FALSE(Output::Parse("Auto"));
}

}  // namespace
}  // namespace audio_tests

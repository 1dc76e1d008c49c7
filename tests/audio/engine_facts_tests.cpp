// What the engine tells: of the item, of the types that it can play, and of itself.
#include <stdlib.h>
#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <iterator>
#include <memory>

#include "engine_fixture.h"

namespace audio_tests {
namespace {

using veldrin::Engine;
using veldrin::Output;

using FactsTest = EngineTest;

TEST_F(FactsTest, TellsTheFactsOfTheMedium) {
    auto engine = FileEngine();
    EXPECT_EQ(engine->SampleRate(), 0);
    EXPECT_EQ(engine->Channels(), 0);
    EXPECT_EQ(engine->BitRateText(), "");
    EXPECT_EQ(engine->Length(), 0);
    ASSERT_TRUE(engine->Open(Wav("mono.wav", Tone(440, 61.6, 22050, 1))));
    EXPECT_EQ(engine->SampleRate(), 22050);
    EXPECT_EQ(engine->Channels(), 1);
    EXPECT_EQ(BitRate(*engine), "353");  // 22050 Hz of 16 bits: 352.8
    EXPECT_EQ(engine->Length(), 62);
    EXPECT_EQ(engine->LengthText(), "1:02");
    ASSERT_TRUE(engine->Open(Wav("short.wav", Tone(440, 0.2, 8000, 1))));
    EXPECT_EQ(engine->Length(), 1);
    EXPECT_EQ(engine->SampleRate(), 8000);
    EXPECT_EQ(BitRate(*engine), "128");  // and not that of the item before
    ASSERT_TRUE(engine->Open(Wav("stereo.wav", Tone(440, 1.0, 96000, 2))));
    EXPECT_EQ(engine->SampleRate(), 96000);
    EXPECT_EQ(engine->Channels(), 2);
}

TEST_F(FactsTest, TheFactsAreThoseOfTheMediumAndNotOfWhatIsPlayed) {
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(Wav("many.wav", Tone(440, 1.0, 192000, 6))));
    EXPECT_EQ(engine->SampleRate(), 192000);
    EXPECT_EQ(engine->Channels(), 6);
}

TEST_F(FactsTest, WithoutABitRateInItsTagsTheSizeTellsIt) {
    const std::string path = directory_ / "noise.mka";
    if (!Encode(Wav("noise.wav", Noise(4.0)), "vorbisenc ! matroskamux", path)) {
        GTEST_SKIP() << "no encoder for such a file here";
    }
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(path));
    const double size = static_cast<double>(std::filesystem::file_size(path));
    EXPECT_NEAR(std::stoi(BitRate(*engine)), size * 8 / 1000 / 4.0, 1.0);
}

TEST_F(FactsTest, MinutesGoOnBeyondTheHour) {
    // 3700 seconds of 8 bits, of which the disk holds next to nothing.
    const std::string path = Wav("hours.wav", Sound{8000, 1, {0.0F}});
    std::string bytes = ReadText(path).substr(0, 44);
    const auto put = [&](std::size_t place, unsigned number) {
        for (std::size_t i = 0; i < 4; ++i) {
            bytes[place + i] = static_cast<char>(number >> (8 * i));
        }
    };
    constexpr unsigned kData = 3700 * 8000;
    put(4, kData + 36);
    put(28, 8000);        // bytes in a second
    put(32, 0x00080001);  // a byte for each frame, of 8 bits
    put(40, kData);
    WriteText(path, bytes);
    std::filesystem::resize_file(path, 44 + kData);
    auto engine = SilentEngine();
    ASSERT_TRUE(engine->Open(path));
    EXPECT_EQ(engine->LengthText(), "61:40");
    engine->Seek(3605);
    EXPECT_EQ(engine->PlayedText(), "60:05");
    EXPECT_EQ(engine->RemainingText(), "-1:35");
}

TEST_F(FactsTest, FileTypesAreRememberedUntilPlugInsChange) {
    const std::string file = directory_ / "file-types";
    const Output silent{Output::Kind::kNull, {}};
    const std::string installed = Engine(silent, {}, file).FileTypes();
    EXPECT_EQ(Engine(silent, {}, file).FileTypes(), installed);

    // What stands in the file is believed as long as its stamp holds.
    std::string stamp;
    std::getline(std::ifstream(file), stamp);
    std::ofstream(file) << stamp << "\nabc\n\n";
    EXPECT_EQ(Engine(silent, {}, file).FileTypes(), "*.abc");
    EXPECT_TRUE(Engine(silent, {}, file).Supports("x.abc"));

    // Cut short, or of other plug-ins, it is not.
    std::ofstream(file) << stamp << "\nabc\n";
    EXPECT_EQ(Engine(silent, {}, file).FileTypes(), installed);
    std::ofstream(file) << stamp << " /more 1.2\nabc\n\n";
    EXPECT_EQ(Engine(silent, {}, file).FileTypes(), installed);
    EXPECT_EQ(Engine(silent, {}, file).FileTypes(), installed);
}

TEST_F(FactsTest, FileTypesAreLearntWhereTheyAreNotRemembered) {
    const std::string file = directory_ / "file-types";
    const Output silent{Output::Kind::kNull, {}};
    {
        Engine engine(silent, {}, file);
        const auto learnt = std::make_shared<std::promise<void>>();
        if (engine.LearnTypes([learnt] { learnt->set_value(); })) {
            learnt->get_future().wait();
        }
        EXPECT_EQ(engine.FileTypes(), SilentEngine()->FileTypes());
        EXPECT_FALSE(engine.LearnTypes([] { FAIL() << "twice"; }));
    }
    EXPECT_FALSE(Engine(silent, {}, file).LearnTypes([] { FAIL() << "known"; }));
}

TEST_F(FactsTest, FileTypesAreAskedForWhereTheyCannotBeRead) {
    const std::string file = directory_ / "file-types";
    const Output silent{Output::Kind::kNull, {}};
    const std::string installed = Engine(silent, {}, file).FileTypes();
    std::string stamp;
    std::getline(std::ifstream(file), stamp);
    using std::filesystem::file_type;
    const auto tryOnce = [&](const char* what, file_type after) {
        SCOPED_TRACE(what);
        EXPECT_EQ(Engine(silent, {}, file).FileTypes(), installed);
        EXPECT_EQ(std::filesystem::symlink_status(file).type(), after);
        std::filesystem::remove(file);
    };
    std::ofstream(file) << stamp << "\nabc\n\n" << std::string(64 << 10, 'x');
    tryOnce("a large file", file_type::regular);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    tryOnce("a pipe", file_type::fifo);
    std::filesystem::create_symlink("nowhere", file);
    tryOnce("a link that leads nowhere", file_type::regular);
    std::filesystem::create_directory(file);
    tryOnce("a folder", file_type::directory);
}

TEST_F(FactsTest, WhatWasRememberedEndsWithAChangeOfAnyPlugInFolder) {
    const std::string file = directory_ / "kept/file-types";
    std::filesystem::create_directory(directory_ / "kept");
    std::filesystem::create_directory(directory_ / "plugins");
    const Output silent{Output::Kind::kNull, {}};
    for (const char* variable : {"GST_PLUGIN_PATH", "GST_PLUGIN_PATH_1_0", "GST_PLUGIN_SYSTEM_PATH",
                                 "GST_PLUGIN_SYSTEM_PATH_1_0"}) {
        SCOPED_TRACE(variable);
        ASSERT_EQ(setenv(variable, (directory_ / "plugins").c_str(), 1), 0);
        const std::string installed = Engine(silent, {}, file).FileTypes();
        std::string stamp;
        std::getline(std::ifstream(file), stamp);
        std::ofstream(file) << stamp << "\nabc\n\n";
        EXPECT_EQ(Engine(silent, {}, file).FileTypes(), "*.abc");
        const auto before = std::filesystem::last_write_time(directory_ / "plugins");
        std::filesystem::last_write_time(directory_ / "plugins", before + std::chrono::seconds(1));
        EXPECT_EQ(Engine(silent, {}, file).FileTypes(), installed);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory_ / "kept"), {}), 1);
        unsetenv(variable);
    }
}

TEST_F(FactsTest, WhatWasRememberedGivesWayToWhatIsInstalled) {
    const std::string file = directory_ / "file-types";
    const Output silent{Output::Kind::kNull, {}};
    const std::string installed = Engine(silent, {}, file).FileTypes();
    std::string stamp;
    std::getline(std::ifstream(file), stamp);
    std::ofstream(file) << stamp << "\nabc\n\n";
    Engine engine(silent, {}, file);
    EXPECT_EQ(engine.FileTypes(), "*.abc");
    EXPECT_TRUE(engine.Open(Wav("a.wav", Tone(440, 1, 8000, 1))));
    EXPECT_EQ(engine.FileTypes(), installed);
}

TEST_F(FactsTest, FileTypesAreThoseOfTheInstalledDecoders) {
    auto engine = SilentEngine();
    const std::string types = engine->FileTypes();
    for (const char* pattern : {"*.mp3", "*.ogg", "*.flac", "*.wav"}) {
        EXPECT_NE((";" + types + ";").find(std::string(";") + pattern + ";"), std::string::npos)
            << pattern;
    }
    EXPECT_TRUE(engine->Supports("/music/Song.MP3"));
    EXPECT_TRUE(engine->Supports("a.b.Flac"));
    EXPECT_TRUE(engine->Supports(".ogg"));
    EXPECT_FALSE(engine->Supports("/music.mp3/Song"));
    EXPECT_FALSE(engine->Supports("mp3"));
    EXPECT_FALSE(engine->Supports("cover.jpg"));
    EXPECT_FALSE(engine->Supports("song.mp3x"));
    EXPECT_FALSE(engine->Supports("song."));
    EXPECT_FALSE(engine->Supports(""));
}

TEST_F(FactsTest, PartsNameTheEngineTheTagsAndTheOutput) {
    const std::vector<std::string> parts = FileEngine()->Parts();
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(parts[0].find("Audio engine: GStreamer 1."), 0U);
    EXPECT_EQ(parts[1].find("Tags: TagLib "), 0U);
    EXPECT_EQ(parts[2], "Output: WAV file " + OutPath());
}

}  // namespace
}  // namespace audio_tests

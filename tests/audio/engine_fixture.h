// What the engine's tests share: a directory, an engine that writes to a file in it, and waiting.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host/engine/engine.h"
#include "sound_files.h"

namespace audio_tests {

/// Asks every few milliseconds until the answer is True; False after the time.
inline bool WaitUntil(const std::function<bool()>& question,
                      std::chrono::milliseconds time = std::chrono::seconds(10)) {
    const auto deadline = std::chrono::steady_clock::now() + time;
    while (!question()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

inline bool WaitForEnd(veldrin::Engine& engine) {
    return WaitUntil([&] { return !engine.IsPlaying(); }, std::chrono::seconds(30));
}

/// The bit rate of the present item, as soon as its file has been read for it.
inline std::string BitRate(veldrin::Engine& engine) {
    std::string text;
    WaitUntil([&] { return (text = engine.BitRateText()) != "0"; }, std::chrono::seconds(30));
    return text;
}

class EngineTest : public testing::Test {
  protected:
    std::string OutPath() const { return directory_ / "out.wav"; }

    /// An engine that writes all it plays to OutPath().
    std::unique_ptr<veldrin::Engine> FileEngine(
        veldrin::Loudness loudness = veldrin::Loudness::kOff) const {
        return std::make_unique<veldrin::Engine>(
            veldrin::Output{veldrin::Output::Kind::kFile, OutPath()}, veldrin::Engine::Notice(),
            std::string(), loudness);
    }
    /// An engine that plays in real time, unheard.
    static std::unique_ptr<veldrin::Engine> SilentEngine() {
        return std::make_unique<veldrin::Engine>(veldrin::Output{veldrin::Output::Kind::kNull, {}});
    }

    /// A new WAV file with this sound.
    std::string Wav(const std::string& name, const Sound& sound) const {
        WriteWav(directory_ / name, sound);
        return directory_ / name;
    }

    /// Plays the sound to its end through an engine that is set up first, and reads what came out.
    Sound Played(const Sound& sound,
                 const std::function<void(veldrin::Engine&)>& setUp = {}) const {
        const std::string path = Wav("in.wav", sound);
        auto engine = FileEngine();
        if (setUp) {
            setUp(*engine);
        }
        EXPECT_TRUE(engine->Open(path));
        EXPECT_TRUE(WaitForEnd(*engine));
        engine.reset();
        return ReadWav(OutPath());
    }

    TemporaryDirectory directory_;
};

}  // namespace audio_tests

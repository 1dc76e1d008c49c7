// The engine and the desktop's sound device: one that works, one that goes, and none at all.
#include "engine_fixture.h"
#include "fake_device.h"

namespace audio_tests {
namespace {

using veldrin::Engine;
using veldrin::Output;

class DeviceTest : public EngineTest {
  protected:
    std::unique_ptr<Engine> DeviceEngine() {
        return std::make_unique<Engine>(
            Output{Output::Kind::kAuto, {}},
            [this](const std::string& line) { lines_.push_back(line); });
    }
    std::string LongFile() { return Wav("long.wav", Tone(440, 100.0, 8000, 1)); }

    std::vector<std::string> lines_;
};

TEST_F(DeviceTest, IsOpenedOnceForAllItems) {
    UseFakeDevice(true);
    {
        auto engine = DeviceEngine();
        for (int i = 0; i < 5; ++i) {
            ASSERT_TRUE(engine->Open(LongFile()));
            EXPECT_EQ(OpenFakeDevices(), 1);
        }
        EXPECT_EQ(engine->Parts().at(2), "Output: Fake device");
        EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 1; }));
        engine->Stop();
    }
    EXPECT_EQ(OpenFakeDevices(), 0);
    EXPECT_EQ(FakeDevicesEverOpened(), 1);
    EXPECT_TRUE(lines_.empty());
}

TEST_F(DeviceTest, WithoutOnePlaysSilentlyInRealTimeAndSaysSoOnce) {
    UseFakeDevice(false);
    auto engine = DeviceEngine();
    const std::string path = Wav("short.wav", Tone(440, 1.0, 8000, 1));
    const auto start = std::chrono::steady_clock::now();
    const auto taken = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    };
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(engine->Open(path));
        ASSERT_TRUE(WaitForEnd(*engine));
        EXPECT_GE(taken(), i + 0.70);
        EXPECT_LT(taken(), i + 2.5);
    }
    EXPECT_EQ(lines_, std::vector<std::string>{"No sound device found; playing silently"});
    EXPECT_EQ(engine->Parts().at(2), "Output: none found (silent)");
    engine.reset();  // when the last one has been heard to its end
    EXPECT_GE(taken(), 1.95);
}

TEST_F(DeviceTest, OneThatComesLaterIsTakenForTheNextItem) {
    UseFakeDevice(false);
    auto engine = DeviceEngine();
    ASSERT_TRUE(engine->Open(LongFile()));
    PlugFakeDevice(true);
    ASSERT_TRUE(engine->Open(LongFile()));
    EXPECT_EQ(OpenFakeDevices(), 1);
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 1; }));
}

TEST_F(DeviceTest, OneThatGoesIsReplacedAtTheSamePlace) {
    UseFakeDevice(true);
    auto engine = DeviceEngine();
    engine->SetTempo(50);
    ASSERT_TRUE(engine->Open(LongFile()));
    engine->Seek(50);
    ASSERT_TRUE(WaitUntil([&] { return engine->Position() >= 51; }));
    PlugFakeDevice(false);
    BreakFakeDevice();
    ASSERT_TRUE(WaitUntil([&] { return engine->IsPlaying() && !lines_.empty(); }));
    EXPECT_EQ(lines_, std::vector<std::string>{"The sound device has gone; playing silently"});
    EXPECT_EQ(OpenFakeDevices(), 0);
    EXPECT_GE(engine->Position(), 51);
    EXPECT_LE(engine->Position(), 53);
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 54; }));
    EXPECT_EQ(lines_.size(), 1U);
}

TEST_F(DeviceTest, AnotherOneTakesOverInSilence) {
    UseFakeDevice(true);
    auto engine = DeviceEngine();
    ASSERT_TRUE(engine->Open(LongFile()));
    ASSERT_TRUE(WaitUntil([&] { return engine->Position() >= 1; }));
    engine->Pause();
    BreakFakeDevice();
    ASSERT_TRUE(WaitUntil([&] { return engine->IsPlaying() && FakeDevicesEverOpened() == 2; }));
    EXPECT_EQ(OpenFakeDevices(), 1);
    EXPECT_TRUE(engine->IsPaused());
    EXPECT_EQ(engine->Position(), 1);
    engine->Toggle();
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 2; }));
    EXPECT_TRUE(lines_.empty());
}

TEST_F(DeviceTest, OneThatGoesAgainAtOnceIsGivenUp) {
    UseFakeDevice(true);
    auto engine = DeviceEngine();
    ASSERT_TRUE(engine->Open(LongFile()));
    engine->Pause();
    BreakFakeDevice();
    ASSERT_TRUE(WaitUntil([&] { return engine->IsPlaying() && FakeDevicesEverOpened() == 2; }));
    BreakFakeDevice();
    ASSERT_TRUE(WaitUntil([&] { return engine->IsPlaying() && !lines_.empty(); }));
    EXPECT_EQ(OpenFakeDevices(), 0);
    EXPECT_EQ(FakeDevicesEverOpened(), 2);
    engine->Toggle();
    EXPECT_TRUE(WaitUntil([&] { return engine->Position() >= 1; }));
}

TEST_F(DeviceTest, OneThatGoesOnceInEachOfTwoItemsIsReplacedEachTime) {
    UseFakeDevice(true);
    auto engine = DeviceEngine();
    for (const int opened : {2, 3}) {
        ASSERT_TRUE(engine->Open(LongFile()));
        engine->Pause();
        BreakFakeDevice();
        ASSERT_TRUE(
            WaitUntil([&] { return engine->IsPlaying() && FakeDevicesEverOpened() == opened; }));
        EXPECT_EQ(OpenFakeDevices(), 1);
    }
    EXPECT_TRUE(lines_.empty());
}

TEST_F(DeviceTest, WithoutANoticeTheLineGoesToStandardError) {
    UseFakeDevice(false);
    testing::internal::CaptureStderr();
    {
        Engine engine(Output{Output::Kind::kAuto, {}});
        EXPECT_TRUE(engine.Open(LongFile()));
        EXPECT_TRUE(engine.Open(LongFile()));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "No sound device found; playing silently\n");
}

}  // namespace
}  // namespace audio_tests

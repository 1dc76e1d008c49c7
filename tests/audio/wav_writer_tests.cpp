// The WAV file that an output writes, byte by byte.
#include "host/engine/wav_writer.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "sound_files.h"

namespace audio_tests {
namespace {

using veldrin::WavWriter;

class WavWriterTest : public testing::Test {
  protected:
    /// A number of so many bytes in the file's header.
    unsigned Header(std::size_t place, std::size_t count) const {
        const std::string bytes = ReadText(path_);
        unsigned number = 0;
        for (std::size_t i = count; i > 0; --i) {
            number = number * 256 + static_cast<unsigned char>(bytes.at(place + i - 1));
        }
        return number;
    }

    TemporaryDirectory directory_;
    std::string path_ = directory_ / "out.wav";
};

TEST_F(WavWriterTest, TheHeaderIsTrue) {
    {
        WavWriter writer(path_);
        writer.SetRate(22050);
        writer.Write(std::vector<float>(1000));
        writer.Write(std::vector<float>(234));
    }
    EXPECT_EQ(ReadText(path_).size(), 44U + 1234 * 2);
    EXPECT_EQ(Header(4, 4), 36U + 1234 * 2);
    EXPECT_EQ(Header(16, 4), 16U);         // bytes of what follows
    EXPECT_EQ(Header(20, 2), 1U);          // plain
    EXPECT_EQ(Header(22, 2), 2U);          // channels
    EXPECT_EQ(Header(24, 4), 22050U);      // frames in a second
    EXPECT_EQ(Header(28, 4), 22050U * 4);  // bytes in a second
    EXPECT_EQ(Header(32, 2), 4U);          // bytes of a frame
    EXPECT_EQ(Header(34, 2), 16U);         // bits of a sample
    EXPECT_EQ(Header(40, 4), 1234U * 2);
}

TEST_F(WavWriterTest, WhatIsBeyondFullIsFullAndWhatIsNoNumberIsSilent) {
    {
        WavWriter writer(path_);
        writer.SetRate(8000);
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        writer.Write(std::array{1.5F, -kInfinity, std::numeric_limits<float>::quiet_NaN(), 0.25F});
    }
    EXPECT_EQ(Header(44, 2), 0x7FFFU);
    EXPECT_EQ(Header(46, 2), 0x8000U);
    EXPECT_EQ(Header(48, 2), 0U);
    EXPECT_EQ(Header(50, 2), 0x2000U);
}

TEST_F(WavWriterTest, AFinishedFileIsWholeAndStaysSo) {
    WavWriter writer(path_);
    writer.SetRate(8000);
    writer.Write(std::vector<float>(10));
    writer.Finish();
    writer.Write(std::vector<float>(10));
    writer.Finish();
    EXPECT_EQ(ReadText(path_).size(), 44U + 20);
    EXPECT_EQ(Header(40, 4), 20U);
    EXPECT_EQ(writer.Error(), 0);
}

TEST_F(WavWriterTest, AFileOfNothingIsSoundAndEmpty) {
    WavWriter(path_).Error();
    EXPECT_EQ(ReadText(path_).size(), 44U);
    EXPECT_EQ(Header(4, 4), 36U);
    EXPECT_EQ(Header(24, 4), 44100U);
    EXPECT_EQ(Header(40, 4), 0U);
}

TEST_F(WavWriterTest, SamplesAreRoundedAndHeldWithinTheScale) {
    {
        WavWriter writer(path_);
        writer.SetRate(8000);
        writer.Write(
            std::vector{0.0F, 0.25F, 1.0F, -1.0F, 1.5F, -1.5F, 0.6F / 32768, -0.6F / 32768});
    }
    const std::vector<float> expected = {0, 8192, 32767.0F, -32768.0F, 32767.0F, -32768.0F, 1, -1};
    std::vector<float> written = ReadWav(path_).samples;
    for (float& sample : written) {
        sample *= 32768.0F;
    }
    EXPECT_EQ(written, expected);
}

TEST_F(WavWriterTest, TheFirstRateStays) {
    {
        WavWriter writer(path_);
        EXPECT_EQ(writer.Rate(), 0);
        writer.SetRate(8000);
        writer.SetRate(48000);
        EXPECT_EQ(writer.Rate(), 8000);
    }
    EXPECT_EQ(Header(24, 4), 8000U);
}

}  // namespace
}  // namespace audio_tests

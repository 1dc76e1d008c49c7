// What the tags of files say about their loudness, wherever programs put it.
#include "host/engine/level_tags.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/relativevolumeframe.h>

#include "sound_files.h"
#include "tagged_files.h"

namespace audio_tests {
namespace {

using TagLib::ID3v2::RelativeVolumeFrame;
using veldrin::LevelTags;
using veldrin::ReadLevelTags;

class LevelTagsTest : public testing::Test {
  protected:
    /// The path of a new file without tags; empty if it cannot be made here.
    std::string Made(const std::string& extension, const std::string& chain) const {
        WriteWav(directory_ / "in.wav", Tone(440, 0.2));
        const std::string path = directory_ / ("made." + extension);
        return Encode(directory_ / "in.wav", chain, path) ? path : std::string();
    }
    static void AddVolume(TagLib::MPEG::File& file, const char* name, float gain,
                          unsigned char bits, const TagLib::ByteVector& peak) {
        auto* frame = new RelativeVolumeFrame;
        frame->setIdentification(name);
        frame->setVolumeAdjustment(gain);
        RelativeVolumeFrame::PeakVolume volume;
        volume.bitsRepresentingPeak = bits;
        volume.peakVolume = peak;
        frame->setPeakVolume(volume);
        file.ID3v2Tag(true)->addFrame(frame);  // which owns it from now on
    }
    static bool IsEmpty(const LevelTags& tags) {
        return !tags.trackGain && !tags.trackPeak && !tags.albumGain && !tags.albumPeak;
    }

    TemporaryDirectory directory_;
};

TEST_F(LevelTagsTest, NamesInCommentsAreKnownInAnyCase) {
    const std::string path = Made("flac", "flacenc");
    ASSERT_FALSE(path.empty());
    EXPECT_TRUE(IsEmpty(ReadLevelTags(path)));
    SetTag(path, "replaygain_track_gain", "-7.25 dB");
    SetTag(path, "REPLAYGAIN_TRACK_PEAK", "0.5");
    SetTag(path, "ReplayGain_Album_Gain", "+2.5 dB");
    SetTag(path, "REPLAYGAIN_ALBUM_PEAK", "0.75");
    const LevelTags tags = ReadLevelTags(path);
    EXPECT_EQ(tags.trackGain, -7.25);
    EXPECT_EQ(tags.trackPeak, 0.5);
    EXPECT_EQ(tags.albumGain, 2.5);
    EXPECT_EQ(tags.albumPeak, 0.75);
}

TEST_F(LevelTagsTest, GainsOfOpusGoFirst) {
    const std::string path = Made("opus", "opusenc ! oggmux");
    ASSERT_FALSE(path.empty());
    SetTag(path, "REPLAYGAIN_TRACK_GAIN", "-1 dB");
    SetTag(path, "REPLAYGAIN_ALBUM_GAIN", "-2 dB");
    SetTag(path, "R128_TRACK_GAIN", "-2304");  // -9 dB from -23 LUFS
    const LevelTags tags = ReadLevelTags(path);
    EXPECT_EQ(tags.trackGain, -4.0);
    EXPECT_EQ(tags.albumGain, -2.0);
}

TEST_F(LevelTagsTest, BothTagsOfAnMp3AreRead) {
    const std::string path = Made("mp3", "lamemp3enc");
    ASSERT_FALSE(path.empty());
    {
        TagLib::MPEG::File file(path.c_str(), false);
        file.ID3v2Tag(true)->setTitle("Title");
        file.APETag(true)->addValue("replaygain_track_gain", "-5.50 dB");
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadLevelTags(path).trackGain, -5.5);
    SetTag(path, "REPLAYGAIN_TRACK_GAIN", "-3 dB");
    EXPECT_EQ(ReadLevelTags(path).trackGain, -3.0);
}

TEST_F(LevelTagsTest, FramesOfLoudnessAreReadBehindALargePicture) {
    const std::string path = Made("mp3", "lamemp3enc");
    ASSERT_FALSE(path.empty());
    {
        TagLib::MPEG::File file(path.c_str(), false);
        auto* picture = new TagLib::ID3v2::AttachedPictureFrame;
        picture->setPicture(TagLib::ByteVector(300000, 'p'));
        file.ID3v2Tag(true)->addFrame(picture);
        AddVolume(file, "Album", -3.5F, 16, TagLib::ByteVector("\x40\x00", 2));
        AddVolume(file, "track", 2.0F, 24, TagLib::ByteVector("\xC0\x00\x00", 3));
        AddVolume(file, "normalize", 9.0F, 16, TagLib::ByteVector("\x10\x00", 2));
        ASSERT_TRUE(file.save());
    }
    // The highest of so many bits is full scale.
    const LevelTags tags = ReadLevelTags(path);
    EXPECT_EQ(tags.albumGain, -3.5);
    EXPECT_EQ(tags.albumPeak, 0.5);
    EXPECT_EQ(tags.trackGain, 2.0);
    EXPECT_EQ(tags.trackPeak, 1.5);
}

TEST_F(LevelTagsTest, NamesThatMp4LeavesToEverybodyAreRead) {
    const std::string path = Made("m4a", "voaacenc ! mp4mux");
    if (path.empty()) {
        GTEST_SKIP() << "no encoder";
    }
    {
        TagLib::MP4::File file(path.c_str(), false);
        const auto set = [&](const char* name, const char* value) {
            file.tag()->setItem(name, TagLib::MP4::Item(TagLib::StringList(value)));
        };
        set("----:com.apple.iTunes:replaygain_track_gain", "-4 dB");
        set("----:org.hydrogenaudio.replaygain:REPLAYGAIN_ALBUM_GAIN", "-9.5 dB");
        set("----:com.apple.iTunes:iTunNORM", " 000003E8 000003E8");
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadLevelTags(path).trackGain, -4.0);
    EXPECT_EQ(ReadLevelTags(path).albumGain, -9.5);
}

TEST_F(LevelTagsTest, AttributesOfAsfAreRead) {
    const std::string path = Made("wma", "lamemp3enc ! asfmux");
    if (path.empty()) {
        GTEST_SKIP() << "no encoder";
    }
    {
        TagLib::ASF::File file(path.c_str(), false);
        file.tag()->setAttribute("replaygain_track_gain", TagLib::String("-4 dB"));
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadLevelTags(path).trackGain, -4.0);
}

TEST_F(LevelTagsTest, DamagedAndMissingOnesAreNone) {
    const std::string path = Made("flac", "flacenc");
    ASSERT_FALSE(path.empty());
    SetTag(path, "REPLAYGAIN_TRACK_GAIN", "nan dB");
    SetTag(path, "REPLAYGAIN_TRACK_PEAK", "-1");
    SetTag(path, "REPLAYGAIN_ALBUM_GAIN", "");
    SetTag(path, "REPLAYGAIN_ALBUM_PEAK", "1e300");
    WriteText(directory_ / "rubbish.mp3", std::string(5000, '\xFF'));
    ASSERT_EQ(mkfifo((directory_ / "pipe.flac").c_str(), 0600), 0);
    for (const char* name : {"made.flac", "rubbish.mp3", "pipe.flac", "missing.ogg", "."}) {
        EXPECT_TRUE(IsEmpty(ReadLevelTags(directory_ / name))) << name;
    }
}

}  // namespace
}  // namespace audio_tests

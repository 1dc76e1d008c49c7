// Pictures embedded in music files, wherever players put them.
#include "host/engine/tag_picture.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/xiphcomment.h>

#include "sound_files.h"

namespace audio_tests {
namespace {

using TagLib::ByteVector;
using veldrin::kMostPictureBytes;
using veldrin::ReadPicture;

/// Nothing in it may be taken for a frame of sound.
std::string Bytes(long count, char fill) {
    return "\xFF\xD8\xFF" + std::string(static_cast<std::size_t>(count) - 3, fill);
}

ByteVector Vector(const std::string& bytes) {
    return {bytes.data(), static_cast<unsigned>(bytes.size())};
}

class TagPicture : public testing::Test {
  protected:
    /// A file without tags; false if it cannot be made here.
    bool Make(const std::string& path, const std::string& chain) const {
        WriteWav(directory_ / "in.wav", Tone(440, 0.2));
        return Encode(directory_ / "in.wav", chain, path);
    }
    static void AddToId3(const std::string& path, const std::string& picture,
                         TagLib::ID3v2::AttachedPictureFrame::Type type) {
        TagLib::MPEG::File file(path.c_str());
        auto* frame = new TagLib::ID3v2::AttachedPictureFrame;  // the tag's own from here on
        frame->setPicture(Vector(picture));
        frame->setType(type);
        file.ID3v2Tag(true)->addFrame(frame);
        file.ID3v2Tag()->setTitle("Title");
        ASSERT_TRUE(file.save());
    }
    static TagLib::FLAC::Picture* FlacPicture(const std::string& picture,
                                              TagLib::FLAC::Picture::Type type) {
        auto* made = new TagLib::FLAC::Picture;
        made->setData(Vector(picture));
        made->setType(type);
        return made;
    }

    TemporaryDirectory directory_;
};

using PictureFrame = TagLib::ID3v2::AttachedPictureFrame;

TEST_F(TagPicture, OfAnMp3SmallAndLarge) {
    for (const long size : {100L, 300'000L, 2'000'000L}) {
        const std::string path = directory_ / "a.mp3";
        WriteText(path, "");
        AddToId3(path, Bytes(size, 'p'), PictureFrame::Other);
        EXPECT_EQ(ReadPicture(path), Bytes(size, 'p')) << size;
    }
}

TEST_F(TagPicture, TheFrontCoverIsTakenOfSeveral) {
    const std::string path = directory_ / "a.mp3";
    WriteText(path, "");
    AddToId3(path, Bytes(50'000, 'x'), PictureFrame::BackCover);
    AddToId3(path, Bytes(50'000, 'y'), PictureFrame::FrontCover);
    AddToId3(path, Bytes(50'000, 'z'), PictureFrame::FrontCover);
    EXPECT_EQ(ReadPicture(path), Bytes(50'000, 'y'));
}

TEST_F(TagPicture, OneThatIsTooLargeIsPassedOver) {
    const std::string path = directory_ / "a.mp3";
    WriteText(path, "");
    AddToId3(path, Bytes(kMostPictureBytes + 1, 'x'), PictureFrame::FrontCover);
    EXPECT_EQ(ReadPicture(path), "");
    AddToId3(path, Bytes(1000, 'y'), PictureFrame::Other);
    EXPECT_EQ(ReadPicture(path), Bytes(1000, 'y'));
}

TEST_F(TagPicture, OfAFlac) {
    const std::string path = directory_ / "a.flac";
    if (!Make(path, "flacenc")) {
        GTEST_SKIP() << "takes an encoder";
    }
    EXPECT_EQ(ReadPicture(path), "");
    {
        TagLib::FLAC::File file(path.c_str());
        file.addPicture(FlacPicture(Bytes(200'000, 'x'), TagLib::FLAC::Picture::Other));
        file.addPicture(FlacPicture(Bytes(200'000, 'y'), TagLib::FLAC::Picture::FrontCover));
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadPicture(path), Bytes(200'000, 'y'));
}

TEST_F(TagPicture, OfAnOgg) {
    const std::string path = directory_ / "a.ogg";
    if (!Make(path, "vorbisenc ! oggmux")) {
        GTEST_SKIP() << "takes an encoder";
    }
    {
        TagLib::FileRef file(path.c_str());
        auto* comment = dynamic_cast<TagLib::Ogg::XiphComment*>(file.tag());
        ASSERT_NE(comment, nullptr);
        comment->addPicture(FlacPicture(Bytes(100'000, 'x'), TagLib::FLAC::Picture::FrontCover));
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadPicture(path), Bytes(100'000, 'x'));
}

TEST_F(TagPicture, OfAnMp4) {
    const std::string path = directory_ / "a.m4a";
    if (!Make(path, "voaacenc ! mp4mux")) {
        GTEST_SKIP() << "takes an encoder";
    }
    {
        TagLib::MP4::File file(path.c_str());
        TagLib::MP4::CoverArtList covers;
        covers.append({TagLib::MP4::CoverArt::JPEG, Vector(Bytes(100'000, 'x'))});
        file.tag()->setItem("covr", covers);
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadPicture(path), Bytes(100'000, 'x'));
}

TEST_F(TagPicture, OfOtherThingsThereIsNone) {
    WriteText(directory_ / "text.mp3", std::string(1234, 'x'));
    EXPECT_EQ(ReadPicture(directory_ / "text.mp3"), "");
    EXPECT_EQ(ReadPicture(directory_ / "none.flac"), "");
    EXPECT_EQ(ReadPicture(directory_.Path()), "");
    ASSERT_EQ(mkfifo((directory_ / "pipe.mp3").c_str(), 0600), 0);
    EXPECT_EQ(ReadPicture(directory_ / "pipe.mp3"), "");
}

}  // namespace
}  // namespace audio_tests

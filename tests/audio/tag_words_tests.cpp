// The words of songs in their tags, wherever players put them.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <taglib/apetag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/synchronizedlyricsframe.h>
#include <taglib/unsynchronizedlyricsframe.h>

#include "host/engine/tag_file.h"
#include "sound_files.h"
#include "tagged_files.h"

namespace audio_tests {
namespace {

using TagLib::ID3v2::SynchronizedLyricsFrame;
using veldrin::ReadNames;
using veldrin::ReadWords;

const TagLib::String kWords("Zo\xC3\xAB\nTwo", TagLib::String::UTF8);
constexpr const char* kTwoLines = "Zo\xC3\xAB\nTwo";

class TagWords : public testing::Test {
  protected:
    /// A file without tags; false if it cannot be made here.
    bool Make(const std::string& name, const std::string& chain) const {
        WriteWav(directory_ / "in.wav", Tone(440, 0.2));
        return Encode(directory_ / "in.wav", chain, directory_ / name);
    }
    void SetProperty(const std::string& name, const char* key, const TagLib::String& value) const {
        SetTag(directory_ / name, key, value);
    }

    TemporaryDirectory directory_;
};

TEST_F(TagWords, FormatsHaveThemUnderTheirOwnNames) {
    int made = 0;
    for (const auto& [extension, chain] : kTaggedFormats) {
        SCOPED_TRACE(extension);
        const std::string name = std::string("words.") + extension;
        if (!Make(name, chain)) {
            continue;
        }
        ++made;
        EXPECT_EQ(ReadWords(directory_ / name), "");
        EXPECT_EQ(ReadNames(directory_ / name).album, "");
        SetProperty(name, "LYRICS", kWords);
        SetProperty(name, "ALBUM", "The\nAlbum");
        EXPECT_EQ(ReadWords(directory_ / name), kTwoLines);
        EXPECT_EQ(ReadNames(directory_ / name).album, "The Album");
    }
    EXPECT_GE(made, 5);
}

TEST_F(TagWords, OtherNamesOfCommentsAreKnown) {
    for (const char* key : {"UNSYNCEDLYRICS", "UNSYNCED LYRICS", "unsyncedlyrics"}) {
        ASSERT_TRUE(Make("a.flac", "flacenc"));
        SetProperty("a.flac", key, kWords);
        EXPECT_EQ(ReadWords(directory_ / "a.flac"), kTwoLines) << key;
    }
    SetProperty("a.flac", "LYRICS", "better");
    EXPECT_EQ(ReadWords(directory_ / "a.flac"), "better");
}

TEST_F(TagWords, FrameWithARemarkIsFound) {
    ASSERT_TRUE(Make("a.mp3", "lamemp3enc"));
    {
        TagLib::MPEG::File file((directory_ / "a.mp3").c_str(), false);
        auto* frame = new TagLib::ID3v2::UnsynchronizedLyricsFrame(TagLib::String::UTF16);
        frame->setDescription("by hand");
        frame->setText(kWords);
        file.ID3v2Tag(true)->addFrame(frame);  // which owns it from now on
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadWords(directory_ / "a.mp3"), kTwoLines);
}

TEST_F(TagWords, SecondTagOfAnMp3IsRead) {
    ASSERT_TRUE(Make("a.mp3", "lamemp3enc"));
    {
        TagLib::MPEG::File file((directory_ / "a.mp3").c_str(), false);
        file.ID3v2Tag(true)->setTitle("Title");
        file.APETag(true)->addValue("Lyrics", kWords);
        ASSERT_TRUE(file.save());
    }
    EXPECT_EQ(ReadWords(directory_ / "a.mp3"), kTwoLines);
}

TEST_F(TagWords, WordsWithTimesAreRead) {
    ASSERT_TRUE(Make("a.mp3", "lamemp3enc"));
    const auto wordsOf = [&](SynchronizedLyricsFrame::Type type, const char* first,
                             const char* second) {
        {
            TagLib::MPEG::File file((directory_ / "a.mp3").c_str(), false);
            auto* frame = new SynchronizedLyricsFrame(TagLib::String::UTF8);
            frame->setType(type);
            SynchronizedLyricsFrame::SynchedTextList pieces;
            pieces.append({0, first});
            pieces.append({500, second});
            frame->setSynchedText(pieces);
            file.ID3v2Tag(true)->removeFrames("SYLT");
            file.ID3v2Tag()->addFrame(frame);
            EXPECT_TRUE(file.save());
        }
        return ReadWords(directory_ / "a.mp3");
    };
    EXPECT_EQ(wordsOf(SynchronizedLyricsFrame::Lyrics, "One", "Two"), "One\nTwo");
    EXPECT_EQ(wordsOf(SynchronizedLyricsFrame::Lyrics, "One ", "and\nTwo"), "One and\nTwo");
    EXPECT_EQ(wordsOf(SynchronizedLyricsFrame::Chord, "C", "G7"), "");
}

TEST_F(TagWords, WhatIsNoMusicHasNone) {
    WriteText(directory_ / "rubbish.mp3", std::string(5000, '\xFF'));
    WriteText(directory_ / "huge.mp3",
              std::string("ID3\x03\0\0\x7F\x7F\x7F\x7FUSLT\x7F\xFF\xFF\xFF", 18));
    ASSERT_EQ(mkfifo((directory_ / "pipe.flac").c_str(), 0600), 0);
    for (const char* name : {"rubbish.mp3", "huge.mp3", "pipe.flac", "missing.ogg", "."}) {
        EXPECT_EQ(ReadWords(directory_ / name), "") << name;
        EXPECT_EQ(ReadNames(directory_ / name).album, "") << name;
    }
}

}  // namespace
}  // namespace audio_tests

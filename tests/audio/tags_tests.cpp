// Titles and information texts from tags, and reading ahead in a folder.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <taglib/fileref.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tag.h>

#include <chrono>
#include <random>
#include <thread>

#include "host/engine/tags.h"
#include "sound_files.h"

namespace audio_tests {
namespace {

using veldrin::TagReader;

TagLib::String Utf8(const char* text) {
    return {text, TagLib::String::UTF8};
}

/// Writes artist and title into a file that is there.
void SetTags(const std::string& path, const char* artist, const char* title) {
    TagLib::FileRef file(path.c_str(), false);
    ASSERT_FALSE(file.isNull()) << path;
    file.tag()->setArtist(Utf8(artist));
    file.tag()->setTitle(Utf8(title));
    ASSERT_TRUE(file.save());
}

class TagsTest : public testing::Test {
  protected:
    std::string Wav(const std::string& name = "in.wav") const {
        WriteWav(directory_ / name, Tone(440, 0.5));
        return directory_ / name;
    }
    /// A file without tags of the kind that is quickest to make.
    std::string Flac(const std::string& name) const {
        if (flac_.empty()) {
            EXPECT_TRUE(Encode(Wav(), "flacenc", directory_ / "plain.bytes"));
            flac_ = ReadText(directory_ / "plain.bytes");
        }
        WriteText(directory_ / name, flac_);
        return directory_ / name;
    }

    TemporaryDirectory directory_;
    TagReader reader_;

  private:
    mutable std::string flac_;
};

TEST_F(TagsTest, TitlesOfEveryFormat) {
    const std::pair<const char*, const char*> formats[] = {
        {"mp3", "lamemp3enc"},
        {"ogg", "vorbisenc ! oggmux"},
        {"oga", "vorbisenc ! oggmux"},
        {"flac", "flacenc"},
        {"opus", "opusenc ! oggmux"},
        {"wv", "wavpackenc"},
        {"spx", "speexenc ! oggmux"},
        {"m4a", "voaacenc ! mp4mux"},
        {"wav", "audioconvert ! wavenc"},
        {"aiff", "aiffmux"},
    };
    const std::string wav = Wav();
    int made = 0;
    for (const auto& [extension, chain] : formats) {
        SCOPED_TRACE(extension);
        const std::string path = directory_ / (std::string("song.") + extension);
        if (!Encode(wav, chain, path)) {
            continue;
        }
        ++made;
        EXPECT_EQ(reader_.Title(path, "song"), "song");
        SetTags(path, "Zoë Ångström", "Тишина 静けさ");
        EXPECT_EQ(reader_.Title(path, "song"), "Zoë Ångström - Тишина 静けさ");
        SetTags(path, "", "Alone");
        EXPECT_EQ(reader_.Title(path, "song"), "Alone");
        SetTags(path, "Somebody", "");
        EXPECT_EQ(reader_.Title(path, "  as it came "), "  as it came ");
    }
    EXPECT_GE(made, 5);
}

TEST_F(TagsTest, OldTagsAtTheEndOfAnMp3AreRead) {
    const std::string path = directory_ / "old.mp3";
    ASSERT_TRUE(Encode(Wav(), "lamemp3enc", path));
    {
        TagLib::MPEG::File file(path.c_str(), false);
        file.ID3v1Tag(true)->setTitle("Old title");
        file.ID3v1Tag()->setArtist("Old artist");
        ASSERT_TRUE(file.save(TagLib::MPEG::File::ID3v1));
    }
    EXPECT_EQ(reader_.Title(path, "x"), "Old artist - Old title");
}

TEST_F(TagsTest, ATitleIsOneLine) {
    const std::string path = Flac("a.flac");
    SetTags(path, " The\r\nBand\t", "Two\nlines\x01 ");
    EXPECT_EQ(reader_.Title(path, "x"), "The  Band - Two lines");
    SetTags(path, "  ", " \n ");
    EXPECT_EQ(reader_.Title(path, "x"), "x");
}

TEST_F(TagsTest, ALongTagIsCutBetweenCharacters) {
    const std::string path = Flac("a.flac");
    std::string title = "x";
    for (int i = 0; i < 1000; ++i) {
        title += "é";
    }
    SetTags(path, "", title.c_str());
    // 1000 bytes would end within a character of two bytes, since one byte stands before them.
    EXPECT_EQ(reader_.Title(path, ""), title.substr(0, 999));
}

TEST_F(TagsTest, WhatIsNoMusicKeepsItsName) {
    WriteText(directory_ / "text.mp3", "This is a letter.\n");
    WriteText(directory_ / "empty.ogg", "");
    WriteText(directory_ / "cut.flac", "fLaC\x80\xFF\xFF\xFF");
    WriteText(directory_ / "tag.mp3", std::string("ID3\x04\x00\x00\x7F\x7F\x7F\x7F", 10));
    std::filesystem::create_directory(directory_ / "folder.mp3");
    ASSERT_EQ(mkfifo((directory_ / "fifo.mp3").c_str(), 0600), 0);
    for (const char* name : {"text.mp3", "empty.ogg", "cut.flac", "tag.mp3", "folder.mp3",
                             "fifo.mp3", "missing.mp3", ""}) {
        EXPECT_EQ(reader_.Title(directory_ / name, "n a m e"), "n a m e") << name;
    }
    EXPECT_EQ(reader_.Title("", "name"), "name");
    EXPECT_EQ(reader_.Title("relative.mp3", "name"), "name");
    EXPECT_EQ(reader_.Title("/", "name"), "name");
}

TEST_F(TagsTest, RubbishNeitherCrashesNorHangs) {
    std::mt19937 random(7);
    const std::string whole = ReadText(Flac("whole.flac"));
    const char* const extensions[] = {".mp3", ".ogg", ".flac", ".opus", ".m4a", ".wma", ".ape",
                                      ".wv",  ".mpc", ".wav",  ".aiff", ".tta", ".xm",  ".it",
                                      ".s3m", ".mod", ".spx",  ".mp4",  ".asf", ".oga", ".aac"};
    const auto start = std::chrono::steady_clock::now();
    for (const char* extension : extensions) {
        for (int round = 0; round < 10; ++round) {
            std::string bytes = round % 2 == 0 ? whole : std::string(5000, '\0');
            for (std::size_t i = 0; i < bytes.size(); i += 1 + random() % 50) {
                bytes[i] = static_cast<char>(random());
            }
            const std::string path = directory_ / ("rubbish" + std::to_string(round) + extension);
            WriteText(path, bytes);
            // Any answer will do, as long as there is one.
            EXPECT_FALSE(reader_.Title(path, "name").empty());
            EXPECT_NE(reader_.Info(path).find("Path: "), std::string::npos);
        }
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(TagsTest, AHugeFileOfRubbishIsNotReadToItsEnd) {
    for (const char* name : {"huge.mp3", "huge.ogg", "huge.flac", "huge.aac", "huge.mpc"}) {
        const std::string path = directory_ / name;
        WriteText(path, std::string("\xFF\xFBno music", 10));
        std::filesystem::resize_file(path, 2ULL << 30U);  // a hole, takes no room on the disk
        // Reading all of it would run into the time limit that every test here has.
        EXPECT_EQ(reader_.Title(path, "name"), "name") << name;
    }
}

TEST_F(TagsTest, InfoHasALineForEachThingKnown) {
    const std::string path = directory_ / "song.flac";
    WriteWav(directory_ / "in.wav", Tone(440, 61.6, 8000, 1));
    ASSERT_TRUE(Encode(directory_ / "in.wav", "flacenc", path));
    {
        TagLib::FileRef file(path.c_str(), false);
        file.tag()->setArtist(Utf8("Björk"));
        file.tag()->setTitle("Title");
        file.tag()->setAlbum("Album");
        file.tag()->setYear(1997);
        file.tag()->setTrack(3);
        file.tag()->setGenre("Pop");
        ASSERT_TRUE(file.save());
    }
    const std::string info = reader_.Info(path);
    const std::string start =
        "Artist: Björk\r\nTitle: Title\r\nAlbum: Album\r\nYear: 1997\r\nTrack: 3\r\n"
        "Genre: Pop\r\nLength: 1:02\r\nBit rate: ";
    EXPECT_EQ(info.substr(0, start.size()), start);
    EXPECT_NE(info.find(" kb/s\r\nSample rate: 8000 Hz\r\nChannels: 1\r\nSize: "),
              std::string::npos);
    EXPECT_NE(info.find("\r\nPath: " + path), std::string::npos);
    EXPECT_EQ(info.substr(info.size() - path.size()), path);
}

TEST_F(TagsTest, NoTitleIsReadWhenThereIsNoPointInIt) {
    const std::string path = Flac("a.flac");
    SetTags(path, "Artist", "Title");
    bool pointless = true;
    reader_.GiveUpWhile([&] { return pointless; });
    EXPECT_EQ(reader_.Title(path, "name"), "name");
    pointless = false;
    EXPECT_EQ(reader_.Title(path, "name"), "Artist - Title");
}

TEST_F(TagsTest, ALargeTagGivesItsTextsAndNotItsRest) {
    // Frames of ID3v2.4: a picture of 300,000 bytes (0x12 27 60 in sevens of bits), then texts.
    const auto frame = [](const std::string& name, const std::string& size,
                          const std::string& data) {
        return name + size + std::string(2, '\0') + data;
    };
    const std::string frames =
        frame("APIC", std::string("\0\x12\x27\x60", 4), std::string(300000, 'p')) +
        frame("TPE1", std::string("\0\0\0\3", 4), "\3Me") +
        frame("TIT2", std::string("\0\0\0\4", 4), "\3You");
    ASSERT_EQ(frames.size(), 300037U);  // 0x12 28 05
    const std::string path = directory_ / "large.mp3";
    WriteText(path, std::string("ID3\4\0\0\0\x12\x28\x05", 10) + frames);
    EXPECT_EQ(reader_.Title(path, "name"), "Me - You");
}

TEST_F(TagsTest, InfoLeavesOutWhatIsMissing) {
    WriteText(directory_ / "text.mp3", std::string(1234, 'x'));
    EXPECT_EQ(reader_.Info(directory_ / "text.mp3"),
              "Size: 1.2 kB\r\nPath: " + (directory_ / "text.mp3"));
    WriteText(directory_ / "short", "12345");
    EXPECT_EQ(reader_.Info(directory_ / "short"),
              "Size: 5 bytes\r\nPath: " + (directory_ / "short"));
    WriteText(directory_ / "mega", std::string(2560000, 'x'));
    EXPECT_EQ(reader_.Info(directory_ / "mega"), "Size: 2.6 MB\r\nPath: " + (directory_ / "mega"));
    EXPECT_EQ(reader_.Info(directory_ / "missing.mp3"), "");
    EXPECT_EQ(reader_.Info(""), "");
}

TEST_F(TagsTest, SizesThatRoundUpToAThousandGoToTheNextUnit) {
    const std::pair<std::uintmax_t, const char*> sizes[] = {
        {0, "0 bytes"},          {999, "999 bytes"},
        {1000, "1.0 kB"},        {1049, "1.0 kB"},
        {1051, "1.1 kB"},        {999'949, "999.9 kB"},
        {999'950, "1.0 MB"},     {999'999, "1.0 MB"},
        {1'000'000, "1.0 MB"},   {999'949'999, "999.9 MB"},
        {999'950'000, "1.0 GB"}, {12'345'000'000, "12.3 GB"}};
    const std::string path = directory_ / "size";
    for (const auto& [bytes, text] : sizes) {
        WriteText(path, "");
        std::filesystem::resize_file(path, bytes);  // a hole, takes no room on the disk
        EXPECT_EQ(reader_.Info(path), std::string("Size: ") + text + "\r\nPath: " + path);
    }
}

/// Frames of 1024 samples and 1024 bytes at 8000 Hz, of one channel: 64 kbit/s.
std::string AdtsFrames(int count) {
    constexpr unsigned kBytes = 1024;
    std::string frame(kBytes, '\0');
    frame[0] = '\xFF';
    frame[1] = '\xF1';
    frame[2] = '\x6C';                                     // 8000 Hz is the twelfth of the rates
    frame[3] = static_cast<char>(0x40 | (kBytes >> 11U));  // one channel
    frame[4] = static_cast<char>(kBytes >> 3U);
    frame[5] = static_cast<char>((kBytes << 5U) | 0x1FU);
    frame[6] = '\xFC';
    std::string bytes;
    for (int i = 0; i < count; ++i) {
        bytes += frame;
    }
    return bytes;
}

TEST_F(TagsTest, FactsOfBareAacAreCountedFrameByFrame) {
    const std::string path = directory_ / "bare.aac";
    const std::string facts =
        "Length: 0:16\r\nBit rate: 64 kb/s\r\nSample rate: 8000 Hz\r\nChannels: 1\r\nSize: ";
    WriteText(path, AdtsFrames(125));  // of 0.128 s
    EXPECT_EQ(reader_.Info(path).substr(0, facts.size()), facts);
    // A tag in front is no sound; its length is in sevens of bits.
    std::string tag("ID3\x04\x00\x00\x00\x00\x02\x01", 10);
    tag += std::string(257, '\0');
    WriteText(path, tag + AdtsFrames(125));
    EXPECT_EQ(reader_.Info(path).substr(0, facts.size()), facts);
    WriteText(path, AdtsFrames(2));  // may be chance
    EXPECT_EQ(reader_.Info(path), "Size: 2.0 kB\r\nPath: " + path);
    // What cannot be followed is taken to go on as it began.
    WriteText(path, AdtsFrames(25) + std::string(100 * 1024, '\0'));
    EXPECT_EQ(reader_.Info(path).substr(0, facts.size()), facts);
}

/// A folder of tagged files, some of them with capital letters in their names.
class ReadAheadTest : public TagsTest {
  protected:
    static constexpr int kFiles = 300;

    ReadAheadTest() {
        std::filesystem::create_directory(directory_ / "folder");
        for (int i = 0; i < kFiles; ++i) {
            const std::string name = NameOf(i);
            SetTags(Flac(name), "Artist", ("Title " + std::to_string(i)).c_str());
        }
    }
    static std::string NameOf(int i) {
        const std::string number = std::to_string(1000 + i);
        return (i % 2 == 0 ? "folder/Song" : "folder/song") + number + ".flac";
    }
    std::string TitleOf(int i) { return reader_.Title(directory_ / NameOf(i), "name"); }
    static std::string Expected(int i) { return "Artist - Title " + std::to_string(i); }
};

TEST_F(ReadAheadTest, AllOrdersGiveTheRightTitles) {
    for (int i = 0; i < kFiles; ++i) {
        EXPECT_EQ(TitleOf(i), Expected(i));
    }
    for (int i = 0; i < kFiles; ++i) {  // once more, from what is no longer held
        EXPECT_EQ(TitleOf(i), Expected(i));
    }
    for (int i = kFiles - 1; i >= 0; --i) {
        EXPECT_EQ(TitleOf(i), Expected(i));
    }
    std::mt19937 random(3);
    for (int round = 0; round < 2 * kFiles; ++round) {
        const int i = static_cast<int>(random() % kFiles);
        EXPECT_EQ(TitleOf(i), Expected(i));
    }
}

TEST_F(ReadAheadTest, AFileThatChangesAfterItWasReadIsReadAgain) {
    EXPECT_EQ(TitleOf(0), Expected(0));
    EXPECT_EQ(TitleOf(1), Expected(1));
    // Time for the others to be read ahead, but for the next few, which are left to the questions.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    SetTags(directory_ / NameOf(45), "Artist", "Title XX");  // of the same size
    std::filesystem::remove(directory_ / NameOf(46));
    WriteText(directory_ / NameOf(47), "no music");
    EXPECT_EQ(TitleOf(44), Expected(44));
    EXPECT_EQ(TitleOf(45), "Artist - Title XX");
    EXPECT_EQ(TitleOf(46), "name");
    EXPECT_EQ(TitleOf(47), "name");
    EXPECT_EQ(TitleOf(48), Expected(48));
}

TEST_F(ReadAheadTest, AFileThatComesAfterTheFolderWasListedIsRead) {
    EXPECT_EQ(TitleOf(0), Expected(0));
    EXPECT_EQ(TitleOf(1), Expected(1));
    SetTags(Flac("folder/new.flac"), "New", "File");
    EXPECT_EQ(reader_.Title(directory_ / "folder/new.flac", "x"), "New - File");
    EXPECT_EQ(TitleOf(2), Expected(2));
}

TEST_F(ReadAheadTest, FoldersMayTakeTurns) {
    std::filesystem::create_directory(directory_ / "other");
    for (int i = 0; i < 20; ++i) {
        SetTags(Flac("other/" + std::to_string(100 + i) + ".flac"), "", std::to_string(i).c_str());
    }
    for (int i = 0; i < 20; ++i) {
        for (int turn = 0; turn < 3; ++turn) {
            EXPECT_EQ(TitleOf(3 * i + turn), Expected(3 * i + turn));
        }
        const std::string path = directory_ / ("other/" + std::to_string(100 + i) + ".flac");
        EXPECT_EQ(reader_.Title(path, "x"), std::to_string(i));
    }
}

TEST_F(ReadAheadTest, TheEndStopsWhatIsBeingRead) {
    for (int round = 0; round < 20; ++round) {
        TagReader reader;
        EXPECT_EQ(reader.Title(directory_ / NameOf(0), "x"), Expected(0));
        EXPECT_EQ(reader.Title(directory_ / NameOf(1), "x"), Expected(1));
    }
}

}  // namespace
}  // namespace audio_tests

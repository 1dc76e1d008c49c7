#include "host/engine/tag_file.h"

#include <taglib/apetag.h>
#include <taglib/audioproperties.h>
#include <taglib/fileref.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/synchronizedlyricsframe.h>
#include <taglib/tag.h>
#include <taglib/tpropertymap.h>
#include <taglib/wavfile.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "host/engine/adts.h"
#include "host/engine/tag_reading.h"
#include "host/engine/tag_stream.h"
#include "host/engine/time_text.h"
#include "platform/base/text.h"

namespace veldrin {

namespace {

constexpr std::size_t kLongestText = 1000;  // bytes; nobody reads a longer tag in one line
constexpr const char* kLineBreak = "\r\n";

/// One line of UTF-8 without blanks at its ends.
std::string Line(const TagLib::String& text) {
    std::string line = text.to8Bit(true);
    if (line.size() > kLongestText) {
        std::size_t end = kLongestText;
        while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0U) == 0x80U) {
            --end;  // not in the middle of a character
        }
        line.resize(end);
    }
    std::replace_if(
        line.begin(), line.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    line.erase(0, line.find_first_not_of(' '));
    return line;
}

/// The file's tag, null if there is none. For a WAV file the library looks at ID3v2 only; most such
/// files have their tags in the INFO chunk.
const TagLib::Tag* TagOf(const TagLib::FileRef& file) {
    if (file.isNull()) {
        return nullptr;
    }
    const auto* wav = dynamic_cast<const TagLib::RIFF::WAV::File*>(file.file());
    if (wav != nullptr && !wav->hasID3v2Tag() && wav->hasInfoTag()) {
        return wav->InfoTag();
    }
    return file.tag();
}

SoundFacts FactsOf(const TagLib::FileRef& file) {
    const TagLib::AudioProperties* sound = file.audioProperties();
    if (sound == nullptr) {
        return {};
    }
    return {std::chrono::milliseconds(std::max(0, sound->lengthInMilliseconds())),
            std::max(0, sound->bitrate()), std::max(0, sound->sampleRate()),
            std::max(0, sound->channels())};
}

std::string SizeText(std::int64_t bytes) {
    constexpr std::array kUnits = {"kB", "MB", "GB", "TB"};
    if (bytes < 1000) {
        return std::to_string(bytes) + " bytes";
    }
    double amount = static_cast<double>(bytes) / 1000.0;
    std::size_t unit = 0;
    while (amount >= 999.95 && unit + 1 < kUnits.size()) {
        amount /= 1000.0;
        ++unit;
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.1f %s", amount, kUnits[unit]);
    return text.data();
}

/// Lines "Name: value" of what is there.
class InfoText {
  public:
    void Add(const char* name, const std::string& value) {
        if (!value.empty()) {
            text_ += (text_.empty() ? "" : kLineBreak) + std::string(name) + ": " + value;
        }
    }
    void AddNumber(const char* name, unsigned number, const char* unit = "") {
        Add(name, number == 0 ? std::string() : std::to_string(number) + unit);
    }
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
};

void AddTags(InfoText& info, const TagLib::Tag& tag) {
    info.Add("Artist", Line(tag.artist()));
    info.Add("Title", Line(tag.title()));
    info.Add("Album", Line(tag.album()));
    info.AddNumber("Year", tag.year());
    info.AddNumber("Track", tag.track());
    info.Add("Genre", Line(tag.genre()));
}

void AddFacts(InfoText& info, const SoundFacts& facts) {
    if (facts.length.count() > 0) {
        info.Add("Length", MinutesAndSeconds((facts.length.count() + 500) / 1000));
    }
    info.AddNumber("Bit rate", static_cast<unsigned>(facts.bitRate), " kb/s");
    info.AddNumber("Sample rate", static_cast<unsigned>(facts.sampleRate), " Hz");
    info.AddNumber("Channels", static_cast<unsigned>(facts.channels));
}

/// Words under the names that players give them, and under those with a remark of the author's
/// behind them.
TagLib::String WordsAmong(const TagLib::PropertyMap& properties) {
    for (const char* name : {"LYRICS", "UNSYNCEDLYRICS", "UNSYNCED LYRICS"}) {
        const TagLib::String words = properties[name].toString("\n");
        if (!words.isEmpty()) {
            return words;
        }
    }
    for (const auto& [name, values] : properties) {
        if (name.startsWith("LYRICS:") && !values.toString("\n").isEmpty()) {
            return values.toString("\n");
        }
    }
    return {};
}

/// The words of a frame that tells when each piece of them is sung: pieces are lines, unless line
/// ends stand in them.
TagLib::String WordsOf(const TagLib::ID3v2::SynchronizedLyricsFrame& frame) {
    TagLib::StringList pieces;
    bool hasLineEnds = false;
    for (const auto& piece : frame.synchedText()) {
        pieces.append(piece.text);
        hasLineEnds = hasLineEnds || piece.text.find("\n") >= 0;
    }
    return pieces.toString(hasLineEnds ? "" : "\n");
}

/// What the properties of an MP3 file lack: its second tag, and words with times.
TagLib::String WordsBesides(TagLib::MPEG::File& file) {
    if (file.hasAPETag()) {
        const TagLib::String words = WordsAmong(file.APETag()->properties());
        if (!words.isEmpty()) {
            return words;
        }
    }
    if (file.hasID3v2Tag()) {
        for (const auto* frame : file.ID3v2Tag()->frameList("SYLT")) {
            using TagLib::ID3v2::SynchronizedLyricsFrame;
            const auto* lyrics = dynamic_cast<const SynchronizedLyricsFrame*>(frame);
            if (lyrics != nullptr && lyrics->type() == SynchronizedLyricsFrame::Lyrics) {
                return WordsOf(*lyrics);
            }
        }
    }
    return {};
}

}  // namespace

std::optional<platform::FileStamp> StampOfFile(const std::string& path) {
    return platform::StampOf(platform::Widen(path));
}

std::string ReadTitle(const std::string& path, std::optional<platform::FileStamp>& stamp,
                      const std::atomic<bool>* stop) {
    stamp = StampOfFile(path);
    const auto read = [](TagStream& stream) {
        std::string title;
        Guarded([&] {
            const TagLib::FileRef file(&stream, false);
            const TagLib::Tag* tag = TagOf(file);
            if (tag == nullptr) {
                return;
            }
            title = Line(tag->title());
            const std::string artist = Line(tag->artist());
            if (!title.empty() && !artist.empty()) {
                title = artist + " - " + title;
            }
        });
        return title;
    };
    return ReadWithinTime(path, read, stop);
}

SoundFacts ReadSoundFacts(const std::string& path) {
    return ReadWithinTime(path, [](TagStream& stream) {
        SoundFacts facts;
        Guarded([&] { facts = FactsOf(TagLib::FileRef(&stream)); });
        return facts.length.count() > 0 ? facts : ReadAdtsFacts(stream.Path(), stream.Limits());
    });
}

std::string ReadInfo(const std::string& path) {
    return ReadWithinTime(path, [](TagStream& stream) {
        InfoText info;
        SoundFacts facts;
        Guarded([&] {
            const TagLib::FileRef file(&stream);
            if (const TagLib::Tag* tag = TagOf(file)) {
                AddTags(info, *tag);
            }
            facts = FactsOf(file);
        });
        AddFacts(info,
                 facts.length.count() > 0 ? facts : ReadAdtsFacts(stream.Path(), stream.Limits()));
        info.Add("Size", SizeText(stream.Status().st_size));
        info.Add("Path", stream.Path());
        return info.Text();
    });
}

std::string ReadWords(const std::string& path) {
    return ReadWithinTime(path, [](TagStream& stream) {
        std::string words;
        Guarded([&] {
            const TagLib::FileRef file(&stream, false);
            if (file.isNull()) {
                return;
            }
            words = WordsAmong(file.file()->properties()).to8Bit(true);
            auto* mp3 = dynamic_cast<TagLib::MPEG::File*>(file.file());
            if (words.empty() && mp3 != nullptr) {
                words = WordsBesides(*mp3).to8Bit(true);
            }
        });
        return words;
    });
}

NamesInTags ReadNames(const std::string& path) {
    return ReadWithinTime(path, [](TagStream& stream) {
        NamesInTags names;
        Guarded([&] {
            const TagLib::FileRef file(&stream, false);
            if (const TagLib::Tag* tag = TagOf(file)) {
                names = {Line(tag->title()), Line(tag->artist()), Line(tag->album())};
            }
        });
        return names;
    });
}

Extensions TaggedExtensions() {
    Extensions extensions;
    for (const TagLib::String& extension : TagLib::FileRef::defaultFileExtensions()) {
        extensions.insert(extension.to8Bit(true));
    }
    return extensions;
}

}  // namespace veldrin

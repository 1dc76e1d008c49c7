#include "host/engine/level_tags.h"

#include <taglib/apetag.h>
#include <taglib/asffile.h>
#include <taglib/fileref.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/relativevolumeframe.h>
#include <taglib/tpropertymap.h>

#include <cmath>
#include <cstdint>

#include "host/engine/tag_reading.h"

namespace veldrin {

namespace {

using TagLib::ID3v2::RelativeVolumeFrame;
using Number = std::optional<double>;

void FillIn(Number& number, const Number& found) {
    if (!number) {
        number = found;
    }
}

using Parse = Number (*)(std::string_view);
void FillIn(Number& number, const TagLib::PropertyMap& texts, const char* name, Parse parse) {
    if (!number && texts.contains(name) && !texts[name].isEmpty()) {
        number = parse(texts[name].front().to8Bit(true));
    }
}

void FillIn(LevelTags& tags, const TagLib::PropertyMap& texts) {
    FillIn(tags.trackGain, texts, "R128_TRACK_GAIN", ParseOpusGain);
    FillIn(tags.albumGain, texts, "R128_ALBUM_GAIN", ParseOpusGain);
    FillIn(tags.trackGain, texts, "REPLAYGAIN_TRACK_GAIN", ParseGain);
    FillIn(tags.albumGain, texts, "REPLAYGAIN_ALBUM_GAIN", ParseGain);
    FillIn(tags.trackPeak, texts, "REPLAYGAIN_TRACK_PEAK", ParsePeak);
    FillIn(tags.albumPeak, texts, "REPLAYGAIN_ALBUM_PEAK", ParsePeak);
}

/// The peak is a number of so many bits, of which the highest is full scale.
Number PeakOf(const RelativeVolumeFrame::PeakVolume& peak) {
    constexpr unsigned kMostBytes = 8;
    const TagLib::ByteVector& bytes = peak.peakVolume;
    if (bytes.isEmpty() || bytes.size() > kMostBytes) {
        return std::nullopt;
    }
    double number = 0;
    for (const char byte : bytes) {
        number = number * 256 + static_cast<unsigned char>(byte);
    }
    return BelievedPeak(std::ldexp(number, 1 - peak.bitsRepresentingPeak));
}

void FillIn(LevelTags& tags, const TagLib::ID3v2::Tag& tag) {
    for (const auto* frame : tag.frameList("RVA2")) {
        const auto* volume = dynamic_cast<const RelativeVolumeFrame*>(frame);
        if (volume == nullptr || !volume->channels().contains(RelativeVolumeFrame::MasterVolume)) {
            continue;
        }
        const TagLib::String name = volume->identification().upper();
        const Number gain = BelievedGain(volume->volumeAdjustment());
        const Number peak = PeakOf(volume->peakVolume());
        if (name == "TRACK") {
            FillIn(tags.trackGain, gain);
            FillIn(tags.trackPeak, peak);
        } else if (name == "ALBUM") {
            FillIn(tags.albumGain, gain);
            FillIn(tags.albumPeak, peak);
        }
    }
}

/// Of the names that these formats leave to everybody, the library puts a few among the properties.
TagLib::PropertyMap OwnTextsOf(const TagLib::MP4::Tag& tag) {
    TagLib::PropertyMap texts;
    for (const auto& [name, item] : tag.itemMap()) {
        if (name.startsWith("----:")) {
            texts.insert(name.substr(static_cast<unsigned>(name.rfind(":") + 1)),
                         item.toStringList());
        }
    }
    return texts;
}

TagLib::PropertyMap OwnTextsOf(const TagLib::ASF::Tag& tag) {
    TagLib::PropertyMap texts;
    for (const auto& [name, attributes] : tag.attributeListMap()) {
        for (const auto& attribute : attributes) {
            texts.insert(name, attribute.toString());
        }
    }
    return texts;
}

LevelTags TagsOf(TagLib::File& file) {
    LevelTags tags;
    FillIn(tags, file.properties());
    if (auto* mp3 = dynamic_cast<TagLib::MPEG::File*>(&file)) {
        // The properties are those of one of its tags; some tools write these into the other.
        if (mp3->hasAPETag()) {
            FillIn(tags, mp3->APETag()->properties());
        }
        if (mp3->hasID3v2Tag()) {
            FillIn(tags, *mp3->ID3v2Tag());
        }
    } else if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(&file)) {
        FillIn(tags, OwnTextsOf(*mp4->tag()));
    } else if (auto* asf = dynamic_cast<TagLib::ASF::File*>(&file)) {
        FillIn(tags, OwnTextsOf(*asf->tag()));
    }
    return tags;
}

}  // namespace

LevelTags ReadLevelTags(const std::string& path) {
    return ReadWithinTime(path, [](TagStream& stream) {
        LevelTags tags;
        Guarded([&] {
            const TagLib::FileRef file(&stream, false);
            if (!file.isNull()) {
                tags = TagsOf(*file.file());
            }
        });
        return tags;
    });
}

}  // namespace veldrin

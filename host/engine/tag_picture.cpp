#include "host/engine/tag_picture.h"

#include <taglib/aifffile.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/fileref.h>
#include <taglib/flacfile.h>
#include <taglib/flacpicture.h>
#include <taglib/id3v2tag.h>
#include <taglib/mp4file.h>
#include <taglib/mpegfile.h>
#include <taglib/trueaudiofile.h>
#include <taglib/wavfile.h>
#include <taglib/xiphcomment.h>

#include "host/engine/tag_reading.h"
#include "host/engine/tag_stream.h"

namespace veldrin {
namespace {

/// The one to be shown among those offered: the first, unless a front cover follows.
class Choice {
  public:
    void Offer(const TagLib::ByteVector& picture, bool isCover) {
        if (picture.isEmpty() || picture.size() > kMostPictureBytes ||
            (!picture_.empty() && (isCover_ || !isCover))) {
            return;
        }
        picture_.assign(picture.data(), picture.size());
        isCover_ = isCover;
    }
    std::string Take() { return std::move(picture_); }

  private:
    std::string picture_;
    bool isCover_ = false;
};

void OfferAll(const TagLib::List<TagLib::FLAC::Picture*>& pictures, Choice& choice) {
    for (const TagLib::FLAC::Picture* picture : pictures) {
        choice.Offer(picture->data(), picture->type() == TagLib::FLAC::Picture::FrontCover);
    }
}

void OfferAll(const TagLib::ID3v2::Tag* tag, Choice& choice) {
    using TagLib::ID3v2::AttachedPictureFrame;
    if (tag == nullptr) {
        return;
    }
    for (const auto* frame : tag->frameList("APIC")) {
        if (const auto* picture = dynamic_cast<const AttachedPictureFrame*>(frame)) {
            choice.Offer(picture->picture(), picture->type() == AttachedPictureFrame::FrontCover);
        }
    }
}

void OfferAll(const TagLib::MP4::Tag& tag, Choice& choice) {
    for (const auto& cover : tag.item("covr").toCoverArtList()) {
        choice.Offer(cover.data(), false);
    }
}

TagLib::ID3v2::Tag* Id3Of(TagLib::File* file) {
    if (auto* mpeg = dynamic_cast<TagLib::MPEG::File*>(file)) {
        return mpeg->ID3v2Tag();
    }
    if (auto* wav = dynamic_cast<TagLib::RIFF::WAV::File*>(file)) {
        return wav->ID3v2Tag();
    }
    if (auto* aiff = dynamic_cast<TagLib::RIFF::AIFF::File*>(file)) {
        return aiff->tag();
    }
    auto* trueAudio = dynamic_cast<TagLib::TrueAudio::File*>(file);
    return trueAudio != nullptr ? trueAudio->ID3v2Tag() : nullptr;
}

void OfferAll(TagLib::File* file, Choice& choice) {
    if (auto* flac = dynamic_cast<TagLib::FLAC::File*>(file)) {
        OfferAll(flac->pictureList(), choice);
    } else if (auto* xiph = dynamic_cast<TagLib::Ogg::XiphComment*>(file->tag())) {
        OfferAll(xiph->pictureList(), choice);
    } else if (auto* mp4 = dynamic_cast<TagLib::MP4::File*>(file)) {
        OfferAll(*mp4->tag(), choice);
    } else {
        OfferAll(Id3Of(file), choice);
    }
}

}  // namespace

std::string ReadPicture(const std::string& path) {
    const auto read = [](TagStream& stream) {
        Choice choice;
        Guarded([&] {
            const TagLib::FileRef file(&stream, false);
            if (!file.isNull() && file.file()->isValid()) {
                OfferAll(file.file(), choice);
            }
        });
        return choice.Take();
    };
    return ReadWithinTime(path, read, nullptr, kMostPictureBytes);
}

}  // namespace veldrin

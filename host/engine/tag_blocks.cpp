#include "host/engine/tag_blocks.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace veldrin {

namespace {

constexpr std::size_t kMostFrames = 500;
constexpr std::size_t kMostTextBytes = 1024UL * 1024;
constexpr std::uint32_t kMostItems = 1000;

constexpr unsigned kUnsynchronised = 0x80;  // flags of a tag
constexpr unsigned kExtendedHeader = 0x40;

unsigned At(std::string_view bytes, std::size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0U;
}

/// A number of some bytes, the highest first, of which as many bits count.
std::size_t Number(std::string_view bytes, std::size_t place, std::size_t count, unsigned bits) {
    std::size_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        number = (number << bits) | (At(bytes, place + i) & ((1U << bits) - 1));
    }
    return number;
}

std::uint32_t LittleEndian(std::string_view bytes, std::size_t place) {
    return At(bytes, place) | At(bytes, place + 1) << 8U | At(bytes, place + 2) << 16U |
           At(bytes, place + 3) << 24U;
}

/// Takes the zeros out that were put in so that nothing in the tag looks like sound.
std::string Synchronised(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        out += bytes[i];
        if (bytes[i] == '\xFF' && i + 1 < bytes.size() && bytes[i + 1] == '\0') {
            ++i;
        }
    }
    return out;
}

/// Puts in those that Synchronised would otherwise miss.
std::string Unsynchronised(std::string_view bytes) {
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        out += bytes[i];
        if (bytes[i] == '\xFF' && At(bytes, i + 1) == 0) {
            out += '\0';
        }
    }
    return out;
}

/// The frames of one tag, one after the other.
class Frames {
  public:
    Frames(std::string_view bytes, unsigned version) : bytes_(bytes), version_(version) {}

    bool IsThereOne() const {
        return place_ + HeaderBytes() < bytes_.size() && At(bytes_, place_) != 0 &&
               Bytes() > HeaderBytes() && Bytes() <= bytes_.size() - place_;
    }
    void Next() { place_ += Bytes(); }
    std::string_view Whole() const { return bytes_.substr(place_, Bytes()); }
    bool IsText() const {
        const std::string_view name = Name();
        return !IsCompressed() &&
               (name[0] == 'T' || name == "USL" || name == "ULT" || name == "SYL" || name == "SLT");
    }
    bool IsPicture() const { return !IsCompressed() && (Name() == "API" || Name() == "PIC"); }

  private:
    std::string_view Name() const { return bytes_.substr(place_, 3); }
    // Compressed, a few bytes can be any number of them.
    bool IsCompressed() const {
        const unsigned compressed = version_ == 4 ? 0x08 : version_ == 3 ? 0x80 : 0;
        return (At(bytes_, place_ + 9) & compressed) != 0;
    }
    std::size_t HeaderBytes() const { return version_ <= 2 ? 6 : 10; }
    /// With its header.
    std::size_t Bytes() const {
        if (version_ <= 2) {
            return 6 + Number(bytes_, place_ + 3, 3, 8);
        }
        const std::size_t plain = 10 + Number(bytes_, place_ + 4, 4, 8);
        const std::size_t sevens = 10 + Number(bytes_, place_ + 4, 4, 7);
        // Some wrote the plain number where one of sevens belongs.
        const bool isPlain = version_ == 3 || (sevens > 10 + 127 && !IsName(place_ + sevens) &&
                                               IsName(place_ + plain));
        return isPlain ? plain : sevens;
    }
    bool IsName(std::size_t place) const {
        for (std::size_t i = place; i < place + 4; ++i) {
            const unsigned letter = At(bytes_, i);
            if ((letter < 'A' || letter > 'Z') && (letter < '0' || letter > '9')) {
                return false;
            }
        }
        return true;
    }

    std::string_view bytes_;
    unsigned version_;
    std::size_t place_ = 0;
};

}  // namespace

bool IsId3Header(std::string_view header, std::size_t frameBytes) {
    return header.size() == kId3Header && header.starts_with("ID3") &&
           Number(header, 6, 4, 7) == frameBytes;
}

TagLib::ByteVector TextFramesOf(std::string_view header, std::string_view frames,
                                std::size_t pictureBytes) {
    const unsigned version = At(header, 3);
    const unsigned flags = At(header, 5);
    const bool unsynchronised = version <= 3 && (flags & kUnsynchronised) != 0;
    const std::string copy = unsynchronised ? Synchronised(frames) : std::string();
    std::string_view rest = unsynchronised ? std::string_view(copy) : frames;
    std::string kept;
    if ((flags & kExtendedHeader) != 0) {
        kept.assign("\0\0\0\x06\x01\0", 6);  // one that says nothing, in the place of the other
        rest.remove_prefix(std::min(rest.size(), Number(rest, 0, 4, 7)));
    }
    std::size_t count = 0;
    std::size_t textRoom = kMostTextBytes - kept.size();
    for (Frames all(rest, version); all.IsThereOne() && count < kMostFrames; all.Next()) {
        std::size_t none = 0;
        std::size_t& room = all.IsText() ? textRoom : all.IsPicture() ? pictureBytes : none;
        if (all.Whole().size() <= room) {
            room -= all.Whole().size();
            kept += all.Whole();
            ++count;
        }
    }
    kept.append(2 * kId3Header, '\0');  // room for a footer, and a sign that no frame follows
    if (unsynchronised) {
        kept = Unsynchronised(kept);
    }
    return {kept.data(), static_cast<unsigned>(kept.size())};
}

bool IsPictureHeader(std::string_view header, std::size_t blockBytes) {
    constexpr unsigned kPicture = 6;
    if (header.size() < 8) {
        return false;
    }
    const std::string_view last = header.substr(header.size() - 8);
    const bool flac = (At(last, 4) & 0x7FU) == kPicture && Number(last, 5, 3, 8) == blockBytes;
    const bool mp4 = last.substr(4) == "covr" && Number(last, 0, 4, 8) == blockBytes + 8;
    return flac || mp4;
}

bool IsFooterOfManyItems(std::string_view footer) {
    return footer.starts_with("APETAGEX") && LittleEndian(footer, 16) > kMostItems;
}

}  // namespace veldrin

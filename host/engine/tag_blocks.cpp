#include "host/engine/tag_blocks.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "host/engine/bytes.h"

namespace veldrin {

namespace {

constexpr std::size_t kMostFrames = 500;
constexpr std::size_t kMostTextBytes = 1024UL * 1024;
constexpr std::uint32_t kMostItems = 1000;

constexpr unsigned kUnsynchronised = 0x80;  // flags of a tag
constexpr unsigned kExtendedHeader = 0x40;

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
        if (bytes[i] == '\xFF' && ByteAt(bytes, i + 1) == 0) {
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
        return place_ + HeaderBytes() < bytes_.size() && ByteAt(bytes_, place_) != 0 &&
               Bytes() > HeaderBytes() && Bytes() <= bytes_.size() - place_;
    }
    void Next() { place_ += Bytes(); }
    std::string_view Whole() const { return bytes_.substr(place_, Bytes()); }
    bool IsText() const {
        const std::string_view name = Name();
        return !IsCompressed() && (name[0] == 'T' || name == "RVA" || name == "USL" ||
                                   name == "ULT" || name == "SYL" || name == "SLT");
    }
    bool IsPicture() const { return !IsCompressed() && (Name() == "API" || Name() == "PIC"); }

  private:
    std::string_view Name() const { return bytes_.substr(place_, 3); }
    // Compressed, a few bytes can be any number of them.
    bool IsCompressed() const {
        const unsigned compressed = version_ == 4 ? 0x08 : version_ == 3 ? 0x80 : 0;
        return (ByteAt(bytes_, place_ + 9) & compressed) != 0;
    }
    std::size_t HeaderBytes() const { return version_ <= 2 ? 6 : 10; }
    /// With its header.
    std::size_t Bytes() const {
        if (version_ <= 2) {
            return 6 + NumberAt(bytes_, place_ + 3, 3, 8);
        }
        const std::size_t plain = 10 + NumberAt(bytes_, place_ + 4, 4, 8);
        const std::size_t sevens = 10 + NumberAt(bytes_, place_ + 4, 4, 7);
        // Some wrote the plain number where one of sevens belongs.
        const bool isPlain = version_ == 3 || (sevens > 10 + 127 && !IsName(place_ + sevens) &&
                                               IsName(place_ + plain));
        return isPlain ? plain : sevens;
    }
    bool IsName(std::size_t place) const {
        for (std::size_t i = place; i < place + 4; ++i) {
            const unsigned letter = ByteAt(bytes_, i);
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
           NumberAt(header, 6, 4, 7) == frameBytes;
}

TagLib::ByteVector TextFramesOf(std::string_view header, std::string_view frames,
                                std::size_t pictureBytes) {
    const unsigned version = ByteAt(header, 3);
    const unsigned flags = ByteAt(header, 5);
    const bool unsynchronised = version <= 3 && (flags & kUnsynchronised) != 0;
    const std::string copy = unsynchronised ? Synchronised(frames) : std::string();
    std::string_view rest = unsynchronised ? std::string_view(copy) : frames;
    std::string kept;
    if ((flags & kExtendedHeader) != 0) {
        kept.assign("\0\0\0\x06\x01\0", 6);  // one that says nothing, in the place of the other
        rest.remove_prefix(std::min(rest.size(), NumberAt(rest, 0, 4, 7)));
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
    const bool flac =
        (ByteAt(last, 4) & 0x7FU) == kPicture && NumberAt(last, 5, 3, 8) == blockBytes;
    const bool mp4 = last.substr(4) == "covr" && NumberAt(last, 0, 4, 8) == blockBytes + 8;
    return flac || mp4;
}

bool IsFooterOfManyItems(std::string_view footer) {
    return footer.starts_with("APETAGEX") && LittleEndianAt(footer, 16) > kMostItems;
}

}  // namespace veldrin

#include "platform/drawing/bitmap_file.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace platform {

namespace {

constexpr std::size_t kFileHeader = 14;
constexpr std::size_t kInfoHeader = 40;
constexpr std::size_t kPaletteEntry = 4;
enum Compression : std::uint32_t { kPlain = 0, kRunLength8 = 1 };

class Bytes {
  public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
    std::size_t Size() const { return bytes_.size(); }
    std::uint32_t At(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }
    std::uint32_t Word(std::size_t at) const { return At(at) | (At(at + 1) << 8); }
    std::uint32_t Dword(std::size_t at) const { return Word(at) | (Word(at + 2) << 16); }

  private:
    std::string_view bytes_;
};

struct Header {
    std::size_t start = 0;  // of the pixels, from the file's first byte
    Long width = 0;
    Long height = 0;
    std::uint32_t depth = 0;
    std::uint32_t compression = 0;
    std::uint32_t colours = 0;  // in the palette
};

bool IsSide(std::uint32_t pixels) {
    return pixels >= 1 && pixels <= static_cast<std::uint32_t>(kLongestBitmapSide);
}

bool IsKnown(std::uint32_t depth, std::uint32_t compression) {
    const bool plain = depth == 1 || depth == 4 || depth == 8 || depth == 24;
    return compression == kPlain ? plain : compression == kRunLength8 && depth == 8;
}

std::optional<Header> ReadHeader(const Bytes& bytes) {
    if (bytes.Size() < kFileHeader + kInfoHeader || bytes.At(0) != 'B' || bytes.At(1) != 'M' ||
        bytes.Dword(14) != kInfoHeader || bytes.Word(26) != 1) {
        return std::nullopt;
    }
    const std::uint32_t width = bytes.Dword(18);
    const std::uint32_t height = bytes.Dword(22);
    Header header;
    header.start = bytes.Dword(10);
    header.depth = bytes.Word(28);
    header.compression = bytes.Dword(30);
    if (!IsSide(width) || !IsSide(height) || !IsKnown(header.depth, header.compression)) {
        return std::nullopt;
    }
    header.width = static_cast<Long>(width);
    header.height = static_cast<Long>(height);
    if (header.depth <= 8) {
        const std::uint32_t most = 1U << header.depth;
        const std::uint32_t used = bytes.Dword(46);
        if (used > most) {
            return std::nullopt;
        }
        header.colours = used != 0 ? used : most;
    }
    const std::size_t paletteEnd = kFileHeader + kInfoHeader + header.colours * kPaletteEntry;
    if (header.start < paletteEnd || header.start > bytes.Size()) {
        return std::nullopt;
    }
    return header;
}

// Blue, green, red from `at` on.
Pixel PixelAt(const Bytes& bytes, std::size_t at) {
    return bytes.At(at) | (bytes.At(at + 1) << 8) | (bytes.At(at + 2) << 16);
}

using Palette = std::vector<Pixel>;

Palette ReadPalette(const Bytes& bytes, const Header& header) {
    Palette palette(header.colours);
    for (std::size_t i = 0; i < palette.size(); ++i) {
        palette[i] = PixelAt(bytes, kFileHeader + kInfoHeader + i * kPaletteEntry);
    }
    return palette;
}

// False if an index is beyond the palette.
bool ReadPlainRow(const Bytes& bytes, std::size_t row, const Header& header, const Palette& palette,
                  Pixel* write) {
    for (Long x = 0; x < header.width; ++x) {
        const auto column = static_cast<std::size_t>(x);
        if (header.depth == 24) {
            write[x] = PixelAt(bytes, row + column * 3);
            continue;
        }
        const std::size_t bit = column * header.depth;
        const std::uint32_t shift = 8 - header.depth - bit % 8;
        const std::uint32_t index = (bytes.At(row + bit / 8) >> shift) & ((1U << header.depth) - 1);
        if (index >= palette.size()) {
            return false;
        }
        write[x] = palette[index];
    }
    return true;
}

bool ReadPlain(const Bytes& bytes, const Header& header, const Palette& palette, Surface& picture) {
    const std::size_t bits = static_cast<std::size_t>(header.width) * header.depth;
    const std::size_t rowBytes = (bits + 31) / 32 * 4;
    const auto rows = static_cast<std::size_t>(header.height);
    if (bytes.Size() - header.start < rowBytes * rows) {
        return false;
    }
    for (std::size_t row = 0; row < rows; ++row) {
        Pixel* write = picture.Row(header.height - 1 - static_cast<Long>(row));
        if (!ReadPlainRow(bytes, header.start + row * rowBytes, header, palette, write)) {
            return false;
        }
    }
    return true;
}

// The codes of a run-length compressed picture, one after the other. Each step answers False for
// damage: bytes that are missing, or pixels outside of the picture or the palette.
class RunLengthReader {
  public:
    RunLengthReader(const Bytes& bytes, std::size_t start, const Palette& palette, Surface& picture)
        : bytes_(bytes), at_(start), palette_(palette), picture_(picture) {}

    bool ReadAll() {
        while (!ended_) {
            if (!Has(2) || !ReadCode()) {
                return false;
            }
        }
        return true;
    }

  private:
    enum Escape : std::uint32_t { kEndOfRow = 0, kEndOfPicture = 1, kSkip = 2 };

    bool Has(std::size_t count) const { return bytes_.Size() - at_ >= count; }
    std::uint32_t Next() { return bytes_.At(at_++); }

    bool ReadCode() {
        const std::uint32_t count = Next();
        const std::uint32_t value = Next();
        if (count > 0) {
            return ReadRun(count, value);
        }
        switch (value) {
            case kEndOfRow:
                x_ = 0;
                ++y_;
                return true;
            case kEndOfPicture:
                ended_ = true;
                return true;
            case kSkip:
                return Skip();
            default:
                return ReadVerbatim(value);
        }
    }

    bool ReadRun(std::uint32_t count, std::uint32_t index) {
        const auto length = static_cast<Long>(count);
        if (x_ + length > size_.width || y_ >= size_.height || index >= palette_.size()) {
            return false;
        }
        std::fill_n(picture_.Row(size_.height - 1 - y_) + x_, length, palette_[index]);
        x_ += length;
        return true;
    }

    // Padded to an even number of bytes.
    bool ReadVerbatim(std::uint32_t count) {
        if (!Has(count + count % 2)) {
            return false;
        }
        for (std::uint32_t i = 0; i < count; ++i) {
            if (!Put(Next())) {
                return false;
            }
        }
        at_ += count % 2;
        return true;
    }

    bool Skip() {
        if (!Has(2)) {
            return false;
        }
        x_ += static_cast<Long>(Next());
        y_ += static_cast<Long>(Next());
        return x_ <= size_.width && y_ <= size_.height;
    }

    bool Put(std::uint32_t index) {
        if (x_ >= size_.width || y_ >= size_.height || index >= palette_.size()) {
            return false;
        }
        picture_.Row(size_.height - 1 - y_)[x_++] = palette_[index];
        return true;
    }

    const Bytes& bytes_;
    std::size_t at_;
    const Palette& palette_;
    Surface& picture_;
    const Size size_ = picture_.StoredSize();
    Long x_ = 0;
    Long y_ = 0;  // from the bottom
    bool ended_ = false;
};

}  // namespace

PictureRef DecodeBitmap(std::string_view file, Long density) {
    const Bytes bytes(file);
    const auto header = ReadHeader(bytes);
    if (!header || header->width % density != 0 || header->height % density != 0) {
        return nullptr;
    }
    const Palette palette = ReadPalette(bytes, *header);
    auto picture =
        std::make_shared<Surface>(Size{header->width / density, header->height / density}, density);
    if (header->compression == kRunLength8) {
        // Pixels that no code names have the first colour.
        picture->FillRect(picture->Bounds(), ColourOf(palette[0]));
        RunLengthReader reader(bytes, header->start, palette, *picture);
        return reader.ReadAll() ? picture : nullptr;
    }
    return ReadPlain(bytes, *header, palette, *picture) ? picture : nullptr;
}

}  // namespace platform

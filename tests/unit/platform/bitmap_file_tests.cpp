// Bitmap files made by hand, whole and damaged.
#include "platform/drawing/bitmap_file.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace platform {
namespace {

using Colours = std::vector<Colour>;

constexpr Colour kRed = 0x0000FF;
constexpr Colour kGreen = 0x00FF00;
constexpr Colour kBlue = 0xFF0000;
constexpr Colour kWhite = 0xFFFFFF;

// A file in the making. The places are those of the two headers.
class File {
  public:
    enum Place : std::size_t {
        kStart = 10,
        kInfoSize = 14,
        kWidth = 18,
        kHeight = 22,
        kPlanes = 26,
        kDepth = 28,
        kCompression = 30,
        kColoursUsed = 46
    };

    /// Palette entries as colours; the pixels as they lie in the file.
    File(std::uint32_t width, std::uint32_t height, std::uint32_t depth, const Colours& palette,
         std::string_view pixels) {
        const auto colours = static_cast<std::uint32_t>(palette.size());
        bytes_ = "BM";
        for (const std::uint32_t number : {0U, 0U, 54 + 4 * colours, 40U, width, height,
                                           1 | (depth << 16), 0U, 0U, 0U, 0U, colours, 0U}) {
            Append(number, 4);
        }
        for (const Colour colour : palette) {
            Append(static_cast<std::uint32_t>((colour >> 16) & 0xFF), 1);
            Append(static_cast<std::uint32_t>((colour >> 8) & 0xFF), 1);
            Append(static_cast<std::uint32_t>(colour & 0xFF), 1);
            Append(0, 1);
        }
        bytes_ += pixels;
    }
    File& Set(Place place, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            bytes_[place + i] = static_cast<char>(value >> (8 * i));
        }
        return *this;
    }
    File& RunLength() { return Set(kCompression, 1); }
    File& Cut(std::size_t bytes) {
        bytes_.resize(bytes_.size() - bytes);
        return *this;
    }
    const std::string& Bytes() const { return bytes_; }
    PictureRef Decoded() const { return DecodeBitmap(bytes_); }

  private:
    void Append(std::uint32_t number, int count) {
        for (int i = 0; i < count; ++i) {
            bytes_.push_back(static_cast<char>(number >> (8 * i)));
        }
    }
    std::string bytes_;
};

// Bytes with zeros among them.
template <std::size_t size>
std::string_view Raw(const char (&text)[size]) {
    return {text, size - 1};
}

// Row by row from the top; empty for no picture.
Colours PixelsOf(const PictureRef& picture) {
    Colours pixels;
    for (Long y = 0; picture != nullptr && y < picture->Height(); ++y) {
        for (Long x = 0; x < picture->Width(); ++x) {
            pixels.push_back(picture->GetPixel({x, y}));
        }
    }
    return pixels;
}

File Sound8() {
    return {2, 2, 8, {kRed, kGreen}, Raw("\x00\x01\x00\x00\x01\x01\x00\x00")};
}

TEST(BitmapFile, RowsStandFromTheBottomUpAndAreFilledToFourBytes) {
    EXPECT_EQ(PixelsOf(Sound8().Decoded()), (Colours{kGreen, kGreen, kRed, kGreen}));
}

TEST(BitmapFile, OneBitAPixelBeginsWithTheHighestBit) {
    // 1010 0000 0100 0000: nine pixels.
    const File file(9, 1, 1, {0, kWhite}, Raw("\xA0\x40\x00\x00"));
    // The tenth bit is beyond the width.
    EXPECT_EQ(PixelsOf(file.Decoded()), (Colours{kWhite, 0, kWhite, 0, 0, 0, 0, 0, 0}));
}

TEST(BitmapFile, FourBitsAPixelBeginWithTheUpperHalf) {
    const File file(3, 1, 4, {kRed, kGreen, kBlue}, Raw("\x12\x00\x00\x00"));
    EXPECT_EQ(PixelsOf(file.Decoded()), (Colours{kGreen, kBlue, kRed}));
}

TEST(BitmapFile, TwentyFourBitsAreBlueGreenRed) {
    const File file(1, 2, 24, {}, Raw("\xFF\x00\x00\x00\x01\x02\x03\x00"));
    EXPECT_EQ(PixelsOf(file.Decoded()), (Colours{0x010203, kBlue}));
}

TEST(BitmapFile, NoCountOfColoursMeansAllOfThem) {
    Colours palette(16, kRed);
    palette[15] = kGreen;
    File file(1, 1, 4, palette, Raw("\xF0\x00\x00\x00"));
    EXPECT_EQ(PixelsOf(file.Set(File::kColoursUsed, 0).Decoded()), (Colours{kGreen}));
}

TEST(BitmapFile, PixelsMayBeginBehindAGap) {
    File file(1, 1, 8, {kRed, kGreen}, Raw("....\x01\x00\x00\x00"));
    EXPECT_EQ(PixelsOf(file.Set(File::kStart, 54 + 8 + 4).Decoded()), (Colours{kGreen}));
}

TEST(BitmapFile, RunsVerbatimStretchesAndSkips) {
    // Bottom row: three of 1, then one of 2. Top row: one pixel skipped, then 2 1 1 as they are
    // (and a byte that makes them even).
    File file(4, 2, 8, {kRed, kGreen, kBlue},
              Raw("\x03\x01\x01\x02\x00\x00\x00\x02\x01\x00\x00\x03\x02\x01\x01\x00\x00\x01"));
    EXPECT_EQ(PixelsOf(file.RunLength().Decoded()),
              (Colours{kRed, kBlue, kGreen, kGreen, kGreen, kGreen, kGreen, kBlue}));
}

TEST(BitmapFile, ASkipMayGoUpRows) {
    // From (1, 0) two to the right and one up.
    File file(4, 2, 8, {kRed, kGreen}, Raw("\x01\x01\x00\x02\x02\x01\x01\x01\x00\x01"));
    EXPECT_EQ(PixelsOf(file.RunLength().Decoded()),
              (Colours{kRed, kRed, kRed, kGreen, kGreen, kRed, kRed, kRed}));
}

TEST(BitmapFile, WhatNoRunNamesHasTheFirstColour) {
    File file(2, 1, 8, {kBlue, kGreen}, Raw("\x00\x01"));
    EXPECT_EQ(PixelsOf(file.RunLength().Decoded()), (Colours{kBlue, kBlue}));
}

TEST(BitmapFile, AnyMissingByteIsDamage) {
    const std::string whole = Sound8().Bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_EQ(DecodeBitmap(std::string_view(whole).substr(0, length)), nullptr) << length;
    }
    File packed(2, 1, 8, {kRed}, Raw("\x02\x00\x00\x01"));
    const std::string runs = packed.RunLength().Bytes();
    for (std::size_t length = 0; length < runs.size(); ++length) {
        EXPECT_EQ(DecodeBitmap(std::string_view(runs).substr(0, length)), nullptr) << length;
    }
    EXPECT_NE(DecodeBitmap(runs), nullptr);
}

struct Damage {
    const char* what;
    File::Place place;
    std::uint32_t value;
};

TEST(BitmapFile, HeadersThatAreNotUnderstoodAreDamage) {
    const std::vector<Damage> damages{
        {"a header of another kind", File::kInfoSize, 108},
        {"pixels within the palette", File::kStart, 61},
        {"pixels at the file's end", File::kStart, 70},
        {"pixels beyond the file", File::kStart, 71},
        {"pixels far beyond it", File::kStart, 0xFFFFFFFF},
        {"no width", File::kWidth, 0},
        {"a width below 0", File::kWidth, 0xFFFFFFFF},
        {"a side of 4097", File::kWidth, 4097},
        {"no height", File::kHeight, 0},
        {"rows from the top down", File::kHeight, 0xFFFFFFFE},
        {"a height of 4097", File::kHeight, 4097},
        {"two planes", File::kPlanes, 2 | (8 << 16)},
        {"a depth of 16", File::kDepth, 16},
        {"a depth of 0", File::kDepth, 0},
        {"a depth of 32", File::kDepth, 32},
        {"run lengths of 4 bits", File::kCompression, 2},
        {"bit masks", File::kCompression, 3},
        {"more colours than bits", File::kColoursUsed, 257},
        {"a palette beyond the pixels", File::kColoursUsed, 3},
    };
    ASSERT_NE(Sound8().Decoded(), nullptr);
    for (const Damage& damage : damages) {
        File file = Sound8();
        if (damage.place == File::kDepth) {
            file.Set(File::kPlanes, 1 | (damage.value << 16));
        } else {
            file.Set(damage.place, damage.value);
        }
        EXPECT_EQ(file.Decoded(), nullptr) << damage.what;
    }
}

TEST(BitmapFile, ASignatureOfAnotherKindIsDamage) {
    std::string bytes = Sound8().Bytes();
    bytes[1] = 'A';
    EXPECT_EQ(DecodeBitmap(bytes), nullptr);
}

TEST(BitmapFile, AColourBeyondThePaletteIsDamage) {
    EXPECT_EQ(File(1, 1, 8, {kRed, kGreen}, Raw("\x02\x00\x00\x00")).Decoded(), nullptr);
    EXPECT_EQ(File(1, 1, 4, {kRed, kGreen}, Raw("\x20\x00\x00\x00")).Decoded(), nullptr);
    EXPECT_EQ(File(1, 1, 1, {kRed}, Raw("\x80\x00\x00\x00")).Decoded(), nullptr);
    EXPECT_EQ(File(2, 1, 8, {kRed}, Raw("\x02\x01\x00\x01")).RunLength().Decoded(), nullptr);
}

TEST(BitmapFile, RunLengthsAreOf8BitsOnly) {
    EXPECT_EQ(File(2, 1, 4, {kRed}, Raw("\x02\x00\x00\x01")).RunLength().Decoded(), nullptr);
}

// In a picture of 2 x 1.
TEST(BitmapFile, RunsOutOfThePictureAreDamage) {
    const std::vector<std::pair<const char*, std::string_view>> damages{
        {"a run too long", Raw("\x03\x00\x00\x01")},
        {"a second run", Raw("\x02\x00\x01\x00\x00\x01")},
        {"a stretch too long", Raw("\x00\x03\x00\x00\x00\x00\x00\x01")},
        {"a second row", Raw("\x00\x00\x01\x00\x00\x01")},
        {"a skip to the right", Raw("\x00\x02\x03\x00\x00\x01")},
        {"a skip up", Raw("\x00\x02\x00\x02\x00\x01")},
        {"a run behind a skip to the edge", Raw("\x00\x02\x02\x00\x01\x00\x00\x01")},
        {"no end", Raw("\x02\x00")},
        {"half a skip", Raw("\x00\x02\x01")},
        {"half a stretch", Raw("\x00\x05\x00\x00")},
        {"half a code", Raw("\x02\x00\x00")},
    };
    for (const auto& [what, pixels] : damages) {
        EXPECT_EQ(File(2, 1, 8, {kRed}, pixels).RunLength().Decoded(), nullptr) << what;
    }
}

}  // namespace
}  // namespace platform

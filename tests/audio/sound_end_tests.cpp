// Where the sound of a file ends, and how deep its pieces lie within each other.
#include "host/engine/sound_end.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "host/engine/nesting.h"
#include "sound_files.h"

namespace audio_tests {
namespace {

using veldrin::EndOfSound;
using veldrin::NestsTooDeep;

std::string Number(std::size_t number, bool bigEndian) {
    std::string bytes;
    for (unsigned i = 0; i < 4; ++i) {
        bytes += static_cast<char>(number >> (8 * (bigEndian ? 3 - i : i)));
    }
    return bytes;
}

std::string Chunk(const std::string& name, const std::string& data, bool bigEndian) {
    return name + Number(data.size(), bigEndian) + data + std::string(data.size() % 2, '\0');
}

class SoundEndTest : public testing::Test {
  protected:
    std::optional<std::int64_t> EndOf(const std::string& bytes) const {
        WriteText(directory_ / "file", bytes);
        return EndOfSound(directory_ / "file");
    }

    TemporaryDirectory directory_;
};

TEST_F(SoundEndTest, ChunksEndWhereNothingFollowsButZeros) {
    for (const bool bigEndian : {false, true}) {
        const std::string start =
            std::string(bigEndian ? "FORM----AIFF" : "RIFF----WAVE") +
            Chunk("fmt ", std::string(16, '\0'), bigEndian) + std::string(8, '\0') +
            Chunk(bigEndian ? "SSND" : "data", std::string(101, '\0'), bigEndian) +
            Chunk("LIST", "abc", bigEndian);
        // 12 bytes, 24 of the format, 8 of nothing, 110 of the sound and 12 of the list.
        EXPECT_EQ(start.size(), 166U);
        EXPECT_EQ(EndOf(start), std::nullopt);
        EXPECT_EQ(EndOf(start + std::string(7, '\0')), std::nullopt);
        EXPECT_EQ(EndOf(start + std::string(8, '\0')), 166);
        EXPECT_EQ(EndOf(start + std::string(100000, '\0')), 166);
        EXPECT_EQ(EndOf(start + Chunk("JUNK", "", bigEndian)), std::nullopt);
    }
}

TEST_F(SoundEndTest, ChunksEndWhereThereAreTooMany) {
    std::string bytes = "RIFF----WAVE" + Chunk("data", "ab", false);
    for (int i = 0; i < 1000; ++i) {
        bytes += Chunk("JUNK", "", false);
    }
    // The sound and 999 behind it.
    EXPECT_EQ(EndOf(bytes), std::nullopt);
    EXPECT_EQ(EndOf(bytes + Chunk("JUNK", "", false)), 22 + 8 * 1000);
}

TEST_F(SoundEndTest, SoundOfUnknownLengthIsNotCut) {
    EXPECT_EQ(EndOf("RIFF----WAVE" + Chunk("data", "", false) + std::string(1000, '\0')),
              std::nullopt);
}

TEST_F(SoundEndTest, OggEndsAPageBehindItsLastPage) {
    constexpr std::int64_t kLargestPage = 27 + 255 + 255 * 255;
    const std::string start = std::string("OggS\0", 5) + std::string(5000, 'x') +
                              std::string("OggS\0", 5) + std::string(300, 'y');
    EXPECT_EQ(EndOf(start), std::nullopt);
    EXPECT_EQ(EndOf(start + std::string(60000, '\0')), std::nullopt);
    EXPECT_EQ(EndOf(start + std::string(3000000, '\0')), 5005 + kLargestPage);
    // The name across the border of two steps of the search.
    for (std::size_t shift = 0; shift < 6; ++shift) {
        const std::size_t tail = kLargestPage + 1024UL * 1024 - 5 + shift;
        EXPECT_EQ(EndOf(start + std::string(tail - 300, '\0')), 5005 + kLargestPage);
    }
}

TEST_F(SoundEndTest, OthersAreLeftAlone) {
    EXPECT_EQ(EndOf(""), std::nullopt);
    EXPECT_EQ(EndOf("RIFF"), std::nullopt);
    EXPECT_EQ(EndOf(std::string("\xFF\xFB\x90\x64", 4) + std::string(100000, '\0')), std::nullopt);
    EXPECT_EQ(EndOfSound(directory_ / "missing"), std::nullopt);
    EXPECT_EQ(EndOfSound(directory_.Path()), std::nullopt);
}

std::string Atoms(int levels, const std::string& name = "moov", std::size_t numbers = 0) {
    std::string atom;
    for (int i = 0; i < levels; ++i) {
        const std::string inside = std::string(numbers, '\0') + atom;
        atom = Number(8 + inside.size(), true) + name + inside;
    }
    return atom;
}

TEST(NestingTest, AHundredLevelsOfAtomsAreEnough) {
    EXPECT_FALSE(NestsTooDeep(Atoms(100)));
    EXPECT_TRUE(NestsTooDeep(Atoms(102)));
    EXPECT_TRUE(NestsTooDeep(Atoms(102, "meta", 4)));
    EXPECT_TRUE(NestsTooDeep(Atoms(20000, "trak")));
    // Beside each other they do no harm.
    std::string many;
    for (int i = 0; i < 1000; ++i) {
        many += Atoms(5);
    }
    EXPECT_FALSE(NestsTooDeep(Number(8 + many.size(), true) + "moov" + many));
}

TEST(NestingTest, PackedAtomsAreNotTrusted) {
    EXPECT_TRUE(NestsTooDeep(Number(24, true) + "moov" + Number(16, true) + "cmov" + "--------"));
    EXPECT_FALSE(NestsTooDeep(Number(24, true) + "moov" + Number(16, true) + "free" + "--------"));
}

std::string Element(const std::string& name, const std::string& data) {
    return name + "\x10" + Number(data.size(), true).substr(1) + data;
}

TEST(NestingTest, ChaptersWithinChapters) {
    const auto chapters = [](int levels) {
        std::string chapter;
        for (int i = 0; i < levels; ++i) {
            chapter = Element("\xB6", chapter);
        }
        return Element("\x10\x43\xA7\x70", Element("\x45\xB9", chapter));
    };
    EXPECT_FALSE(NestsTooDeep(chapters(90)));
    EXPECT_TRUE(NestsTooDeep(chapters(110)));
    EXPECT_TRUE(NestsTooDeep(chapters(20000)));
}

TEST(NestingTest, AnythingElseIsNothing) {
    EXPECT_FALSE(NestsTooDeep(""));
    EXPECT_FALSE(NestsTooDeep("moov"));
    EXPECT_FALSE(NestsTooDeep(std::string(100000, '\0')));
    EXPECT_FALSE(NestsTooDeep(std::string(100000, '\xFF')));
    EXPECT_FALSE(NestsTooDeep(Atoms(200) + "x"));  // no whole piece
    EXPECT_FALSE(NestsTooDeep("\x10\x43\xA7\x70"));
}

}  // namespace
}  // namespace audio_tests

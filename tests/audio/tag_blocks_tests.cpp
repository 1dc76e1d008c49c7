// What is kept of large tags, and what is kept from TagLib.
#include "host/engine/tag_blocks.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace audio_tests {
namespace {

using veldrin::IsFooterOfManyItems;
using veldrin::IsId3Header;
using veldrin::IsPictureHeader;
using veldrin::TextFramesOf;

std::string Bytes(std::initializer_list<unsigned> bytes) {
    std::string text;
    for (const unsigned byte : bytes) {
        text += static_cast<char>(byte);
    }
    return text;
}

/// Of version 4 or 3.
std::string Frame(const std::string& name, const std::string& data, unsigned flags = 0) {
    return name + Bytes({0, 0, 0, static_cast<unsigned>(data.size()), 0, flags}) + data;
}

std::string HeaderOf(unsigned version, unsigned flags = 0) {
    return "ID3" + Bytes({version, 0, flags, 0, 0, 0, 0});
}

const std::string kBehind(20, '\0');

std::string Kept(const std::string& header, const std::string& frames) {
    const TagLib::ByteVector kept = TextFramesOf(header, frames);
    return {kept.data(), kept.size()};
}

TEST(TagBlocksTest, HeaderOfId3TellsItsSizeInSevensOfBits) {
    const std::string header = "ID3" + Bytes({4, 0, 0, 0, 1, 2, 3});
    EXPECT_TRUE(IsId3Header(header, (1U << 14U) + (2U << 7U) + 3));
    EXPECT_FALSE(IsId3Header(header, (1U << 14U) + (2U << 7U) + 4));
    EXPECT_FALSE(IsId3Header("TAG" + header.substr(3), (1U << 14U) + (2U << 7U) + 3));
    EXPECT_FALSE(IsId3Header("", 0));
}

TEST(TagBlocksTest, OnlyTextsAndWordsAreKept) {
    const std::string title = Frame("TIT2", "x");
    const std::string words = Frame("USLT", "abc");
    const std::string times = Frame("SYLT", "def");
    EXPECT_EQ(Kept(HeaderOf(4), Frame("APIC", "picture") + title + Frame("CHAP", "chapter") +
                                    words + Frame("PRIV", "p") + times + std::string(100, '\0')),
              title + words + times + kBehind);
    EXPECT_EQ(Kept(HeaderOf(4), ""), kBehind);
}

TEST(TagBlocksTest, PackedFramesAreNotKept) {
    const std::string plain = Frame("TIT2", "x");
    EXPECT_EQ(Kept(HeaderOf(4), Frame("TPE1", "packed", 0x08) + plain), plain + kBehind);
    EXPECT_EQ(Kept(HeaderOf(3), Frame("TPE1", "packed", 0x80) + plain), plain + kBehind);
}

TEST(TagBlocksTest, ShortHeadersOfTheOldestVersion) {
    const std::string title = "TT2" + Bytes({0, 0, 1}) + "x";
    const std::string words = "ULT" + Bytes({0, 0, 2}) + "ab";
    const std::string picture = "PIC" + Bytes({0, 1, 1}) + std::string(257, 'p');
    EXPECT_EQ(Kept(HeaderOf(2), picture + title + words), title + words + kBehind);
}

TEST(TagBlocksTest, SizesOfVersionFourThatAreNotInSevens) {
    const std::string title = Frame("TIT2", "x");
    // 200 bytes are 0x00C8; in sevens of bits that would be 72.
    const std::string plain = "APIC" + Bytes({0, 0, 0, 200, 0, 0}) + std::string(200, 'p') + title;
    const std::string right = "APIC" + Bytes({0, 0, 1, 72, 0, 0}) + std::string(200, 'p') + title;
    EXPECT_EQ(Kept(HeaderOf(4), right), title + kBehind);
    EXPECT_EQ(Kept(HeaderOf(3), plain), title + kBehind);
    EXPECT_EQ(
        Kept(HeaderOf(4), "APIC" + Bytes({0, 0, 1, 200, 0, 0}) + std::string(456, 'p') + title),
        title + kBehind);
}

TEST(TagBlocksTest, NoMoreThanFiveHundredFrames) {
    std::string frames;
    for (int i = 0; i < 600; ++i) {
        frames += Frame("TXXX", "x");
    }
    EXPECT_EQ(Kept(HeaderOf(4), frames).size(), 500 * 11 + kBehind.size());
}

TEST(TagBlocksTest, AnExtendedHeaderIsReplaced) {
    const std::string title = Frame("TIT2", "x");
    const std::string extended = Bytes({0, 0, 0, 12}) + "12345678";
    EXPECT_EQ(Kept(HeaderOf(4, 0x40), extended + title),
              Bytes({0, 0, 0, 6, 1, 0}) + title + kBehind);
}

TEST(TagBlocksTest, ZerosAgainstFalseSoundAreTakenOutAndPutInAgain) {
    const std::string data = Bytes({1, 0xFF, 0x00, 0xFE});  // as it is meant
    const std::string frame = Frame("TIT2", data);
    const std::string picture = Frame("APIC", Bytes({0xFF, 0}));
    const auto stored = [](std::string bytes) {
        for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
            if (bytes[i] == '\xFF' && bytes[i + 1] == '\0') {
                bytes.insert(i + 1, 1, '\0');
            }
        }
        return bytes;
    };
    EXPECT_EQ(Kept(HeaderOf(3, 0x80), stored(picture + frame)), stored(frame) + kBehind);
    // Of version 4 each frame tells it of itself, and its size counts the zeros.
    EXPECT_EQ(Kept(HeaderOf(4, 0x80), picture + frame), frame + kBehind);
}

TEST(TagBlocksTest, FramesThatDoNotEndWithinTheTagEndIt) {
    const std::string title = Frame("TIT2", "x");
    EXPECT_EQ(Kept(HeaderOf(4), title + Frame("TPE1", "abc").substr(0, 12)), title + kBehind);
    EXPECT_EQ(Kept(HeaderOf(4), title + Frame("TPE1", "") + title), title + kBehind);
}

TEST(TagBlocksTest, Pictures) {
    EXPECT_TRUE(IsPictureHeader("......" + Bytes({6, 1, 0, 2}), 65538));
    EXPECT_TRUE(IsPictureHeader("......" + Bytes({0x86, 1, 0, 2}), 65538));
    EXPECT_FALSE(IsPictureHeader("......" + Bytes({4, 1, 0, 2}), 65538));
    EXPECT_FALSE(IsPictureHeader("......" + Bytes({6, 1, 0, 3}), 65538));
    EXPECT_TRUE(IsPictureHeader(".." + Bytes({0, 1, 0, 8}) + "covr", 65536));
    EXPECT_FALSE(IsPictureHeader(".." + Bytes({0, 1, 0, 8}) + "data", 65536));
    EXPECT_FALSE(IsPictureHeader("covr", 0));
}

TEST(TagBlocksTest, MoreThanAThousandItems) {
    const auto footer = [](unsigned low, unsigned high) {
        return "APETAGEX" + std::string(8, '\0') + Bytes({low, high, 0, 0}) + std::string(12, '\0');
    };
    EXPECT_FALSE(IsFooterOfManyItems(footer(0xE8, 3)));  // 1000
    EXPECT_TRUE(IsFooterOfManyItems(footer(0xE9, 3)));
    EXPECT_FALSE(IsFooterOfManyItems(std::string(32, '\xFF')));
    EXPECT_FALSE(IsFooterOfManyItems(""));
}

}  // namespace
}  // namespace audio_tests

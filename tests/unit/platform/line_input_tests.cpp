#include "platform/files/line_input.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/unit/support/temp_folder.h"

namespace platform {
namespace {

class LineInputTest : public ::testing::Test {
  protected:
    using Lines = std::vector<std::string>;

    Lines LinesOf(std::string_view bytes, std::size_t longest = LineInput::kLongestLine) {
        folder_.Write("file", bytes);
        LineInput input(folder_.Text("file"), longest);
        Lines lines;
        while (const auto line = input.Next()) {
            lines.emplace_back(*line);
        }
        EXPECT_FALSE(input.Next());
        return lines;
    }

    support::TempFolder folder_;
};

TEST_F(LineInputTest, ALineEndsAtCrOrCrLf) {
    EXPECT_EQ(LinesOf("a\r\nb\rc\nd\r\n"), (Lines{"a", "b", "c\nd"}));
    EXPECT_EQ(LinesOf("\r\r\r\n\r"), (Lines{"", "", "", ""}));
    EXPECT_EQ(LinesOf("\r\na"), (Lines{"", "a"}));
    EXPECT_EQ(LinesOf(""), Lines{});
    EXPECT_EQ(LinesOf("a"), Lines{"a"});
}

// The file is read in pieces of 64 KiB, and what ends a line may lie across two of them.
TEST_F(LineInputTest, PiecesAreNotSeen) {
    constexpr std::size_t kPiece = 1U << 16U;
    for (std::size_t length = kPiece - 3; length < kPiece + 3; ++length) {
        const std::string line(length, 'x');
        EXPECT_EQ(LinesOf(line + "\r\nb\r\n"), (Lines{line, "b"})) << length;
        EXPECT_EQ(LinesOf(line + "\rb\r"), (Lines{line, "b"})) << length;
        EXPECT_EQ(LinesOf(line + "\r"), Lines{line}) << length;
        EXPECT_EQ(LinesOf(line), Lines{line}) << length;
    }
    EXPECT_EQ(LinesOf(std::string(3 * kPiece, '\r')).size(), 3 * kPiece);
}

TEST_F(LineInputTest, ALineOverManyPiecesIsOne) {
    const std::string line(std::size_t{20} << 20U, 'x');
    EXPECT_EQ(LinesOf("a\r\n" + line + "\r\nb"), (Lines{"a", line, "b"}));
}

TEST_F(LineInputTest, NothingComesFromALineOnThatIsTooLong) {
    EXPECT_EQ(LinesOf("abc\r\nabcd\r\nab\r\n", 3), Lines{"abc"});
    EXPECT_EQ(LinesOf("abc\r\nabcd", 4), (Lines{"abc", "abcd"}));
    // A file without an end, as far as memory goes.
    folder_.Write("huge", "a\r\n");
    std::filesystem::resize_file(folder_.Path("huge"), std::uintmax_t{1} << 40U);
    LineInput input(folder_.Text("huge"), 1000);
    EXPECT_EQ(input.Next(), "a");
    EXPECT_FALSE(input.Next());
}

TEST_F(LineInputTest, OfAnythingButAFileThereAreNoLines) {
    ASSERT_EQ(mkfifo(folder_.Path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(LineInput(folder_.Text("pipe")).Next());
    EXPECT_FALSE(LineInput(folder_.Text("none")).Next());
}

}  // namespace
}  // namespace platform

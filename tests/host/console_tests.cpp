#include "host/terminal/console.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <string_view>
#include <vector>

#include "host/descriptor.h"
#include "host/terminal/keyboard.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {
namespace {

TEST(Printable, PlainTextStays) {
    EXPECT_EQ(Printable("Ärzte - Straße \"1\""), "Ärzte - Straße \"1\"");
    EXPECT_EQ(Printable("\xF0\x9F\x8E\xB5 tune"), "\xF0\x9F\x8E\xB5 tune");
    EXPECT_EQ(Printable(""), "");
}

TEST(Printable, NothingSteersTheTerminal) {
    EXPECT_EQ(Printable("a\x1b[31mb"), "a [31mb");
    EXPECT_EQ(Printable("a\r\nb\tc\x07\x7f"), "a  b c  ");
    EXPECT_EQ(Printable("a\xC2\x9B"
                        "31m"),
              "a 31m");  // U+009B begins a sequence by itself
    EXPECT_EQ(Printable("a\xE2\x80\xAE"
                        "b"),
              "a b");  // U+202E turns the direction
    EXPECT_EQ(Printable("a\xE2\x81\xA6"
                        "b"),
              "a b");  // U+2066 likewise
    EXPECT_EQ(Printable("a\xE2\x80\xA8"
                        "b"),
              "a b");  // U+2028 breaks the line
}

TEST(Printable, BytesThatAreNotUtf8AreMarked) {
    EXPECT_EQ(Printable("b\xE9.mp3"), "b\xEF\xBF\xBD.mp3");
    EXPECT_EQ(Printable("\x9B"
                        "31m"),
              "\xEF\xBF\xBD"
              "31m");
}

/// What arrives at the other end of a pipe.
class Pipe {
  public:
    Pipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
        reading_ = Descriptor(ends[0]);
        writing_ = Descriptor(ends[1]);
    }
    int Writing() const { return writing_.Number(); }
    std::string Text() const {
        std::array<char, 4096> buffer{};
        const ssize_t got = read(reading_.Number(), buffer.data(), buffer.size());
        return got > 0 ? std::string(buffer.data(), static_cast<std::size_t>(got)) : "";
    }

  private:
    Descriptor reading_;
    Descriptor writing_;
};

TEST(Console, LinesAndComplaintsGoTheirWays) {
    const Pipe output;
    const Pipe errors;
    Console console(output.Writing(), errors.Writing());
    console.Line("  1. Tune");
    console.Complain("cannot play 'x'");
    EXPECT_EQ(output.Text(), "  1. Tune\n");
    EXPECT_EQ(errors.Text(), "veldrin: cannot play 'x'\n");
}

TEST(Console, NoProgressOffTheTerminal) {
    const Pipe output;
    Console console(output.Writing(), output.Writing());
    console.Progress("0:01 / 3:20");
    EXPECT_FALSE(console.ShowsProgress());
    EXPECT_EQ(output.Text(), "");
}

/// A terminal of so many columns, 0 if it does not know, and what a console has written to it.
class ConsoleOnTerminal : public testing::Test {
  protected:
    void Open(unsigned short columns) {
        const winsize size{24, columns, 0, 0};
        int screen = -1;
        int terminal = -1;
        ASSERT_EQ(openpty(&screen, &terminal, nullptr, nullptr, &size), 0);
        screen_ = Descriptor(screen);
        terminal_ = Descriptor(terminal);
        console_.emplace(terminal, terminal);
    }
    /// All that has come since the last question. It takes a moment on its way, so a mark is sent
    /// behind it.
    std::string Shown() const {
        constexpr std::string_view kMark = "<end>";
        EXPECT_EQ(write(terminal_.Number(), kMark.data(), kMark.size()), ssize_t{kMark.size()});
        std::string shown;
        pollfd entry{screen_.Number(), POLLIN, 0};
        while (!shown.ends_with(kMark) && poll(&entry, 1, 10'000) > 0) {
            std::array<char, 4096> buffer{};
            const ssize_t got = read(screen_.Number(), buffer.data(), buffer.size());
            shown.append(buffer.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
        }
        EXPECT_TRUE(shown.ends_with(kMark));
        return shown.substr(0, shown.size() - std::min(shown.size(), kMark.size()));
    }
    std::optional<Console> console_;

  private:
    Descriptor screen_;
    Descriptor terminal_;
};

constexpr const char* kErase = "\r\x1b[K";

TEST_F(ConsoleOnTerminal, ProgressLeavesTheLastColumnFree) {
    Open(20);
    EXPECT_TRUE(console_->ShowsProgress());
    console_->Progress("0123456789abcdefghi");
    EXPECT_EQ(Shown(), kErase + std::string("0123456789abcdefghi"));
    console_->Progress("0123456789ABCDEFGHIJ");
    EXPECT_EQ(Shown(), kErase + std::string("0123456789ABCDEFGHI"));
    console_->Progress("0123456789abcdefghijk");
    EXPECT_EQ(Shown(), kErase + std::string("0123456789abcdefghi"));
}

TEST_F(ConsoleOnTerminal, OneThatDoesNotKnowItsWidthIsTakenToHave80Columns) {
    Open(0);
    console_->Progress(std::string(80, 'x'));
    EXPECT_EQ(Shown(), kErase + std::string(79, 'x'));
}

TEST_F(ConsoleOnTerminal, ProgressIsWrittenOnlyWhenItChanges) {
    Open(20);
    console_->Progress("0:01");
    console_->Progress("0:01");
    EXPECT_EQ(Shown(), kErase + std::string("0:01"));
    console_->Progress("");
    console_->Progress("");
    EXPECT_EQ(Shown(), kErase);
}

TEST_F(ConsoleOnTerminal, LinesAndComplaintsTakeThePlaceOfTheProgress) {
    Open(20);
    console_->Line("first");
    EXPECT_EQ(Shown(), "first\r\n");
    console_->Progress("0:01");
    console_->Line("second");
    EXPECT_EQ(Shown(), kErase + std::string("0:01") + kErase + "second\r\n");
    console_->Progress("0:01");
    console_->Complain("third");
    EXPECT_EQ(Shown(), kErase + std::string("0:01") + kErase + "veldrin: third\r\n");
    console_->Line("fourth");
    EXPECT_EQ(Shown(), "fourth\r\n");
}

/// A pipe that holds all it can: 64 KiB.
class FullPipe {
  public:
    FullPipe() {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
        reading_ = Descriptor(ends[0]);
        writing_ = Descriptor(ends[1]);
        fcntl(Writing(), F_SETFL, O_NONBLOCK);
        const std::string much(4096, '.');
        while (write(Writing(), much.data(), much.size()) > 0) {
        }
        fcntl(Writing(), F_SETFL, 0);
    }
    int Writing() const { return writing_.Number(); }
    void Empty() const {
        std::vector<char> all(std::size_t{1} << 20U);
        EXPECT_GT(read(reading_.Number(), all.data(), all.size()), 0);
    }
    std::string Read() const {
        std::array<char, 256> some{};
        const ssize_t got = read(reading_.Number(), some.data(), some.size());
        return {some.data(), got > 0 ? static_cast<std::size_t>(got) : 0};
    }

  private:
    Descriptor reading_;
    Descriptor writing_;
};

// These two would hang.
TEST(Console, WhatNobodyReadsIsDropped) {
    const FullPipe full;
    Console console(full.Writing(), full.Writing());
    console.Line("lost");
    console.Complain("lost, too");
    console.Line(std::string(100'000, 'x'));
    full.Empty();
    console.Complain("heard");
    EXPECT_EQ(full.Read(), "veldrin: heard\n");
}

TEST(NeverBlock, HoldsForWhoeverWritesHereAndForNobodyElse) {
    const FullPipe full;
    const Descriptor own(dup(full.Writing()));
    NeverBlock(own.Number());
    EXPECT_EQ(write(own.Number(), "x", 1), -1);
    EXPECT_EQ(errno, EAGAIN);
    // The other end of the copy is still that of whoever shares it, such as the shell.
    EXPECT_EQ(fcntl(full.Writing(), F_GETFL) & O_NONBLOCK, 0);
}

TEST(NeverBlock, AFileIsWrittenOnWhereItWas) {
    const ScratchFolder scratch;
    const Descriptor file(open(scratch.Path("file").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    EXPECT_EQ(write(file.Number(), "ab", 2), 2);
    NeverBlock(file.Number());
    EXPECT_EQ(write(file.Number(), "c", 1), 1);
    std::array<char, 8> all{};
    EXPECT_EQ(pread(file.Number(), all.data(), all.size(), 0), 3);
}

/// Of bytes that come all at once, or that many milliseconds one after the other.
std::string Keys(std::string_view bytes, platform::Millis apart = 0) {
    KeyDecoder decoder;
    std::string keys;
    platform::Millis now = 1000;
    for (const char byte : bytes) {
        if (const char key = decoder.Decode(byte, now)) {
            keys.push_back(key);
        }
        now += apart;
    }
    return keys;
}

TEST(KeyDecoder, ArrowAndFunctionKeysAreNoLetters) {
    EXPECT_EQ(Keys("zxcvbq"), "zxcvbq");
    EXPECT_EQ(Keys("\x1b[Bx\x1b[1;5Cv"), "xv");  // down arrow, Ctrl and right arrow
    EXPECT_EQ(Keys("\x1bOPb"), "b");             // F1
    EXPECT_EQ(Keys("\x1b[15~b"), "b");           // F5
    EXPECT_EQ(Keys("\x1bqz"), "z");              // Alt and q
    EXPECT_EQ(Keys("\x1b[[Bz"), "z");            // F2 of the console
}

TEST(KeyDecoder, ASequenceThatDoesNotEndTakesNoKeyThatComesLater) {
    constexpr platform::Millis kBetweenPresses = 150;
    for (const std::string_view begun : {"\x1b", "\x1b[", "\x1b[1;", "\x1bO", "\x1b[200~"}) {
        KeyDecoder decoder;
        for (const char byte : begun) {
            EXPECT_EQ(decoder.Decode(byte, 0), 0);
        }
        EXPECT_EQ(decoder.Decode('q', kBetweenPresses), 'q');
    }
    EXPECT_EQ(Keys("\x1bq", kBetweenPresses), "q");
    EXPECT_EQ(Keys("\x1b[\x1b[Bz"), "z");  // one begins inside another
}

// A slow line brings a sequence in pieces.
TEST(KeyDecoder, ASequenceMayTakeAMoment) {
    EXPECT_EQ(Keys("\x1b[1;5Cv", 20), "v");
}

TEST(KeyDecoder, WhatIsPastedIsNotTyped) {
    EXPECT_EQ(Keys("\x1b[200~quit \x1b[B now\x1b[201~b"), "b");
}

TEST(KeyDecoder, OtherBytesAreNoKeysOfOurs) {
    EXPECT_EQ(Keys(std::string_view("\0z", 2)), "z");
    EXPECT_EQ(Keys("\xC3z\xE2\x82"), "\xC3z\xE2\x82");  // cut short, as they are
}

}  // namespace
}  // namespace veldrin

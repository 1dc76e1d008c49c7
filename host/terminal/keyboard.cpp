#include "host/terminal/keyboard.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace veldrin {
namespace {

constexpr char kEscapeByte = 27;
constexpr std::string_view kPasteBegin = "200~";  // behind "ESC ["
constexpr std::string_view kPasteEnd = "\x1b[201~";

/// All that a terminal keeps of what was typed: a flood of keys is one flood, and not a file opened
/// for each bucket of it.
constexpr std::size_t kMostTyped = 4096;

}  // namespace

char KeyDecoder::Decode(char byte, platform::Millis now) {
    if (now - std::exchange(last_, now) > kLongestPause) {
        state_ = State::kPlain;
    }
    const bool isPlain = state_ == State::kPlain && byte != kEscapeByte;
    state_ = Next(byte);
    return isPlain ? byte : 0;
}

KeyDecoder::State KeyDecoder::Next(char byte) {
    if (state_ == State::kPasted) {
        // The latest bytes only: what is pasted may be long.
        sequence_ = (sequence_ + byte).substr(sequence_.size() < kPasteEnd.size() ? 0 : 1);
        return sequence_ == kPasteEnd ? State::kPlain : State::kPasted;
    }
    if (byte == kEscapeByte) {
        return State::kEscape;
    }
    switch (state_) {
        case State::kEscape:
            // "ESC [ ... letter", "ESC O letter", else Alt and a character.
            sequence_.clear();
            return byte == '[' ? State::kSequence : byte == 'O' ? State::kOneMore : State::kPlain;
        case State::kSequence:
            if (byte == '[' && sequence_.empty()) {
                return State::kOneMore;  // the console's function keys: "ESC [ [ letter"
            }
            sequence_.append(sequence_.size() < kPasteBegin.size() ? 1 : 0, byte);
            if (byte < '@' || byte > '~') {
                return State::kSequence;
            }
            return std::exchange(sequence_, {}) == kPasteBegin ? State::kPasted : State::kPlain;
        default:
            return State::kPlain;
    }
}

Keyboard::Keyboard(int terminal, platform::Driver& driver, std::function<void(char)> onKey)
    : terminal_(terminal),
      driver_(driver),
      onKey_(std::move(onKey)),
      isTerminal_(isatty(terminal) != 0) {
    Resume();
}

Keyboard::~Keyboard() {
    Release();
}

bool Keyboard::HasTerminal() const {
    return isTerminal_ && tcgetpgrp(terminal_) == getpgrp();
}

void Keyboard::Resume() {
    if (HasTerminal() == IsListening()) {
        return;
    }
    driver_.Watch(terminal_, {});
    if (IsListening()) {
        // In the background: touching the terminal's mode now would stop the whole program.
        former_.reset();
        return;
    }
    termios mode{};
    if (tcgetattr(terminal_, &mode) != 0) {
        return;
    }
    former_ = mode;
    // Signals by Ctrl+C and Ctrl+Z stay; Ctrl+S must not hold the program back.
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_iflag &= ~static_cast<tcflag_t>(IXON);
    mode.c_cc[VMIN] = 0;
    mode.c_cc[VTIME] = 0;
    tcsetattr(terminal_, TCSANOW, &mode);
    driver_.Watch(terminal_, [this] { Read(); });
}

void Keyboard::Release() {
    driver_.Watch(terminal_, {});
    if (former_ && HasTerminal()) {
        tcsetattr(terminal_, TCSANOW, &*former_);
    }
    former_.reset();
}

void Keyboard::Read() {
    std::array<char, kMostTyped> buffer{};
    const ssize_t got = read(terminal_, buffer.data(), buffer.size());
    if (got <= 0) {
        if (got == 0 || errno != EINTR) {
            driver_.Watch(terminal_, {});  // the terminal is gone
        }
        return;
    }
    const platform::Millis now = driver_.Now();
    for (ssize_t i = 0; i < got; ++i) {
        if (const char key = decoder_.Decode(buffer[static_cast<std::size_t>(i)], now)) {
            onKey_(key);
        }
    }
}

}  // namespace veldrin

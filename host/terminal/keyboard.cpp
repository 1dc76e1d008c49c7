#include "host/terminal/keyboard.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace veldrin {

char KeyDecoder::Decode(char byte) {
    constexpr char kEscapeByte = 27;
    switch (state_) {
        case State::kPlain:
            if (byte == kEscapeByte) {
                state_ = State::kEscape;
                return 0;
            }
            return byte;
        case State::kEscape:
            // "ESC [ ... letter", "ESC O letter", else Alt and a character.
            state_ = byte == '[' ? State::kSequence : byte == 'O' ? State::kOneMore : State::kPlain;
            return 0;
        case State::kSequence:
            if (byte >= '@' && byte <= '~') {
                state_ = State::kPlain;
            }
            return 0;
        case State::kOneMore:
            state_ = State::kPlain;
            return 0;
    }
    return 0;
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
    std::array<char, 64> buffer{};
    const ssize_t got = read(terminal_, buffer.data(), buffer.size());
    if (got <= 0) {
        if (got == 0 || errno != EINTR) {
            driver_.Watch(terminal_, {});  // the terminal is gone
        }
        return;
    }
    for (ssize_t i = 0; i < got; ++i) {
        if (const char key = decoder_.Decode(buffer[static_cast<std::size_t>(i)])) {
            onKey_(key);
        }
    }
}

}  // namespace veldrin

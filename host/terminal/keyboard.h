// Single keys from the terminal on standard input, without waiting for Enter. The terminal's mode
// is changed only while the program has the terminal, and is put back when it stops or ends.
#pragma once

#include <termios.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/driver.h"

namespace veldrin {

/// Picks plain characters out of what a terminal sends. An arrow or function key sends a sequence
/// whose last character looks like a letter; those are passed over, and so is what is pasted where
/// the terminal marks it.
class KeyDecoder {
  public:
    /// A terminal sends a sequence in one go: one that has not ended so long after its last byte
    /// was a key of its own, Escape, or a broken one.
    static constexpr platform::Millis kLongestPause = 100;

    /// The character, or 0 if this byte is none or part of a sequence. `now` only grows.
    char Decode(char byte, platform::Millis now);

  private:
    enum class State { kPlain, kEscape, kSequence, kOneMore, kPasted };
    State Next(char byte);

    State state_ = State::kPlain;
    std::string sequence_;  ///< behind "ESC [", or the end of what is pasted
    platform::Millis last_ = 0;
};

class Keyboard {
  public:
    /// Listens at once if `terminal` (not owned) is a terminal. The driver must outlive this.
    Keyboard(int terminal, platform::Driver& driver, std::function<void(char)> onKey);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /// Whether standard input is a terminal at all.
    bool IsTerminal() const { return isTerminal_; }

    /// Whether keys come here now: the shell has not taken the terminal back.
    bool IsListening() const { return former_.has_value(); }

    /// Listens if the program has the terminal, else leaves it alone. To be called after SIGCONT,
    /// and now and then: a shell may move the program to the front or to the back without a word.
    void Resume();
    /// Puts the terminal's mode back; before the program stops.
    void Release();

  private:
    void Read();
    bool HasTerminal() const;

    int terminal_;
    platform::Driver& driver_;
    std::function<void(char)> onKey_;
    bool isTerminal_;
    KeyDecoder decoder_;
    std::optional<termios> former_;  ///< set while the mode is changed
};

}  // namespace veldrin

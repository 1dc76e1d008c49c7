#include "host/terminal/console.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/base/text.h"

namespace veldrin {
namespace {

/// Back to the left edge, and erase to the end of the line.
constexpr std::string_view kEraseLine = "\r\x1b[K";

bool SteersTerminal(char16_t unit) {
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == 0x061C ||
           (unit >= 0x200E && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202E) ||
           (unit >= 0x2066 && unit <= 0x2069) || unit == 0xFEFF;
}

/// Writes as much as goes out; a terminal that has gone away is no error.
void Write(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            return;
        }
    }
}

std::size_t Columns(int terminal) {
    winsize size{};
    const bool known = ioctl(terminal, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return known ? size.ws_col : 80;
}

}  // namespace

std::string Printable(std::string_view bytes) {
    std::u16string text = platform::Widen(bytes);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (platform::InsidePair(text, i + 1)) {
            ++i;
        } else if (platform::IsSurrogate(text[i])) {
            text[i] = 0xFFFD;
        } else if (SteersTerminal(text[i])) {
            text[i] = ' ';
        }
    }
    return platform::Narrow(text);
}

Console::Console(int output, int errors)
    : output_(output), errors_(errors), isTerminal_(isatty(output) != 0) {}

void Console::Line(std::string_view text) {
    ClearProgress();
    Write(output_, std::string(text) + "\n");
}

void Console::Complain(std::string_view text) {
    ClearProgress();
    Write(errors_, "veldrin: " + std::string(text) + "\n");
}

void Console::Progress(std::string_view text) {
    if (!isTerminal_ || text == progress_) {
        return;
    }
    // One column stays free: a full line would wrap on some terminals.
    progress_ = text;
    Write(output_, std::string(kEraseLine).append(text.substr(0, Columns(output_) - 1)));
}

void Console::ClearProgress() {
    if (!progress_.empty()) {
        Write(output_, kEraseLine);
        progress_.clear();
    }
}

}  // namespace veldrin

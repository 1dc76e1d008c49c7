#include "host/terminal/console.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>

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

/// Writes as much as goes out at once, and drops the rest: the music does not wait for a reader. A
/// terminal that has gone away is no error.
void Write(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        // So much a pipe that is ready takes as a whole; more, and the writing could block.
        const std::size_t size = std::min<std::size_t>(bytes.size(), PIPE_BUF);
        pollfd entry{descriptor, POLLOUT, 0};
        const int ready = poll(&entry, 1, 0);
        const ssize_t written = ready > 0 ? write(descriptor, bytes.data(), size) : ready;
        if (written > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
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

void NeverBlock(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || (!S_ISFIFO(status.st_mode) && isatty(descriptor) == 0)) {
        return;  // nobody reads from what else there is, or it cannot be opened anew
    }
    const std::string name = "/proc/self/fd/" + std::to_string(descriptor);
    const int own = open(name.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (own >= 0) {
        dup2(own, descriptor);
        close(own);
    }
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

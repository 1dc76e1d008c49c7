#include "host/http/connection.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "platform/base/text.h"

namespace veldrin {
namespace {

constexpr std::size_t kLongestHead = 64 * 1024;
/// The library reads it with a regular expression, which takes stack by the character.
constexpr std::size_t kLongestFirstLine = 8 * 1024;
constexpr std::size_t kPiece = 16 * 1024;
constexpr std::string_view kBlankLine = "\r\n\r\n";

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    const std::size_t last = text.find_last_not_of(" \t");
    return first == std::string_view::npos ? "" : text.substr(first, last - first + 1);
}

}  // namespace

bool WaitFor(int descriptor, short events, const WaitEnd& end) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end.when - HttpClock::now());
        if (left.count() <= 0) {
            return false;
        }
        std::array<pollfd, 2> watched{{{descriptor, events, 0}, {end.cancel, POLLIN, 0}}};
        const int most = static_cast<int>(std::min<long long>(left.count(), 3'600'000));
        const int ready = poll(watched.data(), watched.size(), most);
        if (watched[1].revents != 0 || (ready < 0 && errno != EINTR)) {
            return false;
        }
        if (ready > 0) {
            return true;
        }
    }
}

Connection::Connection(Descriptor socket, WaitEnd end) : socket_(std::move(socket)), end_(end) {}

bool Connection::ReadHead() {
    std::size_t seen = 0;
    std::size_t end = 0;
    while ((end = buffer_.find(kBlankLine, seen)) == std::string::npos) {
        seen = buffer_.size() - std::min(buffer_.size(), kBlankLine.size() - 1);
        if (buffer_.size() > kLongestHead) {
            head_ = buffer_.size();
            return false;
        }
        if (!ReceiveInto(buffer_, kPiece)) {
            return false;
        }
    }
    head_ = end + kBlankLine.size();
    return head_ <= kLongestHead && buffer_.find("\r\n") < kLongestFirstLine;
}

void Connection::ReplaceInHead(std::size_t at, std::size_t count, std::string_view text) {
    buffer_.replace(at, count, text);
    head_ = head_ - count + text.size();
}

std::optional<std::string> Connection::ReadBody(std::size_t length) {
    std::string body = buffer_.substr(head_, length);
    buffer_.resize(head_);
    while (body.size() < length) {
        if (!ReceiveInto(body, std::min(kPiece, length - body.size()))) {
            return std::nullopt;
        }
    }
    return body;
}

bool Connection::ReceiveInto(std::string& bytes, std::size_t most) {
    const std::size_t size = bytes.size();
    bytes.resize(size + most);
    const ssize_t got = Receive(bytes.data() + size, most);
    bytes.resize(size + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    return got > 0;
}

void Connection::DropHead() {
    buffer_.erase(0, std::exchange(head_, 0));
}

void Connection::Finish() {
    constexpr int kPieces = 64;
    shutdown(socket_.Number(), SHUT_WR);
    EndAt(HttpClock::now() + std::chrono::milliseconds(500));
    std::array<char, kPiece> ignored{};
    for (int i = 0; i < kPieces && Connection::Receive(ignored.data(), ignored.size()) > 0; ++i) {
    }
}

ssize_t Connection::read(char* to, std::size_t size) {
    if (taken_ == buffer_.size()) {
        taken_ = 0;
        buffer_.resize(std::min(kPiece, allowed_));
        const ssize_t got = buffer_.empty() ? -1 : Receive(buffer_.data(), buffer_.size());
        buffer_.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        allowed_ -= buffer_.size();
        if (got <= 0) {
            return got;
        }
    }
    const std::size_t taken = buffer_.copy(to, size, taken_);
    taken_ += taken;
    return static_cast<ssize_t>(taken);
}

ssize_t Connection::write(const char* from, std::size_t size) {
    std::size_t sent = 0;
    while (sent < size) {
        const ssize_t more = Send(from + sent, size - sent);
        if (more <= 0) {
            return -1;
        }
        sent += static_cast<std::size_t>(more);
    }
    return static_cast<ssize_t>(size);
}

// The clock is asked first each time: a side that sends without a pause is not to be heard for
// ever.
ssize_t Connection::Receive(char* to, std::size_t size) {
    while (Wait(POLLIN)) {
        const ssize_t got = recv(socket_.Number(), to, size, MSG_DONTWAIT);
        if (got >= 0 || (errno != EAGAIN && errno != EINTR)) {
            return got;
        }
    }
    return -1;
}

ssize_t Connection::Send(const char* from, std::size_t size) {
    while (Wait(POLLOUT)) {
        const ssize_t sent = send(socket_.Number(), from, size, MSG_DONTWAIT | MSG_NOSIGNAL);
        if (sent >= 0 || (errno != EAGAIN && errno != EINTR)) {
            return sent;
        }
    }
    return -1;
}

HttpHeaders HeadersOf(std::string_view head) {
    HttpHeaders headers;
    head.remove_prefix(std::min(head.find("\r\n"), head.size()));
    while (head.starts_with("\r\n")) {
        head.remove_prefix(2);
        const std::string_view line = head.substr(0, head.find("\r\n"));
        head.remove_prefix(line.size());
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos) {
            continue;
        }
        std::string name(line.substr(0, colon));
        std::ranges::transform(name, name.begin(), platform::LowerAscii<char>);
        std::string& value = headers[std::move(name)];
        value += value.empty() ? "" : ", ";
        value += Trimmed(line.substr(colon + 1));
    }
    return headers;
}

}  // namespace veldrin

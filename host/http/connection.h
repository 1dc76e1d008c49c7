// One side of a connection, as the library reads and writes it: nothing on it takes longer than a
// moment that is set, or more bytes than are allowed, whatever the other side does.
#pragma once

#include <httplib.h>

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "host/descriptor.h"
#include "host/http/http.h"

namespace veldrin {

using HttpClock = std::chrono::steady_clock;

/// What ends all waiting: when it is over, or when the descriptor `cancel` can be read.
struct WaitEnd {
    HttpClock::time_point when;
    int cancel = -1;
};

/// Waits for `events` (as poll does) on a descriptor; false when the wait has ended before.
bool WaitFor(int descriptor, short events, const WaitEnd& end);

class Connection : public httplib::Stream {
  public:
    Connection(Descriptor socket, WaitEnd end);

    void EndAt(HttpClock::time_point when) { end_.when = when; }

    /// Reads what stands in front of a body, blank line included, into memory, from where it is
    /// then read again. False when it does not come, or is too much: the library would take a line
    /// of any length.
    bool ReadHead();
    /// Also what there was of one that is too much.
    std::string_view Head() const { return std::string_view(buffer_).substr(0, head_); }
    void DropHead();
    void ReplaceInHead(std::size_t at, std::size_t count, std::string_view text);
    /// Takes what comes after the head.
    std::optional<std::string> ReadBody(std::size_t length);

    /// So many bytes more may be read after the head.
    void AllowBody(std::size_t bytes) { allowed_ = bytes; }
    /// Says that nothing more comes, and throws away what still does, for a moment: closed over
    /// unread bytes, a connection is cut before the other side has read its answer.
    void Finish();

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* to, std::size_t size) override;
    ssize_t write(const char* from, std::size_t size) override;
    void get_remote_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    void get_local_ip_and_port(std::string& /*ip*/, int& /*port*/) const override {}
    socket_t socket() const override { return socket_.Number(); }

  protected:
    // As recv and send, waiting included. 0: the other side has closed; negative: it failed.
    virtual ssize_t Receive(char* to, std::size_t size);
    virtual ssize_t Send(const char* from, std::size_t size);

    bool Wait(short events) const { return WaitFor(socket_.Number(), events, end_); }
    bool HasEnded() const { return HttpClock::now() >= end_.when; }

  private:
    bool ReceiveInto(std::string& bytes, std::size_t most);

    Descriptor socket_;
    WaitEnd end_;
    std::string buffer_;  ///< received and not yet read, from `taken_` on
    std::size_t taken_ = 0;
    std::size_t head_ = 0;  ///< length of the head at the front of the buffer
    std::size_t allowed_ = 0;
};

/// The header lines of a head; of several with one name the values are joined by commas.
HttpHeaders HeadersOf(std::string_view head);

}  // namespace veldrin

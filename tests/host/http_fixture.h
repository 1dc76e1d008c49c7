// What the tests of the network share: sockets on this machine, and a server that says exactly what
// a test tells it to.
#pragma once

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "host/descriptor.h"
#include "host/http/http.h"

extern "C" veldrin::Http* VeldrinMakeHttp();

namespace veldrin {

enum class Here { kFour, kSix, kEveryNumber };

/// Listens on a port that the system chooses: of 127.0.0.1, of ::1, or of all numbers. None where
/// there is no such number.
inline Descriptor ListenHere(Here here = Here::kFour) {
    const bool six = here == Here::kSix;
    Descriptor listening(socket(six ? AF_INET6 : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in four{};
    four.sin_family = AF_INET;
    four.sin_addr.s_addr = htonl(here == Here::kFour ? INADDR_LOOPBACK : INADDR_ANY);
    sockaddr_in6 other{};
    other.sin6_family = AF_INET6;
    other.sin6_addr = in6addr_loopback;
    const auto* address =
        six ? reinterpret_cast<const sockaddr*>(&other) : reinterpret_cast<const sockaddr*>(&four);
    const bool bound = bind(listening.Number(), address, six ? sizeof(other) : sizeof(four)) == 0 &&
                       listen(listening.Number(), SOMAXCONN) == 0;
    return bound ? std::move(listening) : Descriptor();
}

inline int PortOf(const Descriptor& socket) {
    sockaddr_in6 address{};
    socklen_t size = sizeof(address);
    getsockname(socket.Number(), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin6_port);  // at the same place in either kind
}

/// Somebody who talks to a server by hand.
class RawClient {
  public:
    explicit RawClient(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        connected_ = connect(socket_.Number(), reinterpret_cast<const sockaddr*>(&address),
                             sizeof(address)) == 0;
    }
    explicit RawClient(Descriptor accepted) : socket_(std::move(accepted)) {}

    bool IsConnected() const { return connected_; }

    /// False once the other side does not take it any more.
    bool Send(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t sent = send(socket_.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent <= 0) {
                return false;
            }
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
        return true;
    }

    /// All that comes, to the end, or to `until`, or for a few seconds.
    std::string Receive(std::string_view until = {}) const {
        std::string bytes;
        std::string piece(65536, '\0');
        pollfd waiting{socket_.Number(), POLLIN, 0};
        while ((until.empty() || bytes.find(until) == std::string::npos) &&
               poll(&waiting, 1, 4000) > 0) {
            const ssize_t got = recv(socket_.Number(), piece.data(), piece.size(), 0);
            if (got <= 0) {
                break;
            }
            bytes.append(piece, 0, static_cast<std::size_t>(got));
        }
        return bytes;
    }

  private:
    Descriptor socket_;
    bool connected_ = true;
};

/// Reads a request from each connection, one after the other, and hands both to a script.
class ScriptedServer {
  public:
    using Script = std::function<void(RawClient& client, const std::string& request)>;

    explicit ScriptedServer(Script script, Here here = Here::kFour)
        : script_(std::move(script)), listening_(ListenHere(here)), port_(PortOf(listening_)) {
        if (listening_) {
            thread_ = std::thread([this] { Run(); });
        }
    }
    /// Always the same answer.
    explicit ScriptedServer(std::string answer)
        : ScriptedServer([answer](RawClient& client, const std::string& /*request*/) {
              client.Send(answer);
          }) {}
    ~ScriptedServer() {
        ending_ = true;
        if (thread_.joinable()) {
            shutdown(listening_.Number(), SHUT_RDWR);
            thread_.join();
        }
    }
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    bool IsListening() const { return static_cast<bool>(listening_); }
    std::string Base(const std::string& host = "127.0.0.1") const {
        return "http://" + host + ":" + std::to_string(port_);
    }
    std::vector<std::string> Requests() {
        const std::lock_guard lock(mutex_);
        return requests_;
    }

  private:
    void Run() {
        while (!ending_) {
            Descriptor accepted(accept4(listening_.Number(), nullptr, nullptr, SOCK_CLOEXEC));
            if (!accepted) {
                continue;
            }
            RawClient client(std::move(accepted));
            const std::string request = client.Receive("\r\n\r\n");
            {
                const std::lock_guard lock(mutex_);
                requests_.push_back(request);
            }
            script_(client, request);
        }
    }

    const Script script_;
    const Descriptor listening_;
    const int port_;
    std::atomic<bool> ending_ = false;
    std::mutex mutex_;
    std::vector<std::string> requests_;
    std::thread thread_;
};

/// An answer as it stands on the wire.
inline std::string Page(const std::string& body, const std::string& headers = "",
                        const std::string& status = "200 OK") {
    return "HTTP/1.1 " + status + "\r\n" + headers +
           "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

class Network : public testing::Test {
  protected:
    using Clock = std::chrono::steady_clock;

    /// The body of what is got, "404 " and the body, or "(none)".
    std::string Got(const std::string& address, const HttpHeaders& headers = {},
                    HttpLimits limits = {std::chrono::seconds(5), 100'000}) {
        const auto answer = http_->Get(address, headers, limits);
        if (!answer) {
            return "(none)";
        }
        return (answer->status == 200 ? "" : std::to_string(answer->status) + " ") + answer->body;
    }

    std::unique_ptr<Http> http_{VeldrinMakeHttp()};
};

}  // namespace veldrin

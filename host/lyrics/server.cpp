#include "host/lyrics/server.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/random.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

namespace veldrin {
namespace {

/// Listens on loopback, where the system likes; no descriptor if that cannot be.
Descriptor ListenOnLoopback() {
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool good =
        socket &&
        bind(socket.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        listen(socket.Number(), SOMAXCONN) == 0;
    return good ? std::move(socket) : Descriptor();
}

int PortOf(const Descriptor& socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(socket.Number(), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

/// 128 bits that nobody can guess, as hexadecimal digits; empty if there are none to be had.
std::string MakeToken() {
    std::array<std::uint8_t, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
        return {};
    }
    std::string token;
    for (const std::uint8_t byte : bytes) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned>(byte));
        token += digits.data();
    }
    return token;
}

std::optional<OnlineWords> OnlineFrom(const LyricsSettings& settings,
                                      const LyricsServer::Load& load) {
    if (settings.online.empty()) {
        return std::nullopt;
    }
    const auto get = [load](const std::string& address, const HttpHeaders& headers,
                            const HttpLimits& limits) {
        Http* http = load();
        return http != nullptr ? http->Get(address, headers, limits) : std::nullopt;
    };
    return OnlineWords(settings.online, settings.cacheFolder, get,
                       [] { return std::chrono::system_clock::now(); });
}

}  // namespace

LyricsServer::LyricsServer(const LyricsSettings& settings, Load load, Notice notice)
    : listening_(ListenOnLoopback()), wake_(eventfd(0, EFD_CLOEXEC)) {
    const std::string token = MakeToken();
    if (!listening_ || !wake_ || token.empty()) {
        notice("there will be no lyrics: no place to listen");
        return;
    }
    const int port = PortOf(listening_);
    service_ = std::make_shared<LyricsService>(LyricsPlace{token, port, settings.folder},
                                               OnlineFrom(settings, load));
    address_ = "http://127.0.0.1:" + std::to_string(port) + "/" + token;
    thread_ = std::thread(
        [this, load = std::move(load), notice = std::move(notice)] { WaitForFirst(load, notice); });
}

LyricsServer::~LyricsServer() {
    if (thread_.joinable()) {
        eventfd_write(wake_.Number(), 1);
        thread_.join();
    }
}

void LyricsServer::ItemOpened(const std::string& path) {
    if (service_) {
        service_->ItemOpened(path);
    }
}

void LyricsServer::WaitForFirst(const Load& load, const Notice& notice) {
    std::array<pollfd, 2> waited{{{listening_.Number(), POLLIN, 0}, {wake_.Number(), POLLIN, 0}}};
    while (poll(waited.data(), waited.size(), -1) < 0 && errno == EINTR) {
    }
    if (waited[1].revents != 0) {
        return;
    }
    if (Http* http = load()) {
        // The service may be at an answer when the player is already gone.
        http->Serve(listening_.Release(), [service = service_](const HttpRequest& request) {
            return service->Answer(request);
        });
    } else {
        listening_.Close();
        notice("there are no lyrics: the network module cannot be loaded");
    }
}

}  // namespace veldrin

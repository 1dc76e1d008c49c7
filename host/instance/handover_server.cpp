#include "host/instance/handover_server.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <tuple>
#include <utility>

#include "host/instance/instance.h"

namespace veldrin {
namespace {

constexpr std::size_t kReadSize = 65536;

/// Most bytes taken from one sender before others, and the music, get their turn.
constexpr std::size_t kReadsATurn = 16;

bool AsksToQuit(const std::vector<Request>& requests) {
    return std::any_of(requests.begin(), requests.end(),
                       [](const Request& request) { return request.kind == Request::Kind::kQuit; });
}

}  // namespace

void Reply::Say(std::string_view text) const {
    send(socket_->Number(), text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

HandoverServer::HandoverServer(platform::WindowSystem& windows, Descriptor listening,
                               Deliver deliver, Limits limits)
    : windows_(windows),
      listening_(std::move(listening)),
      deliver_(std::move(deliver)),
      limits_(limits) {
    windows_.GetDriver().Watch(listening_.Number(), [this] { Accept(); });
}

HandoverServer::~HandoverServer() {
    StopListening();
}

std::vector<std::shared_ptr<const Descriptor>> HandoverServer::StopListening() {
    while (!connections_.empty()) {
        Drop(connections_.begin()->first);
    }
    if (listening_) {
        windows_.GetDriver().Watch(listening_.Number(), {});
        listening_.Close();
    }
    return std::exchange(waitingForEnd_, {});
}

void HandoverServer::Accept() {
    Descriptor socket(accept4(listening_.Number(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!socket || !IsSameUser(socket)) {
        return;
    }
    if (connections_.size() >= limits_.connections) {
        DropMostSilent();
    }
    const int number = socket.Number();
    const platform::Millis now = windows_.Now();
    connections_[number] = Connection{std::move(socket), {}, now, now, ++lastSerial_};
    windows_.GetDriver().Watch(number, [this, number] { Read(number); });
    ScheduleExpiry(number, lastSerial_, limits_.silence);
}

void HandoverServer::Read(int number) {
    const auto found = connections_.find(number);
    if (found == connections_.end()) {
        return;
    }
    Connection& connection = found->second;
    std::vector<char> buffer(kReadSize);
    for (std::size_t i = 0; i < kReadsATurn; ++i) {
        const ssize_t got = recv(number, buffer.data(), buffer.size(), 0);
        if (got > 0) {
            connection.lastHeard = windows_.Now();
            if (!connection.reader.Feed({buffer.data(), static_cast<std::size_t>(got)})) {
                Drop(number);
                return;
            }
        } else if (got < 0 && (errno == EAGAIN || errno == EINTR)) {
            return;
        } else if (got == 0 && connection.reader.IsComplete()) {
            Complete(number);
            return;
        } else {
            Drop(number);
            return;
        }
    }
}

void HandoverServer::Complete(int number) {
    const std::vector<Request> requests = connections_.at(number).reader.Requests();
    windows_.GetDriver().Watch(number, {});
    const auto socket =
        std::make_shared<const Descriptor>(std::move(connections_.at(number).socket));
    connections_.erase(number);
    const ssize_t sent = send(number, kAnswer.data(), kAnswer.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (sent != static_cast<ssize_t>(kAnswer.size())) {
        return;  // the sender has given up and said so to its user
    }
    if (AsksToQuit(requests)) {
        waitingForEnd_.push_back(socket);
    }
    // Not from within the driver's wait: the component may wait in turn.
    windows_.Schedule(0, [this, requests, reply = Reply(socket)] { deliver_(requests, reply); });
}

void HandoverServer::Drop(int number) {
    windows_.GetDriver().Watch(number, {});
    connections_.erase(number);
}

// An honest sender has said all of it at once, so he is not among those who say nothing.
void HandoverServer::DropMostSilent() {
    const auto found = std::min_element(
        connections_.begin(), connections_.end(), [](const auto& one, const auto& other) {
            return std::tie(one.second.lastHeard, one.second.serial) <
                   std::tie(other.second.lastHeard, other.second.serial);
        });
    Drop(found->first);
}

void HandoverServer::ScheduleExpiry(int number, long serial, platform::Millis delay) {
    windows_.Schedule(delay, [this, number, serial] { Expire(number, serial); });
}

void HandoverServer::Expire(int number, long serial) {
    const auto found = connections_.find(number);
    if (found == connections_.end() || found->second.serial != serial) {
        return;
    }
    // The pump looks at descriptors before it looks at the clock, so nobody is dropped for what
    // this side was too busy to read.
    const platform::Millis end =
        std::min(found->second.lastHeard + limits_.silence, found->second.begun + limits_.whole);
    const platform::Millis left = end - windows_.Now();
    if (left <= 0) {
        Drop(number);
    } else {
        ScheduleExpiry(number, serial, left);
    }
}

}  // namespace veldrin

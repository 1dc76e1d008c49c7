// What the tests of the running instance share: one with a main loop, and a sender that speaks to
// its socket byte by byte.
#pragma once

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/instance/handover_server.h"
#include "host/instance/instance.h"
#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"
#include "tests/host/scratch_folder.h"

namespace veldrin {

using Requests = std::vector<Request>;

inline constexpr platform::Millis kTestLimit = 10'000;

/// An instance with a main loop, as the program has one.
class Running {
  public:
    Running(InstanceLock lock, const MeetingPlace& place, HandoverServer::Limits limits = {})
        : lock_(std::move(lock)),
          server_(
              windows_, lock_.Listen(place),
              [this](const Requests& requests, const Reply& reply) {
                  if (requests.front().kind == Request::Kind::kStatus) {
                      replies.push_back(reply);
                  }
                  heard.insert(heard.end(), requests.begin(), requests.end());
              },
              limits) {}

    /// Turns the main loop until `done` holds; False if it never does.
    template <typename Done>
    bool TurnUntil(Done done) {
        const platform::Millis end = windows_.Now() + kTestLimit;
        while (windows_.Now() < end) {
            if (done()) {
                return true;
            }
            windows_.Schedule(5, [] {});  // wakes the loop, so that `done` is asked again
            windows_.WaitMessage();
        }
        return false;
    }

    platform::WindowSystem& Windows() { return windows_; }
    HandoverServer& Server() { return server_; }

    Requests heard;
    /// While they are here, no answer is over.
    std::vector<Reply> replies;

  private:
    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kReal};
    platform::WindowSystem windows_{driver_};
    InstanceLock lock_;
    HandoverServer server_;
};

/// A sender that follows no rules.
class RawSender {
  public:
    explicit RawSender(const MeetingPlace& place)
        : socket_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, place.socketPath.c_str(), sizeof(address.sun_path) - 1);
        connected_ =
            connect(socket_.Number(), reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0;
    }
    bool IsConnected() const { return connected_; }
    /// Answers how many bytes went out: not all of them if the socket is full.
    std::size_t Send(std::string_view bytes) {
        const ssize_t sent = send(socket_.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        return sent > 0 ? static_cast<std::size_t>(sent) : 0;
    }
    void EndOfMessage() { shutdown(socket_.Number(), SHUT_WR); }
    /// What has come so far; "(closed)" once the other side has hung up without a word.
    std::string Answer() {
        char buffer[16];
        const ssize_t got = recv(socket_.Number(), buffer, sizeof(buffer), MSG_DONTWAIT);
        if (got == 0 || (got < 0 && errno == ECONNRESET)) {
            return "(closed)";
        }
        return got < 0 ? "" : std::string(buffer, static_cast<std::size_t>(got));
    }

  private:
    Descriptor socket_;
    bool connected_ = false;
};

/// A place for a lock and a socket, where nobody runs yet.
class Instance : public testing::Test {
  protected:
    InstanceLock Lock() {
        auto lock = InstanceLock::TryTake(place_);
        EXPECT_TRUE(lock.has_value());
        return std::move(lock.value());
    }

    /// Sends bytes as a whole message and answers what came back.
    std::string AnswerTo(Running& running, std::string_view bytes) {
        RawSender sender(place_);
        EXPECT_TRUE(sender.IsConnected());
        sender.Send(bytes);
        sender.EndOfMessage();
        std::string answer;
        EXPECT_TRUE(running.TurnUntil([&] { return !(answer = sender.Answer()).empty(); }));
        return answer;
    }

    ScratchFolder scratch_;
    MeetingPlace place_ = MeetingPlace::In(scratch_.Path(), "veldrin-test");
};

}  // namespace veldrin

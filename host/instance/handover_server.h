// The running instance's ear: takes what later starts send over the local socket, from the main
// loop and without ever blocking it. Whoever is not this user, says something that is no message,
// too much, or nothing for too long is dropped without an answer.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "host/descriptor.h"
#include "host/instance/handover_message.h"
#include "platform/windows/window_system.h"

namespace veldrin {

/// What goes back to a sender besides "ok". The answer is over when the last copy has gone.
class Reply {
  public:
    explicit Reply(std::shared_ptr<const Descriptor> socket) : socket_(std::move(socket)) {}
    /// What the sender does not take at once is lost.
    void Say(std::string_view text) const;

  private:
    std::shared_ptr<const Descriptor> socket_;
};

class HandoverServer {
  public:
    /// What a sender may cost.
    struct Limits {
        platform::Millis silence = 1000;  ///< without a byte
        platform::Millis whole = 5000;    ///< from the connection to the end of the message
        std::size_t connections = 16;     ///< at a time; for one more the most silent one goes
    };

    /// One whole message of a sender who has had his "ok".
    using Deliver = std::function<void(const std::vector<Request>&, const Reply&)>;

    /// `deliver` runs from the event pump. The window system must outlive the server and is not
    /// pumped any more once the server is gone.
    HandoverServer(platform::WindowSystem& windows, Descriptor listening, Deliver deliver,
                   Limits limits);
    ~HandoverServer();
    HandoverServer(const HandoverServer&) = delete;
    HandoverServer& operator=(const HandoverServer&) = delete;

    /// Nobody is heard any more. Answers the connections of those who asked to quit: once they are
    /// closed, the senders know that this instance has ended.
    std::vector<std::shared_ptr<const Descriptor>> StopListening();

  private:
    struct Connection {
        Descriptor socket;
        MessageReader reader;
        platform::Millis begun = 0;
        platform::Millis lastHeard = 0;
        long serial = 0;  ///< a descriptor's number is used again, this is not
    };

    void Accept();
    void Read(int number);
    void Complete(int number);
    void Drop(int number);
    void DropMostSilent();
    void ScheduleExpiry(int number, long serial, platform::Millis delay);
    void Expire(int number, long serial);

    platform::WindowSystem& windows_;
    Descriptor listening_;
    Deliver deliver_;
    Limits limits_;
    std::map<int, Connection> connections_;  ///< by descriptor
    std::vector<std::shared_ptr<const Descriptor>> waitingForEnd_;
    long lastSerial_ = 0;
};

}  // namespace veldrin

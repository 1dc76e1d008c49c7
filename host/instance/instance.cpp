#include "host/instance/instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <thread>

#include "host/paths.h"

namespace veldrin {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// How often a start looks again while the running instance is not ready to listen.
constexpr milliseconds kRetryPeriod(10);

/// Starts that may wait for their turn.
constexpr int kBacklog = 128;

Descriptor NewSocket() {
    return Descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

/// Calls `use` with the address of a path; it must fit (RuntimeFolder sees to it).
template <typename Use>
bool WithAddress(const std::string& path, Use use) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path)) {
        return false;
    }
    std::memcpy(address.sun_path, path.data(), path.size());
    return use(reinterpret_cast<const sockaddr*>(&address), socklen_t{sizeof(address)}) == 0;
}

/// False when the time is up before the descriptor is ready.
bool WaitFor(const Descriptor& descriptor, short events, Clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
        pollfd entry{descriptor.Number(), events, 0};
        const int ready =
            poll(&entry, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
        if (ready > 0) {
            return true;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
}

bool SendAll(const Descriptor& connection, std::string_view bytes, Clock::time_point deadline) {
    while (!bytes.empty()) {
        const ssize_t sent =
            send(connection.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno == EAGAIN) {
            if (!WaitFor(connection, POLLOUT, deadline)) {
                return false;
            }
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool ReceiveAnswer(const Descriptor& connection, Clock::time_point deadline) {
    std::string answer;
    std::array<char, kAnswer.size()> buffer{};
    while (answer.size() < kAnswer.size()) {
        if (!WaitFor(connection, POLLIN, deadline)) {
            return false;
        }
        // No more than that: something else may follow.
        const ssize_t got =
            recv(connection.Number(), buffer.data(), kAnswer.size() - answer.size(), 0);
        if (got > 0) {
            answer.append(buffer.data(), static_cast<std::size_t>(got));
        } else if (got == 0 || (errno != EAGAIN && errno != EINTR)) {
            return false;
        }
    }
    return answer == kAnswer;
}

/// The lock's file, not yet locked; made if it is missing. Nothing if something else is there.
Descriptor OpenLock(const MeetingPlace& place) {
    constexpr int kFlags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    Descriptor file(open(place.lockPath.c_str(), kFlags, 0600));
    struct stat status {};
    const bool isOrdinary = file && fstat(file.Number(), &status) == 0 && S_ISREG(status.st_mode);
    return isOrdinary ? std::move(file) : Descriptor();
}

enum class Attempt { kTaken, kNotListening, kHungUp, kTimeUp };

/// Says the message over a connection that stands.
Attempt Say(const Descriptor& connection, std::string_view message, Clock::time_point deadline) {
    const bool answered = IsSameUser(connection) && SendAll(connection, message, deadline) &&
                          shutdown(connection.Number(), SHUT_WR) == 0 &&
                          ReceiveAnswer(connection, deadline);
    if (answered) {
        return Attempt::kTaken;
    }
    return Clock::now() < deadline ? Attempt::kHungUp : Attempt::kTimeUp;
}

/// One attempt to hand the message over; `connection` is set if it was taken.
Attempt HandOver(const MeetingPlace& place, std::string_view message, milliseconds timeLimit,
                 Descriptor& connection) {
    Descriptor socket = NewSocket();
    const bool connected = WithAddress(place.socketPath, [&](auto* address, socklen_t size) {
        return connect(socket.Number(), address, size);
    });
    if (!connected) {
        // EAGAIN: many others are waiting for their turn.
        return errno == EAGAIN ? Attempt::kHungUp : Attempt::kNotListening;
    }
    const Attempt attempt = Say(socket, message, Clock::now() + timeLimit);
    if (attempt == Attempt::kTaken) {
        connection = std::move(socket);
    }
    return attempt;
}

}  // namespace

std::optional<MeetingPlace> MeetingPlace::For(const std::string& componentDirectory) {
    const auto folder = RuntimeFolder();
    if (!folder) {
        return std::nullopt;
    }
    MeetingPlace place = In(*folder, InstanceName(componentDirectory));
    if (!OpenLock(place)) {
        return std::nullopt;
    }
    return place;
}

MeetingPlace MeetingPlace::In(const std::string& runtimeFolder, const std::string& name) {
    const std::string stem = runtimeFolder + "/" + name;
    return {stem + ".lock", stem + ".socket"};
}

std::optional<InstanceLock> InstanceLock::TryTake(const MeetingPlace& place) {
    InstanceLock lock(OpenLock(place));
    if (!lock.file_ || flock(lock.file_.Number(), LOCK_EX | LOCK_NB) != 0 || !lock.IsOf(place)) {
        return std::nullopt;
    }
    // The sticky bit asks those who tidy runtime folders up to leave the file alone.
    fchmod(lock.file_.Number(), S_ISVTX | S_IRUSR | S_IWUSR);
    lock.RemoveSocket(place);
    return lock;
}

bool InstanceLock::IsOf(const MeetingPlace& place) const {
    struct stat held {};
    struct stat there {};
    return fstat(file_.Number(), &held) == 0 && lstat(place.lockPath.c_str(), &there) == 0 &&
           held.st_dev == there.st_dev && held.st_ino == there.st_ino;
}

void InstanceLock::RemoveSocket(const MeetingPlace& place) const {
    if (IsOf(place)) {
        unlink(place.socketPath.c_str());
    }
}

Descriptor InstanceLock::Listen(const MeetingPlace& place) const {
    Descriptor listening = NewSocket();
    // The rights of a socket that is not yet bound become those of its file: at no time can anybody
    // else connect.
    fchmod(listening.Number(), S_IRUSR | S_IWUSR);
    const bool bound = WithAddress(place.socketPath, [&](auto* address, socklen_t size) {
        return bind(listening.Number(), address, size);
    });
    if (!bound || chmod(place.socketPath.c_str(), S_ISVTX | S_IRUSR | S_IWUSR) != 0 ||
        listen(listening.Number(), kBacklog) != 0) {
        RemoveSocket(place);
        return Descriptor();
    }
    return listening;
}

HandoverResult TakeLockOrHandOver(const MeetingPlace& place, const std::vector<Request>& requests,
                                  const Patience& patience) {
    const auto start = Clock::now();
    const std::string message = EncodeMessage(requests);
    HandoverResult result;
    for (;;) {
        result.lock = InstanceLock::TryTake(place);
        if (result.lock) {
            result.outcome = Handover::kNobodyRuns;
            return result;
        }
        const Attempt attempt = HandOver(place, message, patience.answer, result.connection);
        if (attempt == Attempt::kTaken) {
            result.outcome = Handover::kDone;
            return result;
        }
        const auto limit = attempt == Attempt::kNotListening ? patience.starting : patience.answer;
        if (attempt == Attempt::kTimeUp || Clock::now() - start >= limit) {
            return result;
        }
        std::this_thread::sleep_for(kRetryPeriod);
    }
}

bool WaitForEnd(const Descriptor& connection, milliseconds timeLimit) {
    return ReadAnswer(connection, timeLimit).has_value();
}

std::optional<std::string> ReadAnswer(const Descriptor& connection, milliseconds timeLimit) {
    constexpr std::size_t kLongestAnswer = 1'048'576;
    const auto deadline = Clock::now() + timeLimit;
    std::string answer;
    std::array<char, 4096> buffer{};
    while (answer.size() < kLongestAnswer && WaitFor(connection, POLLIN, deadline)) {
        const ssize_t got = recv(connection.Number(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (got > 0) {
            answer.append(buffer.data(), static_cast<std::size_t>(got));
        } else if (got == 0 || (errno != EAGAIN && errno != EINTR)) {
            return answer;
        }
    }
    return std::nullopt;
}

bool IsSameUser(const Descriptor& connection) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    return getsockopt(connection.Number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           peer.uid == geteuid();
}

}  // namespace veldrin

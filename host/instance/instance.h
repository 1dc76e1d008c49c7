// One veldrin runs for each user and component directory. The first start takes the lock and
// listens on a socket; a later one finds the lock taken and hands its requests over. The lock is a
// flock on a file that is never removed, so the system gives it back whatever way its holder ends,
// and only who holds it may touch the socket: a socket left by a crash is replaced without a race.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "host/descriptor.h"
#include "host/instance/handover_message.h"

namespace veldrin {

/// Names the meeting place of all starts for one component directory.
struct MeetingPlace {
    std::string lockPath;
    std::string socketPath;

    /// In the runtime folder; nothing if there is no safe one, or no lock can be made there.
    static std::optional<MeetingPlace> For(const std::string& componentDirectory);
    static MeetingPlace In(const std::string& runtimeFolder, const std::string& name);
};

/// Held by the running instance until its very end.
class InstanceLock {
  public:
    /// Nothing if somebody holds it. A socket that a crash left behind is removed.
    static std::optional<InstanceLock> TryTake(const MeetingPlace& place);

    /// Binds the socket, owner only, and listens. It does not block. Empty if that failed. To be
    /// done when the main loop is about to run: who connects expects an answer soon.
    Descriptor Listen(const MeetingPlace& place) const;

    /// Takes the socket's file away, whoever still has a connection.
    void RemoveSocket(const MeetingPlace& place) const;

  private:
    /// Whether the file is still that of the place. If somebody has tidied it away, another
    /// instance may have the lock of another file, and the socket.
    bool IsOf(const MeetingPlace& place) const;

    explicit InstanceLock(Descriptor file) : file_(std::move(file)) {}

    Descriptor file_;
};

enum class Handover {
    kDone,        ///< the running instance took the requests
    kNobodyRuns,  ///< the lock was free: `lock` is now held by the caller
    kNoAnswer,    ///< somebody holds the lock, but did not answer in time
};

struct HandoverResult {
    Handover outcome = Handover::kNoAnswer;
    std::optional<InstanceLock> lock;  ///< of kNobodyRuns
    Descriptor
        connection;  ///< of kDone; requests to quit and to export keep it open until they are done
};

/// How long a start waits for another one.
struct Patience {
    std::chrono::milliseconds answer{2000};  ///< for one that listens
    std::chrono::milliseconds starting{
        15000};  ///< for one that is about to listen, or about to end
};

/// Takes the lock or hands `requests` to who holds it, whichever comes first.
HandoverResult TakeLockOrHandOver(const MeetingPlace& place, const std::vector<Request>& requests,
                                  const Patience& patience);

/// Waits until the other side of the connection is gone. False when the time is up.
bool WaitForEnd(const Descriptor& connection, std::chrono::milliseconds timeLimit);

/// What the other side says behind its "ok", up to the end of the stream; nothing if that does not
/// come in time.
std::optional<std::string> ReadAnswer(const Descriptor& connection,
                                      std::chrono::milliseconds timeLimit);

/// Whether the process at the other end of a local socket runs as this user.
bool IsSameUser(const Descriptor& connection);

}  // namespace veldrin

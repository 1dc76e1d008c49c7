#include "platform/desktop/bus/bus_probe.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string_view>

#include "platform/base/text.h"

namespace platform::desktop {

namespace {

constexpr const char* kVariable = "DBUS_SESSION_BUS_ADDRESS";
constexpr const char* kNone = "disabled:";

struct SocketName {
    sockaddr_un address{};
    socklen_t size = 0;
};

/// Of "unix:path=..." or "unix:abstract=...", the first of several addresses.
std::optional<SocketName> NameOf(std::string_view address) {
    constexpr std::string_view kUnix = "unix:";
    if (!address.starts_with(kUnix)) {
        return std::nullopt;
    }
    address = address.substr(kUnix.size());
    address = address.substr(0, address.find_first_of(",;"));
    const std::size_t equals = address.find('=');
    const std::string_view kind = address.substr(0, equals);
    const std::string name =
        equals == std::string_view::npos ? "" : PercentDecode(address.substr(equals + 1));
    const std::size_t start = kind == "abstract" ? 1 : 0;
    SocketName found;
    if ((kind != "path" && kind != "abstract") ||
        start + name.size() >= sizeof(found.address.sun_path)) {
        return std::nullopt;
    }
    found.address.sun_family = AF_UNIX;
    std::memcpy(found.address.sun_path + start, name.data(), name.size());
    const std::size_t head = offsetof(sockaddr_un, sun_path);
    found.size = static_cast<socklen_t>(head + start + name.size() + (start == 0 ? 1 : 0));
    return found;
}

bool Answers(int connection, const SocketName& name, std::chrono::milliseconds patience) {
    // What every client says first; the bus answers with what it accepts.
    constexpr std::string_view kQuestion("\0AUTH\r\n", 7);
    if (connect(connection, reinterpret_cast<const sockaddr*>(&name.address), name.size) != 0) {
        return false;
    }
    const ssize_t sent = send(connection, kQuestion.data(), kQuestion.size(), MSG_NOSIGNAL);
    pollfd entry{connection, POLLIN, 0};
    return sent == static_cast<ssize_t>(kQuestion.size()) &&
           poll(&entry, 1, static_cast<int>(patience.count())) == 1;
}

}  // namespace

std::string SessionBusAddress() {
    const char* const address = std::getenv(kVariable);
    if (address != nullptr && *address != '\0') {
        return address;
    }
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    struct stat status {};
    const std::string path = folder != nullptr ? std::string(folder) + "/bus" : std::string();
    const bool isThere = stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
    return isThere ? "unix:path=" + path : std::string();
}

bool BusAnswers(const std::string& address, std::chrono::milliseconds patience) {
    const auto name = NameOf(address);
    if (!name) {
        return true;
    }
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (connection < 0) {
        return false;
    }
    const bool answers = Answers(connection, *name, patience);
    close(connection);
    return answers;
}

void PassOverBusWithoutAnswer() {
    constexpr std::chrono::milliseconds kPatience(300);
    const std::string address = SessionBusAddress();
    if (address.empty() || !BusAnswers(address, kPatience)) {
        setenv(kVariable, kNone, 1);
    }
}

bool IsBusPassedOver() {
    return SessionBusAddress() == kNone;
}

}  // namespace platform::desktop

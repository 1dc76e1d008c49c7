#include "platform/desktop/wayland.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QByteArray>
#include <QGuiApplication>
#include <algorithm>
#include <filesystem>
#include <iterator>

namespace platform::desktop {

namespace {

// Where the toolkit looks for it.
constexpr const char* kToken = "XDG_ACTIVATION_TOKEN";

}  // namespace

int ConnectToCompositor() {
    const std::filesystem::path name = qgetenv("WAYLAND_DISPLAY").toStdString();
    const std::string path =
        (std::filesystem::path(qgetenv("XDG_RUNTIME_DIR").toStdString()) / name).string();
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.empty() || path.size() >= sizeof address.sun_path) {
        return -1;
    }
    std::copy(path.begin(), path.end(), std::begin(address.sun_path));
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connection >= 0 &&
        connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(connection);
        return -1;
    }
    return connection;
}

bool HasEnded(int connection, std::chrono::milliseconds patience) {
    pollfd asked{connection, POLLIN, 0};
    return poll(&asked, 1, static_cast<int>(patience.count())) > 0;
}

bool IsOnWayland() {
    return QGuiApplication::platformName().startsWith("wayland");
}

void SetActivationToken(const std::string& token) {
    if (token.empty()) {
        qunsetenv(kToken);
    } else {
        qputenv(kToken, QByteArray::fromStdString(token));
    }
}

bool HasActivationToken() {
    return !qEnvironmentVariableIsEmpty(kToken);
}

}  // namespace platform::desktop

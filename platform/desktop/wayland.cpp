#include "platform/desktop/wayland.h"

#include <QByteArray>
#include <QGuiApplication>

namespace platform::desktop {

namespace {

// Where the toolkit looks for it.
constexpr const char* kToken = "XDG_ACTIVATION_TOKEN";

}  // namespace

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

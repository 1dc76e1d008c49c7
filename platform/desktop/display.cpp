#include "platform/desktop/display.h"

#include <xcb/xcb.h>

#include <QByteArray>
#include <QDir>
#include <QLibraryInfo>

namespace platform::desktop {

namespace {

bool Answers(const char* display) {
    xcb_connection_t* connection = xcb_connect(display, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool HasPlugin(const char* pattern) {
    const QDir folder(QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms");
    return !folder.entryList({QString::fromLatin1(pattern)}).isEmpty();
}

}  // namespace

std::optional<std::string> DisplayFault() {
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        return std::nullopt;  // the user knows better
    }
    const QByteArray display = qgetenv("DISPLAY");
    if (display.isEmpty()) {
        if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && HasPlugin("libqwayland*")) {
            return std::nullopt;
        }
        return "there is no display";
    }
    if (!Answers(display.constData())) {
        return "the display '" + display.toStdString() + "' does not answer";
    }
    return std::nullopt;
}

}  // namespace platform::desktop

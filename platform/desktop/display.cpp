#include "platform/desktop/display.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QByteArray>
#include <QDir>
#include <QLibraryInfo>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "platform/desktop/application.h"
#include "platform/desktop/wayland.h"

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

std::optional<std::string> XServerFault() {
    const QByteArray display = qgetenv("DISPLAY");
    if (display.isEmpty()) {
        return "there is no display";
    }
    if (!Answers(display.constData())) {
        return "the display '" + display.toStdString() + "' does not answer";
    }
    return std::nullopt;
}

std::optional<std::string> CompositorFault() {
    const int connection = ConnectToCompositor();
    if (connection < 0) {
        return "the display '" + qgetenv("WAYLAND_DISPLAY").toStdString() + "' does not answer";
    }
    close(connection);
    return std::nullopt;
}

// Whether the toolkit begins here with a screen. Where it cannot, it ends the process and says all
// kinds of things, so it is a child that tries.
bool CanBegin() {
    constexpr unsigned kLongest = 5;  // seconds
    const pid_t child = fork();
    if (child == 0) {
        const auto fail = [](int) { _exit(EXIT_FAILURE); };
        std::signal(SIGABRT, fail);
        std::signal(SIGALRM, fail);
        alarm(kLongest);
        const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        const Application trial("trial");
        _exit(QGuiApplication::primaryScreen() != nullptr ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = EXIT_FAILURE;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status == EXIT_SUCCESS;
}

}  // namespace

std::optional<std::string> DisplayFault() {
    if (QCoreApplication::instance() != nullptr) {
        return std::nullopt;  // the toolkit runs already
    }
    const QByteArray kind = qgetenv("QT_QPA_PLATFORM");
    const bool isForWayland = kind.isEmpty() && qEnvironmentVariableIsEmpty("DISPLAY") &&
                              !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
                              HasPlugin("libqwayland*");
    if (kind == "xcb" || (kind.isEmpty() && !isForWayland)) {
        return XServerFault();
    }
    if (isForWayland) {
        return CompositorFault();
    }
    if (CanBegin()) {
        return std::nullopt;
    }
    return "no display is to be had by QT_QPA_PLATFORM=" + kind.toStdString();
}

}  // namespace platform::desktop

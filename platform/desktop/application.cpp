#include "platform/desktop/application.h"

#include <xcb/xcb.h>

#include <QSessionManager>
#include <QSocketNotifier>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "platform/desktop/bus/bus_probe.h"

namespace platform::desktop {

namespace {

void SetUnlessSet(const char* variable, const char* value) {
    if (!qEnvironmentVariableIsSet(variable)) {
        qputenv(variable, value);
    }
}

// Has to run before the application object is made, which reads the environment.
void PrepareEnvironment() {
    // The plainest of the toolkit's event loops: it wakes for half the price.
    SetUnlessSet("QT_NO_GLIB", "1");
    // Windows that may place themselves need the X server.
    if (!qEnvironmentVariableIsEmpty("DISPLAY")) {
        SetUnlessSet("QT_QPA_PLATFORM", "xcb");
    }
    // With shared memory each change would wait for the window server to have read the last one. A
    // change is usually small, and cheaper to send.
    SetUnlessSet("QT_XCB_NO_MITSHM", "1");
    // The toolkit's remarks on the surroundings are of no use to whoever listens to music.
    SetUnlessSet("QT_LOGGING_RULES", "default.warning=false");
    PassOverBusWithoutAnswer();
    // Finished pictures are magnified here, not by the toolkit.
    SetUnlessSet("QT_ENABLE_HIGHDPI_SCALING", "0");
}

// The toolkit ends the process by itself when it is the first to find the connection to the display
// broken, or cannot go on otherwise; at that moment nothing else leads to the object that has to
// hear of it.
Application* watching = nullptr;
QtMessageHandler formerHandler = nullptr;

void HearMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type == QtFatalMsg && watching != nullptr) {
        watching->LoseDisplay();
    }
    formerHandler(type, context, text);
}

void WatchTheEnd() {
    static const bool watched = [] {
        formerHandler = qInstallMessageHandler(HearMessage);
        return std::atexit([] {
                   if (watching != nullptr) {
                       watching->LoseDisplay();
                   }
               }) == 0;
    }();
    static_cast<void>(watched);
}

}  // namespace

Application::Application(std::string name) : name_(std::move(name)) {
    if (QCoreApplication::instance() != nullptr) {
        throw std::logic_error("one desktop driver at a time");
    }
    PrepareEnvironment();
    arguments_[0] = name_.data();
    const QString known = QString::fromStdString(name_);
    QCoreApplication::setApplicationName(known);
    QGuiApplication::setDesktopFileName(known);
    application_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    Watch();
}

Application::~Application() {
    watching = nullptr;
}

void Application::Watch() {
    watching = this;
    WatchTheEnd();
    QObject::connect(
        application_.get(), &QGuiApplication::commitDataRequest, application_.get(),
        [this](QSessionManager& manager) {
            manager.setRestartHint(QSessionManager::RestartNever);
            if (onSessionEnd_) {
                onSessionEnd_();
            }
        },
        Qt::DirectConnection);
    const auto* x11 = application_->nativeInterface<QNativeInterface::QX11Application>();
    connection_ = x11 != nullptr ? x11->connection() : nullptr;
    if (connection_ == nullptr) {
        return;
    }
    // Most often the hang-up is seen here first. This kind of watch reports nothing else.
    const int descriptor = xcb_get_file_descriptor(connection_);
    hangUp_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Exception);
    QObject::connect(hangUp_.get(), &QSocketNotifier::activated, application_.get(), [this] {
        hangUp_->setEnabled(false);
        LoseDisplay();
    });
}

// A request that the server does not take breaks the connection on this side, without a hang-up.
void Application::LookForDisplay() {
    if (connection_ != nullptr && !lostDisplay_ && xcb_connection_has_error(connection_) != 0) {
        LoseDisplay();
    }
}

void Application::LoseDisplay() {
    if (!std::exchange(lostDisplay_, true) && onLost_) {
        onLost_();
    }
}

}  // namespace platform::desktop

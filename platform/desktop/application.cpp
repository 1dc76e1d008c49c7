#include "platform/desktop/application.h"

#include <unistd.h>
#include <xcb/xcb.h>

#include <QEvent>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QThread>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <utility>

#include "platform/desktop/bus/bus_probe.h"
#include "platform/desktop/wayland.h"

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
    PassOverBusWithoutAnswer();
    // Finished pictures are magnified here, not by the toolkit.
    SetUnlessSet("QT_ENABLE_HIGHDPI_SCALING", "0");
}

// The toolkit ends the process by itself when it is the first to find the connection to the display
// broken, or cannot go on otherwise; at that moment nothing else leads to the object that has to
// hear of it.
std::atomic<Application*> watching = nullptr;
QtMessageHandler formerHandler = nullptr;

// The toolkit's remarks on the surroundings are of no use to whoever listens to music.
bool IsRemark(QtMsgType type, const QMessageLogContext& context) {
    return type == QtWarningMsg && std::string_view(context.category) == "default" &&
           !qEnvironmentVariableIsSet("QT_LOGGING_RULES");
}

void HearMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    Application* const application = watching;
    if (application != nullptr && type == QtFatalMsg) {
        application->LoseDisplay();
    } else if (application != nullptr && type == QtWarningMsg && text.contains("Wayland")) {
        application->BeforeEnd();
    }
    if (!IsRemark(type, context)) {
        formerHandler(type, context, text);
    }
}

// Before the application object is made, which has remarks of its own.
void HearTheToolkit() {
    if (formerHandler == nullptr) {
        formerHandler = qInstallMessageHandler(HearMessage);
    }
}

// The toolkit quits by closing all windows first, and not at all if one of them refuses.
class QuitFilter : public QObject {
  public:
    explicit QuitFilter(std::function<void()> onQuit) : onQuit_(std::move(onQuit)) {
        qGuiApp->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        if (object == qGuiApp && event->type() == QEvent::Quit) {
            onQuit_();
        }
        return false;
    }

  private:
    std::function<void()> onQuit_;
};

void WatchTheEnd() {
    static const bool watched = std::atexit([] {
                                    if (Application* const application = watching) {
                                        application->LoseDisplay();
                                    }
                                }) == 0;
    static_cast<void>(watched);
}

}  // namespace

Application::Application(std::string name) : name_(std::move(name)) {
    if (watching != nullptr) {
        throw std::logic_error("one desktop driver at a time");
    }
    const QCoreApplication* const programs = QCoreApplication::instance();
    if (programs == nullptr) {
        Make();
    } else if (qobject_cast<const QGuiApplication*>(programs) == nullptr) {
        throw std::logic_error("the program's application object is no QGuiApplication");
    } else if (programs->thread() != QThread::currentThread()) {
        throw std::logic_error("a desktop driver lives on the thread of the application object");
    }
    if (IsOnWayland()) {
        compositor_ = ConnectToCompositor();
    }
    Watch();
    if (made_ == nullptr) {
        WatchQuitting();
    }
}

// All of that happens within the one event.
void Application::WatchQuitting() {
    quitFilter_ = std::make_unique<QuitFilter>([this] {
        isQuitting_ = true;
        QMetaObject::invokeMethod(
            &context_, [this] { isQuitting_ = false; }, Qt::QueuedConnection);
    });
}

void Application::Make() {
    PrepareEnvironment();
    HearTheToolkit();
    arguments_[0] = name_.data();
    const QString known = QString::fromStdString(name_);
    QCoreApplication::setApplicationName(known);
    QGuiApplication::setDesktopFileName(known);
    made_ = std::make_unique<QGuiApplication>(argumentCount_, arguments_);
    QGuiApplication::setQuitOnLastWindowClosed(false);
}

Application::~Application() {
    watching = nullptr;
    hangUp_.reset();
    if (compositor_ >= 0) {
        close(compositor_);
    }
}

void Application::Watch() {
    watching = this;
    WatchTheEnd();
    QObject::connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &context_,
        [this](QSessionManager& manager) {
            if (made_ != nullptr) {
                manager.setRestartHint(QSessionManager::RestartNever);
            }
            if (onSessionEnd_) {
                onSessionEnd_();
            }
        },
        Qt::DirectConnection);
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    connection_ = x11 != nullptr ? x11->connection() : nullptr;
    // Most often the hang-up is seen here first. The first kind of watch reports nothing else, and
    // nothing else comes over the second connection.
    if (connection_ != nullptr) {
        hangUp_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_),
                                                    QSocketNotifier::Exception);
    } else if (compositor_ >= 0) {
        hangUp_ = std::make_unique<QSocketNotifier>(compositor_, QSocketNotifier::Read);
    } else {
        return;
    }
    QObject::connect(hangUp_.get(), &QSocketNotifier::activated, &context_, [this] {
        hangUp_->setEnabled(false);
        LoseDisplay();
    });
}

// Whoever finds out that the compositor has gone says so, and then ends the process at once. That
// may be this thread, or one that reads; this one has something to do first, which it is told by
// the other connection.
void Application::BeforeEnd() {
    constexpr std::chrono::milliseconds kApart(200);  // the ends of the two connections
    constexpr std::chrono::seconds kForTheList(30);
    if (compositor_ < 0 || !HasEnded(compositor_, kApart)) {
        return;
    }
    if (QThread::currentThread() == context_.thread()) {
        LoseDisplay();
    } else {
        std::this_thread::sleep_for(kForTheList);
    }
}

// A request that the server does not take breaks the connection on this side, without a hang-up.
void Application::LookForDisplay() {
    const bool isBroken = (connection_ != nullptr && xcb_connection_has_error(connection_) != 0) ||
                          (compositor_ >= 0 && HasEnded(compositor_));
    if (isBroken && !lostDisplay_) {
        LoseDisplay();
    }
}

void Application::LoseDisplay() {
    if (!std::exchange(lostDisplay_, true) && onLost_) {
        onLost_();
    }
}

}  // namespace platform::desktop

// A program of its own, with a QGuiApplication and a window, that takes the desktop's driver in as
// a guest: twice, with the window system's main loop and with the toolkit's. It tells in lines what
// happens, and each line of its input ends a loop.
//
//     guest_program [core]
#include <unistd.h>

#include <QGuiApplication>
#include <QRasterWindow>
#include <QTimer>
#include <array>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/desktop/desktop_driver.h"
#include "platform/windows/window_system.h"

namespace {

using namespace platform;

const ProgramIdentity kGuest{"guest", "Guest", {}, {}};

void Say(const std::string& line) {
    std::cout << line << std::endl;
}

void HearMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/,
                 const QString& /*text*/) {}

// What belongs to the program.
struct Settings {
    QString name = QCoreApplication::applicationName();
    QString desktopFile = QGuiApplication::desktopFileName();
    bool quits = QGuiApplication::quitOnLastWindowClosed();
    QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    QByteArray noGlib = qgetenv("QT_NO_GLIB");
    QByteArray scaling = qgetenv("QT_ENABLE_HIGHDPI_SCALING");
    QByteArray noShm = qgetenv("QT_XCB_NO_MITSHM");
    const void* application = QCoreApplication::instance();
    bool operator==(const Settings&) const = default;
};

bool HasOwnHandler() {
    return qInstallMessageHandler(HearMessage) == HearMessage;
}

class OwnWindow : public QRasterWindow {
  protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { Say("press own"); }
};

class Guest {
  public:
    Guest(std::function<void()> onLine, std::function<void()> onBeat)
        : onLine_(std::move(onLine)), onBeat_(std::move(onBeat)) {
        face_.FillRect(face_.Bounds(), 0x0000FF);
        windows_.SetWindowText(window_, u"Guest");
        windows_.SetFace(window_, &face_);
        windows_.SetTimer(window_, 1, 20, [this](Handle, Long) { onBeat_(); });
        windows_.ShowWindow(window_, SW_SHOW);
        driver_.Watch(STDIN_FILENO, [this] { Read(); });
    }
    ~Guest() { driver_.Watch(STDIN_FILENO, {}); }
    Guest(const Guest&) = delete;
    Guest& operator=(const Guest&) = delete;

    DesktopDriver& Driver() { return driver_; }
    WindowSystem& Windows() { return windows_; }

  private:
    // A right press begins a loop within the loop, as a menu does, which the next press ends.
    Long Hear(const Message& message) {
        if (message.id == WM_LBUTTONDOWN) {
            Say("press guest");
            nested_ = false;
        } else if (message.id == WM_RBUTTONDOWN) {
            nested_ = true;
            Say("nested");
            windows_.RunWhile([this] { return nested_; });
            Say("no more");
        }
        return 0;
    }
    void Read() {
        std::array<char, 64> line{};
        if (read(STDIN_FILENO, line.data(), line.size()) >= 0) {
            onLine_();
        }
    }

    std::function<void()> onLine_;
    std::function<void()> onBeat_;
    bool nested_ = false;
    Surface face_{{100, 60}};
    DesktopDriver driver_{kGuest, 1};
    WindowSystem windows_{driver_};
    Handle window_ = windows_.CreateWindow(0, {100, 100, 200, 160},
                                           [this](const Message& m) { return Hear(m); });
};

bool IsRefused() {
    try {
        const DesktopDriver second(kGuest, 1);
        return false;
    } catch (const std::logic_error&) {
        return true;
    }
}

void Run(QGuiApplication& application, const std::string& loop) {
    const Settings before;
    QTimer own;
    int ownBeats = 0;
    QObject::connect(&own, &QTimer::timeout, &own, [&] {
        if (++ownBeats > 10) {
            own.stop();  // the guest must beat without it
        }
    });
    own.start(20);
    {
        bool isWanted = false;
        int beats = 0;  // since then, when nothing else happens
        const auto isOver = [&] { return beats > 5 && !own.isActive(); };
        Guest guest([&] { isWanted = true; },
                    [&] {
                        beats += isWanted ? 1 : 0;
                        if (isOver() && loop != "its own") {
                            application.quit();
                        }
                    });
        Say(IsRefused() ? "ready" : "a second driver");
        if (loop == "its own") {
            while (!isOver()) {
                guest.Windows().WaitMessage();
            }
        } else {
            guest.Driver().ServeProgram([&] { return guest.Windows().TakeTurn(); });
            application.exec();
            guest.Driver().ServeProgram({});
        }
        Say("both lived");
    }
    Say(Settings() == before && HasOwnHandler() ? "nothing changed" : "settings changed");
}

}  // namespace

int main(int count, char** arguments) {
    if (count > 1) {
        const QCoreApplication core(count, arguments);
        Say(IsRefused() ? "refused" : "a driver without a display");
        return 0;
    }
    qInstallMessageHandler(HearMessage);
    QGuiApplication application(count, arguments);
    QCoreApplication::setApplicationName("own");
    QGuiApplication::setDesktopFileName("own.desktop");
    OwnWindow window;
    window.setTitle("Own");
    window.setGeometry(600, 300, 120, 80);
    window.show();
    Run(application, "its own");
    Run(application, "the toolkit's");
    // To quit was to close the window. With a new one the program goes on as if nothing had been:
    // the last window ends it.
    window.setGeometry(600, 300, 120, 80);
    window.show();
    Say("alone");
    application.exec();
    Say("ended");
    return 0;
}

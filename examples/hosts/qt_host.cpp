// A host in a program that has Qt already: its own window and the component's live side by side,
// and the program runs the toolkit's loop as it always did.
//
//     qt_host DIRECTORY [FILE]
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <cstdio>
#include <optional>
#include <string>

#include "core/ambrisor.h"
#include "platform/desktop/desktop_driver.h"
#include "platform/windows/window_system.h"
#include "player_host.h"

/// The program's own window. A click on it ends the program.
class OwnWindow : public QRasterWindow {
  public:
    OwnWindow() {
        setTitle("Own window");
        resize(200, 100);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(QRect({}, size()), Qt::white);
        painter.drawText(QRect({}, size()), Qt::AlignCenter, "Click to end");
    }
    void mousePressEvent(QMouseEvent* /*event*/) override { QGuiApplication::quit(); }
};

int main(int argumentCount, char** arguments) {
    QGuiApplication application(argumentCount, arguments);
    // The component's window may go before, and come back.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QStringList given = QGuiApplication::arguments();
    if (given.size() < 2) {
        std::fprintf(stderr, "usage: qt_host DIRECTORY [FILE]\n");
        return 2;
    }
    OwnWindow own;
    own.show();

    // It uses the application object that is there, and never deletes it.
    platform::DesktopDriver driver({.id = "qt_host",
                                    .title = "Qt host",
                                    .genericName = "Music player",
                                    .categories = "AudioVideo;Audio;Player;"},
                                   std::nullopt);
    platform::WindowSystem windows(driver);
    SilentPlayer player([&driver] { return driver.Now(); }, 180);
    PlayerHost host(player);
    sarnel::Ambrisor component(windows, {.directory = given[1].toStdString()});
    component.Connect(&host);
    Begin(component, given.size() > 2 ? u'"' + given[2].toStdU16String() + u'"' : u"");

    // In place of a loop of WaitMessage: a turn is taken whenever the toolkit's loop is about to
    // wait.
    driver.ServeProgram([&] {
        if (host.exitWished && !host.closed) {
            End(component);
        }
        if (host.closed) {
            QGuiApplication::quit();
        }
        return windows.TakeTurn();
    });
    const int status = QGuiApplication::exec();
    driver.ServeProgram({});
    if (!host.closed) {
        End(component);
    }
    component.Disconnect();
    return status;
}

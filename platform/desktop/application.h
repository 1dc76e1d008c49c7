// The toolkit's application object with its surroundings. The driver holds it as its first member:
// nothing of the toolkit works before there is one, or after. A program that has made one itself
// keeps it: that one is used, none of its settings is touched, and it must outlive this.
#pragma once

#include <QGuiApplication>
#include <functional>
#include <memory>
#include <string>
#include <utility>

class QSocketNotifier;
struct xcb_connection_t;

namespace platform::desktop {

class Application {
  public:
    /// `name`: what the desktop knows the program by, unless the program has said so itself.
    /// Refused, by an exception of std::logic_error, while another one of these lives, on another
    /// thread than that of the program's own application object, and where that one is no
    /// QGuiApplication.
    explicit Application(std::string name);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Whether the connection to the display has broken: neither it nor the toolkit may be asked
    /// anything any more.
    bool HasLostDisplay() const { return lostDisplay_; }

    /// Looks whether it has. To be called before the toolkit looks, which ends the process then.
    void LookForDisplay();
    /// It has.
    void LoseDisplay();
    /// Whether a program with an application object of its own is asking its windows whether it may
    /// quit.
    bool IsQuitting() const { return isQuitting_; }

    /// Called on any thread when the toolkit may be about to end the process because it has.
    void BeforeEnd();

    /// Calls `onEnd` when the session ends.
    void WatchSessionEnd(std::function<void()> onEnd) { onSessionEnd_ = std::move(onEnd); }

    /// Calls `onLost` when the connection to the display breaks; at the latest when the toolkit
    /// ends the process for it, in the middle of that.
    void WatchDisplay(std::function<void()> onLost) { onLost_ = std::move(onLost); }

  private:
    void Make();
    void Watch();
    void WatchQuitting();

    // What the toolkit keeps pointing at.
    std::string name_;
    int argumentCount_ = 1;
    char* arguments_[2] = {nullptr, nullptr};
    std::unique_ptr<QGuiApplication> made_;  ///< null if the program has one of its own
    xcb_connection_t* connection_ =
        nullptr;           ///< of the toolkit's; null if it has none of that kind
    int compositor_ = -1;  ///< a connection to it; -1 if it is no Wayland compositor
    QObject context_;      ///< whatever is connected ends with it
    std::unique_ptr<QObject> quitFilter_;
    std::unique_ptr<QSocketNotifier> hangUp_;
    std::function<void()> onSessionEnd_;
    std::function<void()> onLost_;
    bool lostDisplay_ = false;
    bool isQuitting_ = false;
};

}  // namespace platform::desktop

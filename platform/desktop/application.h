// The toolkit's application object with its surroundings: made before anything else of the toolkit,
// gone after it.
#pragma once

#include <QGuiApplication>
#include <functional>
#include <memory>
#include <string>

class QSocketNotifier;

namespace platform::desktop {

class Application {
  public:
    /// Refused, by an exception of std::logic_error, while another one lives.
    explicit Application(std::string name);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Whether the connection to the display has broken: nothing may be asked of it any more.
    bool HasLostDisplay() const { return lostDisplay_; }

    /// Calls `onEnd` when the session ends or the connection to the display breaks.
    void WatchSessionEnd(std::function<void()> onEnd);

  private:
    void LoseDisplay();

    // What the toolkit keeps pointing at.
    std::string name_;
    int argumentCount_ = 1;
    char* arguments_[2] = {nullptr, nullptr};
    std::unique_ptr<QGuiApplication> application_;
    std::unique_ptr<QSocketNotifier> hangUp_;
    std::function<void()> onLost_;
    bool lostDisplay_ = false;
};

}  // namespace platform::desktop

// Waiting: for a moment, for the desktop, for watched descriptors, whichever comes first.
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/base/types.h"

class QSocketNotifier;

namespace platform::desktop {

class WaitLoop : private QObject {
  public:
    WaitLoop();
    ~WaitLoop() override;

    /// Handles what has happened; if that is nothing, waits for it, at most `longest` milliseconds,
    /// for ever if none. May be called again from within a watch's function.
    void Turn(std::optional<Millis> longest);

    /// The same, but the functions of watches wait: for who is in the middle of something.
    void TurnAside(std::optional<Millis> longest);
    /// Ends a turn that waits, or the next one. From any thread.
    void Wake();

    void Watch(int descriptor, std::function<void()> onReadable);

  private:
    struct Watched;

    void timerEvent(QTimerEvent* event) override;
    void Disarm();

    std::map<int, std::unique_ptr<Watched>> watches_;
    std::vector<std::unique_ptr<Watched>> ended_;  ///< may still be on the stack
    int timer_ = 0;
    int depth_ = 0;
};

}  // namespace platform::desktop

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

    /// For a program that runs the toolkit's loop itself. `beforeWait` is called whenever that loop
    /// is about to wait, unless it does so within a turn or within `beforeWait`, and answers how
    /// many milliseconds it may wait at most; for ever if none. An empty function ends it.
    void ServeProgram(std::function<std::optional<Millis>()> beforeWait);

    void Watch(int descriptor, std::function<void()> onReadable);

  private:
    struct Watched;

    void timerEvent(QTimerEvent* event) override;
    void Arm(Millis longest);
    void Disarm();
    void Serve();
    void ForgetEnded();

    std::map<int, std::unique_ptr<Watched>> watches_;
    std::vector<std::unique_ptr<Watched>> ended_;  ///< may still be on the stack
    int timer_ = 0;
    int depth_ = 0;       ///< of turns
    int watchDepth_ = 0;  ///< of watches' functions, which a program's own loop calls, too
    std::function<std::optional<Millis>()> beforeWait_;
    QMetaObject::Connection aboutToWait_;
    bool serving_ = false;
};

}  // namespace platform::desktop

// What others ask of the player: later starts, the desktop, and the rest of the command line. It is
// done in the order in which it came, but not while a file is being opened. A folder with all
// folders below it is many lines: between slices of them a window gets its turn.
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "platform/windows/window_system.h"

namespace veldrin {

class Errands {
  public:
    struct Errand {
        std::function<void()> work;
        /// While held, of those with the same name only the first counts, so that impatience does
        /// not skip as many items. Empty: each counts.
        std::string name = {};
        /// It brings lines into the list, which has them even if the end has been asked for.
        bool isForList = false;
    };

    /// `inSlices`: there is a window. The window system outlives this, and is not pumped any more
    /// once it is gone.
    Errands(platform::WindowSystem& windows, bool inSlices)
        : windows_(windows), inSlices_(inSlices) {}
    Errands(const Errands&) = delete;
    Errands& operator=(const Errands&) = delete;

    /// Puts it behind the others; WorkOff does it. False if it will not be done.
    bool Add(Errand errand);
    /// Does what waits, the rest of it from the event pump.
    void WorkOff();
    /// The same, but all of it from the event pump.
    void WorkOffSoon();

    /// Nothing is done until LetGo, which is called once for each Hold.
    void Hold() { ++holds_; }
    void LetGo();
    /// Does at once what is for the list, before all else.
    void DoForList();
    /// The end has been asked for: what is for the list is done at once, nothing else any more.
    void Hurry();
    /// Nothing is done any more.
    void Stop() { hasStopped_ = true; }

  private:
    platform::WindowSystem& windows_;
    bool inSlices_;
    std::deque<Errand> waiting_;
    bool isScheduled_ = false;
    int holds_ = 0;
    bool isInHurry_ = false;
    bool hasStopped_ = false;
};

}  // namespace veldrin

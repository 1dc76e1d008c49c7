// Opening files without being held up: each step is done on a thread that can be left behind, and
// what lasts is waited for by doing something else (Engine::Wait).
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "host/engine/engine.h"
#include "host/engine/item.h"
#include "host/engine/slow_places.h"
#include "host/engine/worker.h"

namespace veldrin {

class Opener {
  public:
    struct Opened {
        std::unique_ptr<Item> item;  ///< null: it cannot be played
        Time taggedLength{0};        ///< what its tags say, if the medium does not
    };

    /// Without one, what lasts is slept through.
    void WaitBy(Engine::Wait wait) { wait_ = std::move(wait); }

    /// Whether the file is a regular one and hands out its bytes in time.
    bool Answers(const std::string& path);
    /// Prepares the item of a plan, whose patience is set here. `changed` as of Item.
    Opened Open(Decoder::Plan plan, const std::function<void()>& changed);
    /// Waits so long at most; answers whether what it waits for is done.
    using WaitFor = std::function<bool(std::chrono::nanoseconds longest)>;
    /// Waits for something else without an end, but that of the program: then False.
    bool Await(const WaitFor& waitFor);

    /// Whether somebody waits at this moment, and things are done meanwhile.
    bool IsWaiting() const { return isWaiting_; }

  private:
    using Clock = std::chrono::steady_clock;

    bool Do(const std::string& path, std::function<void()> work);
    bool WaitUntil(Clock::time_point deadline, const WaitFor& waitFor);

    Engine::Wait wait_;
    SlowPlaces slow_;
    Worker opening_;
    Clock::time_point turnedAt_;  ///< when the caller last did something else
    Clock::time_point leftAt_;    ///< when the last wait was over
    bool isWaiting_ = false;
    bool ends_ = false;  ///< the program does, and nothing is opened any more
};

}  // namespace veldrin

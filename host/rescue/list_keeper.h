// Keeps the rescue copy up to date while a run is on. Nothing happens while nothing changes: the
// first change that is in no copy starts a clock, which looks once a second, as soon as a copy can
// be due again, whether the list has settled. What it finds due is done by the main loop, where
// nothing of the component is at work: while a menu is open or a button is held, the copy waits.
#pragma once

#include <cstdint>

#include "core/remote.h"
#include "host/rescue/copy_times.h"
#include "host/rescue/rescue.h"
#include "platform/windows/window_system.h"

namespace veldrin {

class ListKeeper {
  public:
    /// All must outlive it, and the window system may make no calls any more when it goes.
    ListKeeper(platform::WindowSystem& windows, sarnel::Remote list, Rescue& rescue)
        : windows_(windows), list_(list), rescue_(rescue) {}
    ListKeeper(const ListKeeper&) = delete;
    ListKeeper& operator=(const ListKeeper&) = delete;

    /// The list has got what the run begins with; `restored` if that is the saved list, and nothing
    /// else.
    void Begin(bool restored);

    /// A turn of the main loop is over.
    void Turn();

  private:
    enum class Doing { kWatching, kSettling, kWriting };

    bool IsAsSaved() const;
    void Watch();
    void Settle();
    void LookLater();
    void Follow();
    void FollowWriting();

    platform::WindowSystem& windows_;
    sarnel::Remote list_;
    Rescue& rescue_;
    Doing doing_ = Doing::kWatching;
    CopyTimes times_;
    std::uint64_t seen_ = 0;    ///< the list's changes when it was looked at last
    std::uint64_t copied_ = 0;  ///< and when it was copied last
    bool looks_ = false;        ///< the clock has struck
};

}  // namespace veldrin

#include "host/rescue/list_keeper.h"

#include <algorithm>
#include <utility>

namespace veldrin {

using platform::Millis;

void ListKeeper::Begin(bool restored) {
    if (!rescue_.KeepsCopy()) {
        return;
    }
    windows_.Schedule(Rescue::kLasting, [this] { rescue_.Lasted(); });
    if (restored && rescue_.HasFirstCopy() && IsAsSaved()) {
        Watch();
    } else {
        Settle();
    }
}

// What is played at the start may have moved the current row.
bool ListKeeper::IsAsSaved() const {
    const auto head = ReadListHead(rescue_.ListPath());
    return head && head->count == list_.ListCount() && head->current == list_.ListCurrent();
}

void ListKeeper::Turn() {
    if (!std::exchange(looks_, false) || !list_.IsLoaded()) {
        return;
    }
    if (doing_ == Doing::kSettling) {
        Follow();
    } else if (doing_ == Doing::kWriting) {
        FollowWriting();
    }
}

void ListKeeper::Watch() {
    doing_ = Doing::kWatching;
    list_.OnNextChange([this] { Settle(); });
}

void ListKeeper::Settle() {
    doing_ = Doing::kSettling;
    seen_ = list_.Changes();
    times_.firstChange = times_.lastChange = windows_.Now();
    LookLater();
}

void ListKeeper::LookLater() {
    constexpr Millis kLook = 1000;
    const Millis rest =
        doing_ == Doing::kSettling ? times_.Rest(windows_.Now(), list_.ListCount()) : 0;
    windows_.Schedule(std::max(kLook, rest), [this] { looks_ = true; });
}

void ListKeeper::Follow() {
    const Millis now = windows_.Now();
    if (std::exchange(seen_, list_.Changes()) != list_.Changes()) {
        times_.lastChange = now;
    }
    if (times_.IsDue(now, list_.ListCount()) && !rescue_.Writer().IsBusy()) {
        doing_ = Doing::kWriting;
        times_.lastCopy = now;
        copied_ = list_.Changes();
        rescue_.Writer().Write(list_.CopyList());
    }
    LookLater();
}

void ListKeeper::FollowWriting() {
    if (rescue_.Writer().IsBusy()) {
        LookLater();
    } else if (rescue_.Writer().HasFailed()) {
        // What is in the way, such as a full disk, may take its time.
        times_.lastCopy = windows_.Now() + CopyTimes::kLongPeriod - CopyTimes::kPeriod;
        Settle();
    } else if (list_.Changes() != copied_) {
        Settle();
    } else {
        Watch();
    }
}

}  // namespace veldrin

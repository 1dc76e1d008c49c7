#include "platform/desktop/wait_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <utility>

namespace platform::desktop {

struct WaitLoop::Watched {
    Watched(int descriptor, std::function<void()> function, int& depth)
        : notifier(descriptor, QSocketNotifier::Read), onReadable(std::move(function)) {
        QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [this, &depth] {
            ++depth;
            onReadable();
            --depth;
        });
    }

    QSocketNotifier notifier;
    std::function<void()> onReadable;
};

WaitLoop::WaitLoop() = default;
WaitLoop::~WaitLoop() = default;

void WaitLoop::Turn(std::optional<Millis> longest) {
    ForgetEnded();
    const bool waits = !longest || *longest > 0;
    Disarm();
    if (longest && waits) {
        Arm(*longest);
    }
    ++depth_;
    QCoreApplication::processEvents(waits ? QEventLoop::WaitForMoreEvents : QEventLoop::AllEvents);
    --depth_;
}

void WaitLoop::TurnAside(std::optional<Millis> longest) {
    const auto enable = [this](bool enabled) {
        for (const auto& watched : watches_) {
            watched.second->notifier.setEnabled(enabled);
        }
    };
    enable(false);
    Turn(longest);
    enable(true);
}

void WaitLoop::Wake() {
    QAbstractEventDispatcher::instance(thread())->wakeUp();
}

void WaitLoop::ServeProgram(std::function<std::optional<Millis>()> beforeWait) {
    disconnect(aboutToWait_);
    beforeWait_ = std::move(beforeWait);
    if (beforeWait_) {
        const auto* const dispatcher = QAbstractEventDispatcher::instance(thread());
        aboutToWait_ =
            connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { Serve(); });
        Wake();
    }
}

void WaitLoop::Serve() {
    if (depth_ > 0 || serving_) {
        return;
    }
    ForgetEnded();
    serving_ = true;
    const auto beforeWait = beforeWait_;  // a copy: it may end itself
    const std::optional<Millis> longest = beforeWait();
    serving_ = false;
    Disarm();
    if (longest && beforeWait_) {
        Arm(std::max<Millis>(*longest, 0));
    }
}

void WaitLoop::ForgetEnded() {
    if (depth_ == 0 && watchDepth_ == 0) {
        ended_.clear();
    }
}

void WaitLoop::Arm(Millis longest) {
    // At most an hour at a time: whoever waits longer comes back.
    timer_ = startTimer(static_cast<int>(std::min<Millis>(longest, 3'600'000)), Qt::PreciseTimer);
}

void WaitLoop::timerEvent(QTimerEvent* /*event*/) {
    Disarm();
}

void WaitLoop::Disarm() {
    if (timer_ != 0) {
        killTimer(std::exchange(timer_, 0));
    }
}

void WaitLoop::Watch(int descriptor, std::function<void()> onReadable) {
    const auto former = watches_.find(descriptor);
    if (former != watches_.end()) {
        former->second->notifier.setEnabled(false);
        ended_.push_back(std::move(former->second));
        watches_.erase(former);
    }
    if (onReadable) {
        watches_[descriptor] =
            std::make_unique<Watched>(descriptor, std::move(onReadable), watchDepth_);
    }
}

}  // namespace platform::desktop

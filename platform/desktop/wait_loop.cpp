#include "platform/desktop/wait_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <utility>

namespace platform::desktop {

struct WaitLoop::Watched {
    Watched(int descriptor, std::function<void()> function)
        : notifier(descriptor, QSocketNotifier::Read), onReadable(std::move(function)) {
        QObject::connect(&notifier, &QSocketNotifier::activated, &notifier,
                         [this] { onReadable(); });
    }

    QSocketNotifier notifier;
    std::function<void()> onReadable;
};

WaitLoop::WaitLoop() = default;
WaitLoop::~WaitLoop() = default;

void WaitLoop::Turn(std::optional<Millis> longest) {
    if (depth_ == 0) {
        ended_.clear();
    }
    const bool waits = !longest || *longest > 0;
    Disarm();
    if (longest && waits) {
        // At most an hour at a time: whoever waits longer comes back.
        timer_ =
            startTimer(static_cast<int>(std::min<Millis>(*longest, 3'600'000)), Qt::PreciseTimer);
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
        watches_[descriptor] = std::make_unique<Watched>(descriptor, std::move(onReadable));
    }
}

}  // namespace platform::desktop

// The half of the window system that happens in time: messages, drops, timers, the pump and
// waiting.
#include <algorithm>
#include <cstdio>
#include <utility>

#include "platform/windows/window_system.h"
#include "platform/windows/window_system_detail.h"

namespace platform {

namespace {

// A procedure that calls itself without end, because it is its own predecessor or sends itself what
// it handles, would use up the stack. What users, hosts and waits within waits bring about is a few
// calls deep; the stack bears thousands.
constexpr std::ptrdiff_t kDeepest = 32;

class GuardedProc {
  public:
    explicit GuardedProc(WindowProc proc) : state_(std::make_shared<State>()) {
        state_->proc = std::move(proc);
    }

    Long operator()(const Message& message) const {
        const std::shared_ptr<State> state = state_;  // the call may put another one in this place
        std::vector<Long>& running = state->running;
        if (std::count(running.begin(), running.end(), message.id) >= kDeepest) {
            Complain(message);
            return 0;
        }
        struct Run {
            std::vector<Long>& running;
            ~Run() { running.pop_back(); }
        };
        running.push_back(message.id);
        const Run run{running};
        return state->proc(message);
    }

  private:
    struct State {
        WindowProc proc;
        std::vector<Long> running;  ///< ids of the messages that it is handling, the latest last
    };

    static void Complain([[maybe_unused]] const Message& message) {
#ifndef NDEBUG
        std::fprintf(stderr, "window %d: message %d is handled within itself without end\n",
                     static_cast<int>(message.window), static_cast<int>(message.id));
#endif
    }

    std::shared_ptr<State> state_;
};

// Does something when a scope is left, be it because a procedure throws.
template <typename Call>
class AtTheEnd {
  public:
    explicit AtTheEnd(Call call) : call_(std::move(call)) {}
    ~AtTheEnd() { call_(); }
    AtTheEnd(const AtTheEnd&) = delete;
    AtTheEnd& operator=(const AtTheEnd&) = delete;

  private:
    Call call_;
};

}  // namespace

WindowProc WindowSystem::Window::Guarded(WindowProc proc) {
    const bool isGuarded = !proc || proc.target<GuardedProc>() != nullptr;
    return isGuarded ? std::move(proc) : WindowProc(GuardedProc(std::move(proc)));
}

Long WindowSystem::SendMessage(Handle window, Long id, Long wParam, Long lParam) {
    const Window* found = Find(window);
    if (found == nullptr || !found->proc) {
        return 0;
    }
    const Dispatching dispatching(*this);
    const WindowProc proc = found->proc;  // a copy: the procedure may take itself out
    return proc({window, id, wParam, lParam});
}

void WindowSystem::PostMessage(Handle window, Long id, Long wParam, Long lParam) {
    if (IsWindow(window)) {
        posted_.push_back({window, id, wParam, lParam});
    }
}

WindowProc WindowSystem::SetWindowProc(Handle window, WindowProc proc) {
    Window* found = Find(window);
    return found != nullptr ? std::exchange(found->proc, Window::Guarded(std::move(proc)))
                            : WindowProc();
}

WindowProc WindowSystem::GetWindowProc(Handle window) const {
    const Window* found = Find(window);
    return found != nullptr ? found->proc : WindowProc();
}

Long WindowSystem::CallWindowProc(const WindowProc& proc, const Message& message) {
    return proc ? proc(message) : 0;
}

void WindowSystem::SendCopyData(Handle window, CopyDataRecord record) {
    const Handle name = ++lastHandle_;
    records_[name] = std::move(record);
    const AtTheEnd forget([this, name] { records_.erase(name); });
    SendMessage(window, WM_COPYDATA, 0, name);
}

const CopyDataRecord* WindowSystem::CopyData(Long lParam) const {
    const auto found = records_.find(lParam);
    return found == records_.end() ? nullptr : &found->second;
}

void WindowSystem::SetDropTarget(Handle window, DropTarget target) {
    if (Window* found = Find(window)) {
        found->dropTarget = std::move(target);
    }
}

void WindowSystem::DropFiles(Handle window, std::vector<std::string> paths) {
    for (Handle at = window; at != 0; at = GetParent(at)) {
        const Window* found = Find(at);
        if (found != nullptr && found->dropTarget) {
            const Dispatching dispatching(*this);
            const DropTarget target = found->dropTarget;
            target(paths);
            return;
        }
    }
    const Handle top = GetTopLevel(window);
    if ((GetWindowLong(top, GWL_EXSTYLE) & WS_EX_ACCEPTFILES) == 0) {
        return;
    }
    const Handle drop = ++lastHandle_;
    drops_[drop] = std::move(paths);
    const AtTheEnd forget([this, drop] { drops_.erase(drop); });
    SendMessage(top, WM_DROPFILES, drop, 0);
}

Long WindowSystem::DragQueryFileCount(Handle drop) const {
    const auto found = drops_.find(drop);
    return found == drops_.end() ? 0 : static_cast<Long>(found->second.size());
}

std::string WindowSystem::DragQueryFile(Handle drop, Long index, std::size_t bufferSize) const {
    const auto found = drops_.find(drop);
    if (found == drops_.end() || index < 0 || index >= DragQueryFileCount(drop)) {
        return {};
    }
    return found->second[static_cast<std::size_t>(index)].substr(0, bufferSize);
}

void WindowSystem::DragFinish(Handle drop) {
    drops_.erase(drop);
}

void WindowSystem::SetTimer(Handle window, Long id, Long period, TimerProc proc) {
    if (!IsWindow(window)) {
        return;
    }
    KillTimer(window, id);
    period = std::max(period, 1);
    due_.push_back({Now() + period,
                    ++lastOrder_,
                    window,
                    id,
                    period,
                    std::move(proc),
                    {},
                    driver_.Lateness(period)});
}

void WindowSystem::KillTimer(Handle window, Long id) {
    std::erase_if(due_, [&](const Due& due) { return due.window == window && due.id == id; });
}

std::vector<std::pair<Long, Long>> WindowSystem::Timers(Handle window) const {
    std::vector<std::pair<Long, Long>> timers;
    for (const Due& due : due_) {
        if (due.window == window && window != 0) {
            timers.emplace_back(due.id, due.period);
        }
    }
    std::sort(timers.begin(), timers.end());
    return timers;
}

void WindowSystem::Schedule(Millis delay, std::function<void()> call) {
    const Millis when = Now() + std::max<Millis>(delay, 0);
    due_.push_back({when, ++lastOrder_, 0, 0, 0, {}, std::move(call)});
}

std::optional<Millis> WindowSystem::NextDue() const {
    const auto latest = [](const Due& due) { return due.when + due.lateness; };
    const auto first = std::min_element(due_.begin(), due_.end(), [&](const Due& a, const Due& b) {
        return latest(a) < latest(b);
    });
    return first == due_.end() ? std::nullopt : std::optional(latest(*first));
}

bool WindowSystem::RunNextDue(Millis until) {
    const auto first = std::min_element(due_.begin(), due_.end(),
                                        [](const Due& a, const Due& b) { return a.Before(b); });
    if (first == due_.end() || first->when > until) {
        return false;
    }
    const Dispatching dispatching(*this);
    if (first->window == 0) {
        const auto call = std::move(first->call);
        due_.erase(first);
        call();
        return true;
    }
    // The next beat is set before the call, so that a callback which pumps goes on being called.
    // Beats that were missed by a busy thread are dropped, not made up for.
    first->when += first->period;
    if (first->when <= until) {
        first->when = until + first->period;
    }
    const Handle window = first->window;
    const Long id = first->id;
    const TimerProc timer = first->timer;
    timer(window, id);
    return true;
}

void WindowSystem::DeliverPosted() {
    // What is posted meanwhile waits for the next pump, else two windows could keep us here for
    // ever.
    for (std::size_t count = posted_.size(); count > 0 && !posted_.empty(); --count) {
        const Message message = posted_.front();
        posted_.pop_front();
        SendMessage(message.window, message.id, message.wParam, message.lParam);
    }
}

std::optional<DriverEvent> WindowSystem::NextEvent() {
    if (kept_.empty()) {
        return driver_.NextEvent();
    }
    DriverEvent event = std::move(kept_.front());
    kept_.pop_front();
    return event;
}

void WindowSystem::DoEvents() {
    while (const auto event = NextEvent()) {
        Deliver(*event);
    }
    DeliverPosted();
    for (const Millis now = Now(); RunNextDue(now);) {
    }
    UpdateScreen();
}

void WindowSystem::RunUntil(Millis deadline) {
    for (;;) {
        DoEvents();
        if (Now() >= deadline) {
            return;
        }
        driver_.WaitUntil(HasPending() ? Now() : std::min(deadline, NextDue().value_or(deadline)));
    }
}

void WindowSystem::Sleep(Millis duration) {
    RunUntil(Now() + std::max<Millis>(duration, 0));
}

void WindowSystem::WaitMessage() {
    UpdateScreen();
    if (!HasPending()) {
        driver_.WaitUntil(NextDue());
    }
    DoEvents();
}

std::optional<Millis> WindowSystem::TakeTurn() {
    DoEvents();
    return HasPending() ? Now() : NextDue();
}

void WindowSystem::RunWhile(const std::function<bool()>& goesOn) {
    while (goesOn()) {
        if (const auto event = NextEvent()) {
            Deliver(*event);
            continue;
        }
        DeliverPosted();
        for (const Millis now = Now(); goesOn() && RunNextDue(now);) {
        }
        UpdateScreen();
        if (goesOn() && !HasPending()) {
            driver_.WaitUntil(NextDue());
        }
    }
}

void WindowSystem::WaitKeepingInput(const std::function<bool()>& goesOn, const Keeps& keeps) {
    constexpr Millis kBetweenLooks = 10;
    Millis next = Now();
    do {
        driver_.WaitUntil(std::min(next, NextDue().value_or(next)));
        while (auto event = driver_.NextEvent()) {
            if (keeps(*event)) {
                kept_.push_back(std::move(*event));
            }
        }
        for (const Millis now = Now(); RunNextDue(now);) {
        }
        UpdateScreen();
        next = Now() + kBetweenLooks;
    } while (goesOn());
}

bool WindowSystem::ExpectsInput() const {
    return driver_.ExpectsInput() || HasPending() ||
           std::any_of(due_.begin(), due_.end(), [](const Due& due) { return due.window == 0; });
}

void WindowSystem::DeferDelete(std::shared_ptr<void> object) {
    if (depth_ > 0) {
        graveyard_.push_back(std::move(object));
    }
}

void WindowSystem::LeaveDispatch() {
    if (--depth_ == 0) {
        // Taken out first: what dies may destroy windows of its own.
        const std::vector<std::shared_ptr<void>> dead = std::exchange(graveyard_, {});
    }
}

}  // namespace platform

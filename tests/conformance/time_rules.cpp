// Time, waiting, watched descriptors, chance.
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <thread>

#include "tests/conformance/trial.h"

namespace conformance {

namespace {

constexpr Millis kLong = 3000;
constexpr Millis kAtOnce = 1000;  // a busy machine may take so long for what is done at once

class Pipe {
  public:
    Pipe() {
        if (pipe(ends_.data()) != 0) {
            throw std::runtime_error("no pipe is to be had");
        }
    }
    ~Pipe() {
        close(ends_[0]);
        close(ends_[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int Descriptor() const { return ends_[0]; }
    void Put() {
        Trial::Require(write(ends_[1], "x", 1) == 1, "a byte cannot be written");
        ++bytes_;
    }
    /// Whether there was a byte. Never waits for one.
    bool Take() {
        char byte = 0;
        return bytes_ > 0 && read(ends_[0], &byte, 1) == 1 && bytes_-- > 0;
    }

  private:
    std::array<int, 2> ends_{};
    int bytes_ = 0;
};

void NeverGoesBack(Trial& trial) {
    Millis last = trial.Desktop().Now();
    for (int i = 0; i < 50; ++i) {
        trial.Desktop().WaitUntil(last + i % 3);
        const Millis now = trial.Desktop().Now();
        Trial::Require(now >= last, "Now answers less than before");
        last = now;
    }
}

void WaitsUntilTheDeadline(Trial& trial) {
    constexpr Millis kWait = 60;
    constexpr int kMostTurns = 30;
    trial.Settle();
    const Millis deadline = trial.Desktop().Now() + kWait;
    int turns = 0;
    while (trial.Desktop().Now() < deadline) {
        Trial::Require(++turns <= kMostTurns, "WaitUntil returns early, though nothing happens");
        trial.Desktop().WaitUntil(deadline);
    }
    Trial::Require(trial.Desktop().Now() < deadline + kAtOnce,
                   "WaitUntil returns long after its deadline");
}

void DoesNotWaitForThePast(Trial& trial) {
    trial.Settle();
    const Millis before = trial.Desktop().Now();
    trial.Desktop().WaitUntil(before - 1);
    trial.Desktop().WaitUntil(before);
    Trial::Require(trial.Desktop().Now() - before < kAtOnce, "it waits, though the time is past");
}

void WithoutEventsThereIsNone(Trial& trial) {
    trial.Settle();
    const Millis before = trial.Desktop().Now();
    Trial::Require(!trial.Desktop().NextEvent(), "NextEvent invents one");
    Trial::Require(trial.Desktop().Now() - before < kAtOnce, "NextEvent waits");
}

void DoesNotWaitWhileAnEventWaits(Trial& trial) {
    trial.Open({100, 100, 200, 160});
    Trial::Need(trial.Around().MovePointer({130, 120}));
    for (int i = 0; i < 5; ++i) {
        trial.Desktop().WaitUntil(trial.Desktop().Now() + kLong);
    }
    const Millis before = trial.Desktop().Now();
    trial.Desktop().WaitUntil(before + kLong);
    Trial::Require(trial.Desktop().Now() - before < kAtOnce, "it waits, though an event waits");
    Trial::Require(trial.Desktop().ExpectsInput(),
                   "ExpectsInput answers False, though an event waits");
    Trial::Require(trial.Desktop().NextEvent().has_value(), "the event is lost");
}

void WatchIsCalledWhenThereIsSomething(Trial& trial) {
    Pipe pipe;
    int calls = 0;
    std::thread::id caller;
    trial.Desktop().Watch(pipe.Descriptor(), [&] {
        pipe.Take();
        caller = std::this_thread::get_id();
        ++calls;
    });
    trial.Settle();
    Trial::Require(calls == 0, "a watch is called, though nothing can be read");
    pipe.Put();
    trial.Await([&] { return calls > 0; }, "the call of a watch");
    trial.Settle();
    Trial::Require(calls == 1, "a watch is called again, though all has been read");
    Trial::Require(caller == std::this_thread::get_id(), "a watch is called on another thread");
    trial.Desktop().Watch(pipe.Descriptor(), {});
}

void WatchIsCalledFromWaitsAlone(Trial& trial) {
    Pipe pipe;
    int calls = 0;
    pipe.Put();
    trial.Desktop().Watch(pipe.Descriptor(), [&] {
        pipe.Take();
        ++calls;
    });
    trial.Desktop().NextEvent();
    trial.Desktop().KeepShown();
    trial.Desktop().Download(u"http://127.0.0.1:9/");
    Trial::Require(calls == 0, "a watch is called from elsewhere than WaitUntil");
    trial.Await([&] { return calls == 1; }, "the call of a watch");
    trial.Desktop().Watch(pipe.Descriptor(), {});
}

void WatchThatEndedIsNotCalled(Trial& trial) {
    Pipe pipe;
    int former = 0;
    int latter = 0;
    trial.Desktop().Watch(pipe.Descriptor(), [&] {
        pipe.Take();
        ++former;
    });
    trial.Desktop().Watch(pipe.Descriptor(), [&] {
        pipe.Take();
        ++latter;
    });
    pipe.Put();
    trial.Await([&] { return latter > 0; }, "the call of a watch that took the place of another");
    Trial::Require(former == 0, "a watch is called, though another has taken its place");
    trial.Desktop().Watch(pipe.Descriptor(), {});
    pipe.Put();
    trial.Settle();
    Trial::Require(latter == 1, "a watch is called after its end");
}

void WatchMayEndItself(Trial& trial) {
    Pipe one;
    Pipe other;
    int calls = 0;
    std::string told;
    const auto onOther = [&] {
        other.Take();
        told += " other";
    };
    // The text is part of the function, and must be there for as long as it runs.
    trial.Desktop().Watch(one.Descriptor(), [&, text = std::string("what the function holds")] {
        ++calls;
        trial.Desktop().Watch(one.Descriptor(), {});
        trial.Desktop().Watch(other.Descriptor(), onOther);
        told = text;
    });
    one.Put();
    other.Put();
    trial.Await([&] { return told == "what the function holds other"; },
                "the call of a watch that was begun within another");
    trial.Settle();
    Trial::Require(calls == 1, "a watch that has ended itself is called again");
    trial.Desktop().Watch(other.Descriptor(), {});
}

// Both can be read when the wait begins. One of them waits in turn, and the other is read there.
void WatchMayWait(Trial& trial) {
    Pipe one;
    Pipe other;
    int calls = 0;
    bool forNothing = false;
    const auto take = [&](Pipe& pipe) {
        forNothing = !pipe.Take() || forNothing;
        ++calls;
        for (int i = 0; i < 3; ++i) {
            trial.Desktop().WaitUntil(trial.Desktop().Now() + 1);
        }
    };
    trial.Desktop().Watch(one.Descriptor(), [&] { take(one); });
    trial.Desktop().Watch(other.Descriptor(), [&] { take(other); });
    one.Put();
    other.Put();
    trial.Await([&] { return calls >= 2; }, "the call of two watches, of which one waits");
    trial.Settle();
    Trial::Require(!forNothing && calls == 2,
                   "a watch is called for what has been read within another one's wait");
    trial.Desktop().Watch(one.Descriptor(), {});
    trial.Desktop().Watch(other.Descriptor(), {});
}

void SeedsAreFresh(Trial& trial) {
    Trial::Require(trial.Desktop().RandomSeed() != trial.Desktop().RandomSeed(),
                   "two seeds are the same");
}

constexpr std::array kTimeRules{
    Rule{"time.never_goes_back", NeverGoesBack},
    Rule{"time.waits_until_the_deadline", WaitsUntilTheDeadline},
    Rule{"time.does_not_wait_for_the_past", DoesNotWaitForThePast},
    Rule{"time.without_events_there_is_none", WithoutEventsThereIsNone},
    Rule{"time.does_not_wait_while_an_event_waits", DoesNotWaitWhileAnEventWaits},
    Rule{"watch.is_called_when_there_is_something", WatchIsCalledWhenThereIsSomething},
    Rule{"watch.is_called_from_waits_alone", WatchIsCalledFromWaitsAlone},
    Rule{"watch.is_not_called_after_its_end", WatchThatEndedIsNotCalled},
    Rule{"watch.may_end_itself", WatchMayEndItself},
    Rule{"watch.may_wait", WatchMayWait},
    Rule{"chance.seeds_are_fresh", SeedsAreFresh},
};

}  // namespace

std::span<const Rule> RulesOfTime() {
    return kTimeRules;
}

}  // namespace conformance

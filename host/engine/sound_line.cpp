#include "host/engine/sound_line.h"

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

#include "host/engine/come_first.h"
#include "host/engine/stragglers.h"
#include "platform/base/signals_held.h"

namespace veldrin {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// After so much silence the device is let go, so that the desktop can put it to sleep.
constexpr Time kSilenceBeforeRest = std::chrono::seconds(1);
// A thread that waits for its device this long is not waited for.
constexpr milliseconds kPatienceWithLine(500);
constexpr milliseconds kBetweenQuestions(50);

}  // namespace

/// Wakes the thread. Decoders hold it, too: none of them shall be the last to hold the output,
/// whose file is complete only when it goes.
struct SoundLine::Bell {
    void Ring() {
        const std::lock_guard lock(mutex);
        woken = true;
        changed.notify_all();
    }
    std::mutex mutex;
    std::condition_variable changed;
    bool woken = false;
};

/// What both threads hold; whoever is last clears it away.
struct SoundLine::Shared {
    explicit Shared(std::shared_ptr<AudioOutput> theOutput) : output(std::move(theOutput)) {}

    struct Change {
        enum class Kind { kBehind, kInstead, kRestore };
        Kind kind;
        Playout::Entry entry;
    };
    struct Orders {
        std::vector<Change> changes;
        bool paused = false;
        double gain = 1.0;
        Effects effects;
    };

    // The thread's own.
    void Turnover(std::unique_lock<std::mutex>& lock);
    void Turn(const Orders& orders);
    void Make(const Change& change);
    bool MayRest();
    void Step();
    void WriteTail();
    void NoteProgress();
    void NoteHeard();
    std::int64_t HeardNow() const;
    bool IsAllHeard() const;

    // The others'.
    template <typename F>
    void Set(const F& set) {
        const std::lock_guard lock(mutex);
        set(orders);
        woken = true;
        changed.notify_all();
    }
    void Order(Change change);

    const std::shared_ptr<AudioOutput> output;
    Timeline timeline;
    Playout playout{timeline};
    std::vector<float> frames;  // kept for its memory
    std::int64_t silence = 0;   // frames of it in a row

    const std::shared_ptr<Bell> bell = std::make_shared<Bell>();
    std::mutex& mutex = bell->mutex;  // guards the rest
    std::condition_variable& changed = bell->changed;
    bool& woken = bell->woken;
    Orders orders;
    unsigned ordered = 0;  // changes so far
    unsigned made = 0;     // of them
    bool ends = false;
    bool finishes = false;
    bool ended = false;
    bool rests = true;
    int rate = 0;
    std::int64_t heard = 0;
    Clock::time_point heardAt;
    Straggler straggler;
};

/// Makes what has been ordered. Whatever would click has faded out before.
void SoundLine::Shared::Turn(const Orders& wanted) {
    playout.SetGain(wanted.gain);
    playout.SetEffects(wanted.effects);
    const bool replaces =
        std::any_of(wanted.changes.begin(), wanted.changes.end(),
                    [](const Change& change) { return change.kind == Change::Kind::kInstead; });
    const bool pauses = wanted.paused && !playout.IsPaused();
    if ((replaces || pauses || playout.IsTurnDue()) && playout.Sounds()) {
        frames.clear();
        playout.FadeOut(frames);
        output->Write(frames);
    }
    for (const Change& change : wanted.changes) {
        Make(change);
    }
    playout.SetPaused(wanted.paused);
    while (playout.IsTurnDue()) {
        playout.Turn();
    }
}

void SoundLine::Shared::Make(const Change& change) {
    const Playout::Entry& entry = change.entry;
    if (entry.item != nullptr && playout.Rate() != entry.item->Rate()) {
        output->Begin(entry.item->Rate());
        playout.Begin(entry.item->Rate());
        const std::lock_guard lock(mutex);
        rate = entry.item->Rate();
        heard = 0;
    }
    switch (change.kind) {
        case Change::Kind::kBehind:
            playout.Append(entry);
            break;
        case Change::Kind::kInstead:
            playout.Replace(entry);
            break;
        case Change::Kind::kRestore:
            playout.Restore(entry);
            break;
    }
}

/// One round of the thread; what takes time is done without the mutex.
void SoundLine::Shared::Turnover(std::unique_lock<std::mutex>& lock) {
    Orders taken = orders;
    orders.changes.clear();
    woken = false;
    const unsigned count = ordered;
    const bool isEnd = finishes;
    lock.unlock();
    Turn(taken);
    taken.changes.clear();  // an item that has gone goes now
    const bool mayRest = MayRest();
    const bool isDone = mayRest && isEnd && playout.IsEmpty();
    lock.lock();
    made = count;
    const bool lieDown = mayRest && !rests;
    rests = rests && mayRest;
    lock.unlock();
    if (!mayRest) {
        Step();
    } else if (isDone && output->IsFile() && playout.Rate() > 0) {
        WriteTail();
    }
    if (lieDown) {
        NoteHeard();
        output->Rest();
    }
    lock.lock();
    rests = mayRest;
    if (isDone) {
        finishes = false;
        changed.notify_all();
    }
    if (mayRest) {
        changed.wait(lock, [&] { return woken || ends; });
    }
}

/// Whether there is nothing to be written for the time being.
bool SoundLine::Shared::MayRest() {
    if (playout.Rate() == 0) {
        return true;
    }
    if (output->IsFile()) {
        return playout.IsPaused() || !playout.HasFrames();
    }
    return (playout.IsPaused() || playout.IsEmpty()) &&
           TimeOf(silence, playout.Rate()) >= kSilenceBeforeRest;
}

void SoundLine::Shared::Step() {
    const auto most = static_cast<std::size_t>(FramesIn(output->Portion(), playout.Rate()));
    frames.clear();
    playout.Render(frames, most, output->IsFile() ? Playout::Gaps::kNone : Playout::Gaps::kSilence);
    silence = playout.Sounds() ? 0 : silence + static_cast<std::int64_t>(most);
    output->Write(frames);
    NoteProgress();
}

/// A file gets what tempo and pitch still hold of the last item.
void SoundLine::Shared::WriteTail() {
    const auto most = static_cast<std::size_t>(FramesIn(output->Portion(), playout.Rate()));
    do {
        frames.clear();
        playout.Render(frames, most, Playout::Gaps::kTail);
        output->Write(frames);
    } while (!frames.empty());
}

/// Asking the device costs as much as writing to it, so it is not done each time.
void SoundLine::Shared::NoteProgress() {
    if (output->IsFile() || Clock::now() - heardAt >= kBetweenQuestions) {
        NoteHeard();
    } else if (output->IsLooking()) {
        const std::lock_guard lock(mutex);
        changed.notify_all();
    }
}

void SoundLine::Shared::NoteHeard() {
    const std::int64_t count = output->Heard();
    timeline.Heard(count);
    const std::lock_guard lock(mutex);
    heard = count;
    heardAt = Clock::now();
    changed.notify_all();
}

/// To be called with the mutex held.
std::int64_t SoundLine::Shared::HeardNow() const {
    if (rests || rate == 0 || output->IsFile()) {
        return heard;
    }
    return std::min(timeline.FramesWritten(), heard + FramesIn(Clock::now() - heardAt, rate));
}

bool SoundLine::Shared::IsAllHeard() const {
    return made == ordered && playout.FramesLeft() == 0 &&
           (rests || timeline.ReadAt(HeardNow()) >= static_cast<double>(playout.EndOfItems() - 1));
}

SoundLine::SoundLine(std::shared_ptr<AudioOutput> output)
    : shared_(std::make_shared<Shared>(std::move(output))) {
    const platform::SignalsHeld held;
    thread_ = std::thread([shared = shared_] { Run(shared); });
}

SoundLine::~SoundLine() {
    std::unique_lock lock(shared_->mutex);
    shared_->ends = true;
    shared_->changed.notify_all();
    const bool ended =
        shared_->changed.wait_for(lock, kPatienceWithLine, [&] { return shared_->ended; });
    lock.unlock();
    if (ended) {
        thread_.join();
    } else {
        thread_.detach();
    }
}

void SoundLine::Shared::Order(Change change) {
    const std::lock_guard lock(mutex);
    if (change.kind == Change::Kind::kInstead) {
        orders.changes.clear();
    }
    orders.changes.push_back(std::move(change));
    ++ordered;
    woken = true;
    changed.notify_all();
    output->Hurry();
}

void SoundLine::Play(Playout::Entry entry, bool behind) {
    using Kind = Shared::Change::Kind;
    shared_->Order({behind ? Kind::kBehind : Kind::kInstead, std::move(entry)});
}

void SoundLine::Jumped(Playout::Entry entry) {
    shared_->Order({Shared::Change::Kind::kRestore, std::move(entry)});
}

void SoundLine::SetPaused(bool paused) {
    shared_->Set([&](Shared::Orders& orders) { orders.paused = paused; });
}
void SoundLine::SetGain(double gain) {
    shared_->Set([&](Shared::Orders& orders) { orders.gain = gain; });
}
void SoundLine::SetEffects(const Effects& effects) {
    shared_->Set([&](Shared::Orders& orders) { orders.effects = effects; });
}

std::function<void()> SoundLine::Waker() const {
    if (!shared_->output->IsFile()) {
        return [] {};  // it never waits for more
    }
    return [bell = shared_->bell] { bell->Ring(); };
}

int SoundLine::Rate() const {
    if (const int fixed = shared_->output->FixedRate(); fixed > 0) {
        return fixed;
    }
    const std::lock_guard lock(shared_->mutex);
    return shared_->IsAllHeard() ? 0 : shared_->rate;
}

Timeline::Place SoundLine::Heard() const {
    const std::lock_guard lock(shared_->mutex);
    return shared_->timeline.PlaceOf(shared_->HeardNow());
}

std::optional<SoundLine::Left> SoundLine::LeftToHear() const {
    const std::lock_guard lock(shared_->mutex);
    if (shared_->made != shared_->ordered) {
        return std::nullopt;
    }
    const Timeline& timeline = shared_->timeline;
    const auto behind = static_cast<double>(shared_->playout.FramesLeft());
    const auto end = static_cast<double>(shared_->playout.EndOfItems());
    const auto lasts = [&](std::int64_t written) {
        const double frames = behind + std::max(0.0, end - timeline.ReadAt(written));
        return Time(
            std::llround(frames * 1e9 / shared_->playout.Tempo() / std::max(1, shared_->rate)));
    };
    return Left{lasts(shared_->HeardNow()), lasts(timeline.FramesWritten())};
}

void SoundLine::Finish(milliseconds longest) {
    std::unique_lock lock(shared_->mutex);
    shared_->finishes = true;
    shared_->woken = true;
    shared_->changed.notify_all();
    shared_->changed.wait_for(lock, longest, [&] {
        return shared_->output->IsFile() ? !shared_->finishes : shared_->IsAllHeard();
    });
}

bool SoundLine::WaitForLook(std::chrono::nanoseconds longest) const {
    std::unique_lock lock(shared_->mutex);
    return shared_->changed.wait_for(lock, longest, [&] { return !shared_->output->IsLooking(); });
}

void SoundLine::Run(const std::shared_ptr<Shared>& shared) {
    if (!shared->output->IsFile()) {
        ComeFirst();
    }
    std::unique_lock lock(shared->mutex);
    while (!shared->ends) {
        shared->Turnover(lock);
    }
    shared->ended = true;
    shared->changed.notify_all();
}

}  // namespace veldrin

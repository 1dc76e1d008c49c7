#include "host/engine/opener.h"

#include <algorithm>
#include <utility>

#include "host/engine/tag_file.h"
#include "platform/base/text.h"
#include "platform/files/files.h"

namespace veldrin {

namespace {

using std::chrono::milliseconds;

/// Nobody notices a window that stands still for so long.
constexpr milliseconds kUnnoticed(100);
/// Openings so close upon each other are a row of them, such as the dead items of a list, between
/// which the caller does nothing else.
constexpr milliseconds kInARow(20);

/// Only a regular file is; a FIFO would be waited for and a directory read from.
bool HandsOutBytes(const std::string& path) {
    platform::FileReader file(platform::Widen(path));
    std::string bytes;
    return file.IsOpen() && file.Append(bytes);
}

Opener::Opened OpenedBy(const Decoder::Plan& plan, const std::function<void()>& changed) {
    Opener::Opened opened{std::make_unique<Item>(changed)};
    if (!opened.item->Prepare(plan)) {
        opened.item.reset();
    } else if (opened.item->Length() == Time(0)) {
        opened.taggedLength = ReadSoundFacts(plan.path).length;
    }
    return opened;
}

}  // namespace

bool Opener::Answers(const std::string& path) {
    const auto answers = std::make_shared<bool>(false);
    return Do(path, [path, answers] { *answers = HandsOutBytes(path); }) && *answers;
}

Opener::Opened Opener::Open(Decoder::Plan plan, const std::function<void()>& changed) {
    const auto opened = std::make_shared<Opened>();
    const auto givenUp = std::make_shared<std::atomic<bool>>(false);
    plan.patience = slow_.PatienceFor(plan.path);
    plan.givenUp = givenUp;
    if (!Do(plan.path, [plan, changed, opened] { *opened = OpenedBy(plan, changed); })) {
        *givenUp = true;
        return {};
    }
    return std::move(*opened);
}

bool Opener::Await(const WaitFor& waitFor) {
    constexpr std::chrono::hours kNoEnd(24);
    return WaitUntil(Clock::now() + kNoEnd, waitFor);
}

/// Does one step of opening the file; whether it was done in time. If not, it is left behind.
bool Opener::Do(const std::string& path, std::function<void()> work) {
    if (isWaiting_ || ends_) {
        return false;
    }
    const auto patience = slow_.PatienceFor(path);
    const auto deadline = Clock::now() + patience;
    opening_.Begin(std::move(work));
    const bool done = WaitUntil(
        deadline, [this](std::chrono::nanoseconds longest) { return opening_.WaitFor(longest); });
    if (!done) {
        opening_.LeaveBehind();
    }
    if (!ends_ && Clock::now() >= deadline) {
        slow_.Note(path);
    } else {
        slow_.Forget(path);
    }
    return done;
}

bool Opener::WaitUntil(Clock::time_point deadline, const WaitFor& waitFor) {
    const auto now = Clock::now();
    if (now - leftAt_ > kInARow) {
        turnedAt_ = now;
    }
    const auto stillUntil = wait_ ? std::min(deadline, turnedAt_ + kUnnoticed) : deadline;
    const std::chrono::nanoseconds none(0);
    waitFor(std::max(none, std::chrono::nanoseconds(stillUntil - now)));
    if (wait_ && Clock::now() >= turnedAt_ + kUnnoticed) {
        isWaiting_ = true;
        ends_ = !wait_([&] { return waitFor(none) || Clock::now() >= deadline; });
        isWaiting_ = false;
        turnedAt_ = Clock::now();
    }
    leftAt_ = Clock::now();
    return waitFor(none) && !ends_;
}

}  // namespace veldrin

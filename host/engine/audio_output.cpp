#include "host/engine/audio_output.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace veldrin {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Longer than a device that is there takes to be opened, too short to be missed by a listener.
constexpr milliseconds kHeldUpAtMost(300);
// A device that goes as soon as it has come is not tried again at once.
constexpr seconds kInVain(1);
constexpr milliseconds kBetweenLooks(1000);
// Lasting so long, it was worth being told of; else a device that comes and goes would be told of
// again and again.
constexpr seconds kWorthTelling(10);

// What a device is begun with at least. A list may begin with a memo of 8,000 Hz; what is joined to
// it without a gap would sound as dull.
constexpr int kDeviceRate = 44100;
constexpr int kSmallest = 8000;

}  // namespace

AudioOutput::AudioOutput(const Output& choice) : choice_(choice) {
    if (choice_.kind == Output::Kind::kFile) {
        writer_ = std::make_unique<WavWriter>(choice_.path);
        drain_ = MakeFileDrain(*writer_);
    }
}

AudioOutput::~AudioOutput() = default;

int AudioOutput::SmallestRate() const {
    return choice_.kind == Output::Kind::kAuto ? kDeviceRate : kSmallest;
}

void AudioOutput::FinishFile() {
    if (writer_ != nullptr) {
        writer_->Finish();
    }
}

void AudioOutput::Start() {
    if (choice_.kind != Output::Kind::kAuto) {
        return;
    }
    OpenedDevice opened = OpenDevice();
    if (opened.drain == nullptr) {
        GoSilent("No sound device found; playing silently");
        return;
    }
    drain_ = std::move(opened.drain);
    openedAt_ = Clock::now();
    const std::lock_guard lock(mutex_);
    device_ = opened.name;
}

void AudioOutput::Begin(int rate) {
    rate_ = rate;
    written_ = 0;
    writtenBefore_ = 0;
    if (!drain_->Begin(rate)) {
        Replace();
    }
}

void AudioOutput::Write(std::span<const float> frames) {
    if (isLooking_) {
        TakeFound();
    } else if (silent_ && (looksAgain_ || Clock::now() >= lookAt_)) {
        Look(nullptr);
    }
    const bool written = drain_->Write(frames);
    if (!written) {
        Replace();
        drain_->Write(frames);
    }
    written_ += static_cast<std::int64_t>(frames.size() / kSides);
}

std::int64_t AudioOutput::Heard() {
    return writtenBefore_ + drain_->Heard();
}

void AudioOutput::Rest() {
    drain_->Rest();
}

/// What has been written goes on being counted, and what the old one still held counts as heard.
void AudioOutput::Use(std::unique_ptr<Drain> drain) {
    drain_ = std::move(drain);
    writtenBefore_ = written_;
    if (rate_ > 0) {
        drain_->Begin(rate_);
    }
}

/// Looks for a device on another thread, after the one that has gone has been closed there.
void AudioOutput::Look(std::unique_ptr<Drain> gone) {
    looksAgain_ = false;
    isLooking_ = true;
    lookAt_ = Clock::now() + kBetweenLooks;
    found_ = std::make_shared<OpenedDevice>();
    looking_.Begin([found = found_, old = std::shared_ptr<Drain>(std::move(gone))]() mutable {
        old.reset();
        *found = OpenDevice();
    });
}

/// Takes what has been found, if the search is over.
void AudioOutput::TakeFound() {
    if (!looking_.IsDone()) {
        return;
    }
    OpenedDevice device = std::move(*found_);
    found_.reset();
    if (device.drain != nullptr) {
        Use(std::move(device.drain));
        openedAt_ = Clock::now();
        silent_ = false;
        const std::lock_guard lock(mutex_);
        device_ = device.name;
    }
    isLooking_ = false;
}

/// The device has gone. Where there is another one, nothing is missed.
void AudioOutput::Replace() {
    if (choice_.kind != Output::Kind::kAuto) {
        return;
    }
    const auto lasted = Clock::now() - openedAt_;
    const bool inVain = !isNewItem_.exchange(false) && isReplacement_ && lasted < kInVain;
    isReplacement_ = true;
    {
        const std::lock_guard lock(mutex_);
        noticed_ = noticed_ && lasted < kWorthTelling;
    }
    std::unique_ptr<Drain> gone = std::exchange(drain_, MakeSilence(pace_));
    silent_ = true;
    if (inVain) {
        looking_.Begin([old = std::shared_ptr<Drain>(std::move(gone))] {});
        looking_.WaitFor(kHeldUpAtMost);
        lookAt_ = Clock::now() + kBetweenLooks;
    } else {
        Look(std::move(gone));
        looking_.WaitFor(kHeldUpAtMost);
        TakeFound();
    }
    if (silent_) {
        Use(std::move(drain_));
        GoSilent("The sound device has gone; playing silently");
    }
}

void AudioOutput::GoSilent(const char* reason) {
    silent_ = true;
    const std::lock_guard lock(mutex_);
    device_.clear();
    if (!std::exchange(noticed_, true)) {
        notice_ = reason;
    }
}

std::string AudioOutput::ChoiceName() const {
    switch (choice_.kind) {
        case Output::Kind::kFile:
            return "WAV file " + choice_.path;
        case Output::Kind::kNull:
            return "none (silent)";
        case Output::Kind::kAuto:
            break;
    }
    return "sound device";
}

std::string AudioOutput::Name() const {
    if (choice_.kind != Output::Kind::kAuto) {
        return ChoiceName();
    }
    const std::lock_guard lock(mutex_);
    return device_.empty() ? "none found (silent)" : device_;
}

std::string AudioOutput::TakeNotice() {
    const std::lock_guard lock(mutex_);
    if (!Ready() && !std::exchange(noticed_, true)) {
        const int error = writer_->Error();
        notice_ = "Cannot write " + choice_.path + ": " +
                  (error == ENXIO ? "nobody reads from it" : std::strerror(error));
    }
    return std::exchange(notice_, {});
}

}  // namespace veldrin

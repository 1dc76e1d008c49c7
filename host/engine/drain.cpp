#include "host/engine/drain.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "host/engine/wav_writer.h"

namespace veldrin {

namespace {

using Clock = std::chrono::steady_clock;

class Silence : public Drain {
  public:
    explicit Silence(Pace& pace) : pace_(pace) {}

    bool Begin(int rate) override {
        rate_ = rate;
        written_ = 0;
        Rest();
        return true;
    }

    bool Write(std::span<const float> frames) override {
        // Whoever was held up for longer has missed something; it is not made up for in a rush.
        const auto now = Clock::now();
        if (!rests_ && now - until_ > kHeldUp) {
            rests_ = true;
        }
        if (std::exchange(rests_, false)) {
            until_ = now;
        }
        const auto begins = until_;
        const auto count = static_cast<std::int64_t>(frames.size() / kSides);
        until_ += TimeOf(count, rate_);
        written_ += count;
        pace_.Until(begins);
        return true;
    }

    std::int64_t Heard() override {
        const auto left = std::max(Clock::duration(0), until_ - Clock::now());
        return rests_ ? written_ : std::max<std::int64_t>(0, written_ - FramesIn(left, rate_));
    }

    void Rest() override { rests_ = true; }
    Time Portion() const override { return std::chrono::milliseconds(50); }

  private:
    static constexpr std::chrono::milliseconds kHeldUp{500};
    Pace& pace_;
    int rate_ = 1;
    std::int64_t written_ = 0;
    Clock::time_point until_;  // when all that was taken has been heard
    bool rests_ = true;
};

class FileDrain : public Drain {
  public:
    explicit FileDrain(WavWriter& writer) : writer_(writer) {}

    bool Begin(int rate) override {
        writer_.SetRate(rate);
        written_ = 0;
        return true;
    }
    bool Write(std::span<const float> frames) override {
        writer_.Write(frames);
        written_ += static_cast<std::int64_t>(frames.size() / kSides);
        return true;
    }
    std::int64_t Heard() override { return written_; }
    Time Portion() const override { return std::chrono::milliseconds(100); }

  private:
    WavWriter& writer_;
    std::int64_t written_ = 0;
};

}  // namespace

void Pace::Until(std::chrono::steady_clock::time_point time) {
    std::unique_lock lock(mutex_);
    broken_.wait_until(lock, time, [&] { return breaks_; });
    breaks_ = false;
}

void Pace::Break() {
    const std::lock_guard lock(mutex_);
    breaks_ = true;
    broken_.notify_all();
}

std::unique_ptr<Drain> MakeSilence(Pace& pace) {
    return std::make_unique<Silence>(pace);
}

std::unique_ptr<Drain> MakeFileDrain(WavWriter& writer) {
    return std::make_unique<FileDrain>(writer);
}

}  // namespace veldrin

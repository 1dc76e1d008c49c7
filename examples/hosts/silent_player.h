// A player that makes no sound. In a program of your own this is what you have already.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

/// Lets time pass instead of playing. Seconds, everywhere.
class SilentPlayer {
  public:
    /// `clock`: milliseconds since some start. `length`: of every item.
    SilentPlayer(std::function<std::int64_t()> clock, int length)
        : clock_(std::move(clock)), length_(length) {}

    bool Open(const std::string& /*path*/) {
        isOpen_ = true;
        runs_ = true;
        Seek(0);
        return true;
    }
    void Stop() { isOpen_ = runs_ = false; }
    void Pause() {
        Seek(Position());
        runs_ = false;
    }
    void Toggle() {
        Seek(Position());
        runs_ = isOpen_ && !runs_;
    }
    void Seek(int seconds) {
        base_ = seconds;
        since_ = clock_();
    }
    int Position() const {
        const auto passed = runs_ ? static_cast<int>((clock_() - since_) / 1000) : 0;
        return std::min(base_ + passed, length_);
    }
    int Length() const { return isOpen_ ? length_ : 0; }
    /// True for an item that is paused, too.
    bool IsPlaying() const { return isOpen_ && Position() < length_; }
    bool HasEnded() const { return isOpen_ && !IsPlaying(); }

  private:
    std::function<std::int64_t()> clock_;
    int length_;
    bool isOpen_ = false;
    bool runs_ = false;
    int base_ = 0;
    std::int64_t since_ = 0;
};

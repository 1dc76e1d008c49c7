#include "host/engine/stretch.h"

#include <algorithm>
#include <cmath>

namespace veldrin {

namespace {

// Ends the whole process when it meets 16 channels or more, or a rate of some 192 kHz and above;
// frames never do.
constexpr const char* kElement = "pitch";

}  // namespace

Stretch::Stretch() : element_(line_.Add(kElement)) {}

void Stretch::Begin(int rate, std::int64_t from) {
    line_.Begin(rate);
    ready_.clear();
    taken_ = 0;
    runs_.clear();
    place_ = static_cast<double>(from);
}

void Stretch::Set(const Effects& effects) {
    tempo_ = effects.TempoFactor();
    if (element_ != nullptr) {
        g_object_set(element_, "tempo", tempo_, "pitch", std::exp2(effects.pitch / 12.0), nullptr);
    }
}

void Stretch::Send(std::span<const float> frames) {
    ready_.erase(ready_.begin(), ready_.begin() + static_cast<std::ptrdiff_t>(taken_ * kSides));
    taken_ = 0;
    const std::size_t before = Ready();
    line_.Send(frames, ready_);
    if (const std::size_t more = Ready() - before; more > 0) {
        if (!runs_.empty() && runs_.back().perFrame == tempo_) {
            runs_.back().frames += more;
        } else {
            runs_.push_back({more, tempo_});
        }
    }
}

Stretch::Taken Stretch::Take(std::vector<float>& to, std::size_t most) {
    Taken taken;
    if (runs_.empty()) {
        return taken;
    }
    Run& run = runs_.front();
    taken = {std::min(most, run.frames), place_, run.perFrame};
    const auto from = ready_.begin() + static_cast<std::ptrdiff_t>(taken_ * kSides);
    to.insert(to.end(), from, from + static_cast<std::ptrdiff_t>(taken.frames * kSides));
    taken_ += taken.frames;
    place_ += static_cast<double>(taken.frames) * taken.perFrame;
    run.frames -= taken.frames;
    if (run.frames == 0) {
        runs_.pop_front();
    }
    return taken;
}

}  // namespace veldrin

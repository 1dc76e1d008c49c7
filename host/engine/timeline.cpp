#include "host/engine/timeline.h"

#include <algorithm>
#include <cmath>

namespace veldrin {

namespace {

// Pieces follow each other if their times do so but for what rounding leaves.
constexpr Time kRounding = std::chrono::microseconds(30);

}  // namespace

void Timeline::Begin(int rate) {
    const std::lock_guard lock(mutex_);
    rate_ = rate;
    in_.clear();
    out_.clear();
    read_ = 0;
    written_ = 0;
}

void Timeline::Read(std::int64_t frames, const Place& place) {
    const std::lock_guard lock(mutex_);
    bool follows = false;
    if (!in_.empty() && in_.back().place.item == place.item &&
        in_.back().place.jumps == place.jumps) {
        const Time differs = place.at - in_.back().place.at - TimeOf(in_.back().frames, rate_);
        follows = place.item == 0 || (differs <= kRounding && differs >= -kRounding);
    }
    if (follows) {
        in_.back().frames += frames;
    } else {
        in_.push_back({read_, frames, place});
    }
    read_ += frames;
}

std::int64_t Timeline::FramesRead() const {
    const std::lock_guard lock(mutex_);
    return read_;
}

void Timeline::Wrote(std::int64_t frames, double from, double perFrame) {
    const std::lock_guard lock(mutex_);
    const bool follows = !out_.empty() && out_.back().perFrame == perFrame &&
                         std::abs(out_.back().read +
                                  static_cast<double>(out_.back().frames) * perFrame - from) < 0.5;
    if (follows) {
        out_.back().frames += frames;
    } else {
        out_.push_back({written_, frames, from, perFrame});
    }
    written_ += frames;
}

std::int64_t Timeline::FramesWritten() const {
    const std::lock_guard lock(mutex_);
    return written_;
}

void Timeline::Heard(std::int64_t frames) {
    const std::lock_guard lock(mutex_);
    while (out_.size() > 1 && out_[1].from <= frames) {
        out_.pop_front();
    }
    // A jump back in what was read (a tempo that goes to rest) is of less than a second.
    const auto oldest =
        static_cast<std::int64_t>(ReadAtUnguarded(frames)) - static_cast<std::int64_t>(rate_);
    while (in_.size() > 1 && in_[1].from <= oldest) {
        in_.pop_front();
    }
}

const Timeline::Out* Timeline::OutOf(std::int64_t written) const {
    const auto after =
        std::upper_bound(out_.begin(), out_.end(), written,
                         [](std::int64_t frame, const Out& out) { return frame < out.from; });
    if (after == out_.begin()) {
        return out_.empty() ? nullptr : &out_.front();
    }
    return &*std::prev(after);
}

double Timeline::ReadAtUnguarded(std::int64_t written) const {
    const Out* out = OutOf(written);
    if (out == nullptr) {
        return 0;
    }
    const std::int64_t into = std::clamp<std::int64_t>(written - out->from, 0, out->frames);
    return out->read + static_cast<double>(into) * out->perFrame;
}

double Timeline::ReadAt(std::int64_t written) const {
    const std::lock_guard lock(mutex_);
    return ReadAtUnguarded(written);
}

Timeline::Place Timeline::PlaceOf(std::int64_t written) const {
    const std::lock_guard lock(mutex_);
    const double read = ReadAtUnguarded(written);
    const auto after = std::upper_bound(
        in_.begin(), in_.end(), read,
        [](double frame, const In& in) { return frame < static_cast<double>(in.from); });
    if (after == in_.begin()) {
        return {};
    }
    auto in = std::prev(after);
    while (in != in_.begin() && in->place.item == 0) {
        --in;
    }
    const double into =
        std::clamp(read - static_cast<double>(in->from), 0.0, static_cast<double>(in->frames));
    Place place = in->place;
    place.at += Time(std::llround(into * 1e9 / rate_));
    return place;
}

}  // namespace veldrin

#include "host/engine/item.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace veldrin {

namespace {

constexpr Time kHeldAtLeast = std::chrono::milliseconds(20);
// Decoders round the times of their pieces, some by a whole packet. What differs by more is a gap
// in the medium.
constexpr Time kSameTime = std::chrono::milliseconds(40);

/// Frames of a duration, the nearest number.
std::size_t NearestFrames(GstClockTime from, GstClockTime to, int rate) {
    return to <= from ? 0
                      : static_cast<std::size_t>(
                            std::llround(static_cast<double>(to - from) * rate / 1e9));
}

}  // namespace

bool Item::Prepare(const Decoder::Plan& plan) {
    const bool prepared = decoder_.Prepare(plan);
    rate_ = decoder_.Rate();
    return prepared;
}

bool Item::Jump(Time place) {
    const std::lock_guard lock(mutex_);
    ++jumps_;
    jumpsTo_ = decoder_.Reachable(place);
    return !std::exchange(isJumping_, true);
}

void Item::DoJump() {
    std::unique_lock lock(mutex_);
    unsigned done = 0;
    do {
        done = jumps_;
        const Time place = jumpsTo_;
        lock.unlock();
        decoder_.Seek(place);
        lock.lock();
    } while (done != jumps_);
    isJumping_ = false;
    lock.unlock();
    changed_();
}

unsigned Item::Jumps() const {
    const std::lock_guard lock(mutex_);
    return jumps_;
}

Time Item::JumpsTo() const {
    const std::lock_guard lock(mutex_);
    return jumpsTo_;
}

Item::Piece Item::Read(std::vector<float>& to, std::size_t most) {
    const std::lock_guard lock(mutex_);
    Fill();
    Piece piece;
    piece.jumps = followed_;
    if (next_.empty()) {
        return piece;
    }
    Held& first = next_.front();
    piece.frames = std::min(most, first.Frames());
    piece.at = first.at + TimeOf(static_cast<std::int64_t>(first.used), rate_);
    const auto from = first.samples.begin() + static_cast<std::ptrdiff_t>(first.used * kSides);
    to.insert(to.end(), from, from + static_cast<std::ptrdiff_t>(piece.frames * kSides));
    first.used += piece.frames;
    held_ -= static_cast<std::int64_t>(piece.frames);
    if (first.Frames() == 0) {
        next_.pop_front();
    }
    return piece;
}

bool Item::IsJumpAsked() const {
    const std::lock_guard lock(mutex_);
    return followed_ != jumps_;
}

void Item::FollowJump() {
    const std::lock_guard lock(mutex_);
    followed_ = jumps_;
    next_.clear();
    held_ = 0;
    follows_.reset();
}

bool Item::IsAtEnd() const {
    return IsDecoded() && FramesLeft() == 0;
}

bool Item::HasFrames() {
    const std::lock_guard lock(mutex_);
    Fill();
    return !next_.empty();
}

bool Item::IsDecoded() const {
    const std::lock_guard lock(mutex_);
    return !isJumping_ && followed_ == jumps_ && decoder_.IsOver();
}

/// Takes from the decoder what is to be held, but nothing of a place that has been left.
void Item::Fill() {
    while (!isJumping_ && followed_ == jumps_ && held_ < FramesIn(kHeldAtLeast, rate_)) {
        const SamplePtr sample = decoder_.Take();
        if (sample == nullptr) {
            return;
        }
        Hold(sample.get());
    }
}

void Item::Hold(GstSample* sample) {
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    const GstSegment* segment = gst_sample_get_segment(sample);
    GstMapInfo map = GST_MAP_INFO_INIT;
    if (!gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        return;
    }
    Held held;
    std::size_t frames = map.size / (kSides * sizeof(float));
    std::size_t skipped = 0;
    Time at = follows_.value_or(jumps_ == 0 ? Time(0) : jumpsTo_);
    if (const GstClockTime time = GST_BUFFER_PTS(buffer); GST_CLOCK_TIME_IS_VALID(time)) {
        // What lies outside of the segment is there for the decoder alone.
        const GstClockTime end =
            time +
            static_cast<GstClockTime>(TimeOf(static_cast<std::int64_t>(frames), rate_).count());
        guint64 from = time;
        guint64 to = end;
        if (!gst_segment_clip(segment, GST_FORMAT_TIME, time, end, &from, &to)) {
            frames = 0;
        } else {
            skipped = std::min(frames, NearestFrames(time, from, rate_));
            frames -= std::min(frames, NearestFrames(to, end, rate_));
            const Time told(gst_segment_to_stream_time(segment, GST_FORMAT_TIME, from));
            const Time differs = told - at;
            at = !follows_ || differs > kSameTime || differs < -kSameTime ? told : at;
        }
    }
    if (frames > skipped) {
        const auto* samples = reinterpret_cast<const float*>(map.data);
        held.samples.assign(samples + skipped * kSides, samples + frames * kSides);
        held.at = at;
        const auto count = static_cast<std::int64_t>(held.Frames());
        held_ += count;
        follows_ = at + TimeOf(count, rate_);
        next_.push_back(std::move(held));
    }
    gst_buffer_unmap(buffer, &map);
}

}  // namespace veldrin

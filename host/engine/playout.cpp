#include "host/engine/playout.h"

#include <algorithm>
#include <cmath>

namespace veldrin {

namespace {

// Long enough not to click, short enough to be taken for an immediate end.
constexpr Time kFadeOut = std::chrono::milliseconds(8);
constexpr Time kFadeIn = std::chrono::milliseconds(5);
constexpr Time kGainMoves = std::chrono::milliseconds(10);  // over its whole range
// What the stretching holds back is less than this.
constexpr Time kHistory = std::chrono::milliseconds(700);
constexpr Time kSentAtOnce = std::chrono::milliseconds(10);
constexpr float kInaudible = 1e-6F;

std::size_t Count(Time time, int rate) {
    return static_cast<std::size_t>(FramesIn(time, rate));
}

double PerFrame(Time time, int rate) {
    return 1.0 / static_cast<double>(std::max<std::size_t>(1, Count(time, rate)));
}

double Towards(double target, double from, double step) {
    return from + std::clamp(target - from, -step, step);
}

}  // namespace

void Playout::Begin(int rate) {
    rate_ = rate;
    timeline_.Begin(rate);
    entries_.clear();
    Forget();
}

/// Nothing of what was heard is heard on, and the settings hold from the next frame on.
void Playout::Forget() {
    again_.clear();
    history_.clear();
    effects_.Begin(rate_);
    stretches_ = WantsStretch();
    if (stretches_) {
        stretch_.Set(settings_);
        stretch_.Begin(rate_, timeline_.FramesRead());
    }
    lastOfItems_ = timeline_.FramesRead();
    gainNow_ = gain_;
    level_ = 1.0;
    begun_ = false;
    sounds_ = false;
}

void Playout::Append(Entry entry) {
    if (entries_.empty() && stretches_ && !HoldsTail()) {
        stretch_.Begin(rate_, NextRead());  // without the silence that it holds by now
    }
    entries_.push_back(std::move(entry));
    NoteLeft();
}

void Playout::Restore(Entry entry) {
    const auto isIt = [&](const Entry& other) { return other.number == entry.number; };
    if (std::none_of(entries_.begin(), entries_.end(), isIt)) {
        Append(std::move(entry));
    }
}

void Playout::Replace(Entry entry) {
    entries_.clear();
    Forget();
    if (entry.item != nullptr) {
        entries_.push_back(std::move(entry));
    }
    NoteLeft();
}

void Playout::SetPaused(bool paused) {
    if (paused && !paused_ && begun_) {
        level_ = 0.0;
    }
    paused_ = paused;
}

void Playout::SetGain(double gain) {
    gain_ = gain;
    if (!begun_) {
        gainNow_ = gain;
    }
}

void Playout::SetEffects(const Effects& effects) {
    if (effects == settings_) {
        return;
    }
    settings_ = effects;
    effects_.Set(effects);
    if (stretches_ && settings_.Stretches()) {
        stretch_.Set(effects);
    }
}

bool Playout::IsTurnDue() const {
    return FirstToJump() != entries_.end() || (rate_ > 0 && stretches_ != WantsStretch());
}

std::deque<Playout::Entry>::const_iterator Playout::FirstToJump() const {
    return std::find_if(entries_.begin(), entries_.end(),
                        [](const Entry& entry) { return entry.item->IsJumpAsked(); });
}

void Playout::Turn() {
    if (const auto jumping = FirstToJump(); jumping != entries_.end()) {
        entries_.erase(entries_.begin(), jumping);
        entries_.front().item->FollowJump();
        Forget();
    } else if (stretches_) {
        TakeBack();
        stretches_ = false;
    } else {
        stretches_ = true;
        stretch_.Set(settings_);
        stretch_.Begin(rate_, NextRead());
    }
    level_ = 0.0;
    NoteLeft();
}

/// What tempo and pitch have taken in and not put out is to be read again.
void Playout::TakeBack() {
    const auto held = std::max<std::int64_t>(0, NextRead() - std::llround(stretch_.Place()));
    const auto kept = std::min(static_cast<std::size_t>(held) * kSides, history_.size());
    again_.insert(again_.begin(), history_.end() - static_cast<std::ptrdiff_t>(kept),
                  history_.end());
    history_.clear();
}

void Playout::FadeOut(std::vector<float>& out) {
    const std::size_t before = out.size();
    Render(out, Count(kFadeOut, rate_), Gaps::kSilence);
    const auto frames = static_cast<double>((out.size() - before) / kSides);
    for (std::size_t i = before; i < out.size(); ++i) {
        const auto frame = static_cast<double>((i - before) / kSides);
        out[i] *= static_cast<float>(1.0 - (frame + 1) / frames);
    }
    sounds_ = false;
}

void Playout::Render(std::vector<float>& out, std::size_t most, Gaps gaps) {
    const std::size_t before = out.size();
    if (!paused_ && stretches_) {
        RenderStretched(out, most, gaps != Gaps::kNone);
    } else if (!paused_) {
        RenderPlain(out, most);
    }
    const std::size_t sound = (out.size() - before) / kSides;
    if (gaps == Gaps::kSilence && sound < most) {
        const double place = stretches_ ? stretch_.Place() : static_cast<double>(NextRead());
        out.resize(before + most * kSides);
        timeline_.Wrote(static_cast<std::int64_t>(most - sound), place, 0);
    }
    begun_ = begun_ || sound > 0;
    if (!paused_) {
        Shape(std::span(out).subspan(before), sound > 0);
    }
    NoteLeft();
}

void Playout::RenderPlain(std::vector<float>& out, std::size_t most) {
    while (most > 0) {
        const auto from = static_cast<double>(NextRead());
        const std::size_t frames = Read(out, most);
        if (frames == 0) {
            return;
        }
        timeline_.Wrote(static_cast<std::int64_t>(frames), from, 1);
        most -= frames;
    }
}

void Playout::RenderStretched(std::vector<float>& out, std::size_t most, bool tail) {
    while (stretch_.Ready() < most && Feed(tail)) {
    }
    while (most > 0 && stretch_.Ready() > 0) {
        // Behind the last item there is only the silence that has pushed it out.
        const double left = static_cast<double>(lastOfItems_.load()) - stretch_.Place();
        if (entries_.empty() && left <= 0) {
            return;
        }
        const auto wanted = entries_.empty() ? std::min(most, static_cast<std::size_t>(std::ceil(
                                                                  left / settings_.TempoFactor())))
                                             : most;
        const Stretch::Taken taken = stretch_.Take(out, wanted);
        timeline_.Wrote(static_cast<std::int64_t>(taken.frames), taken.from, taken.perFrame);
        most -= taken.frames;
    }
}

/// Sends a little more in; False if there is nothing to be sent.
bool Playout::Feed(bool tail) {
    piece_.clear();
    const std::size_t most = Count(kSentAtOnce, rate_);
    if (Read(piece_, most) == 0) {
        if (!tail || !entries_.empty() || !HoldsTail()) {
            return false;
        }
        piece_.resize(most * kSides);
        timeline_.Read(static_cast<std::int64_t>(most), {});
    }
    stretch_.Send(piece_);
    history_.insert(history_.end(), piece_.begin(), piece_.end());
    const std::size_t kept = Count(kHistory, rate_) * kSides;
    if (history_.size() > 2 * kept) {
        history_.erase(history_.begin(), history_.end() - static_cast<std::ptrdiff_t>(kept));
    }
    return true;
}

bool Playout::HoldsTail() const {
    return stretches_ && stretch_.Place() < static_cast<double>(lastOfItems_.load());
}

/// Puts frames that follow each other behind `to`; how many.
std::size_t Playout::Read(std::vector<float>& to, std::size_t most) {
    if (!again_.empty()) {
        const std::size_t count = std::min(most * kSides, again_.size());
        const auto end = again_.begin() + static_cast<std::ptrdiff_t>(count);
        to.insert(to.end(), again_.begin(), end);
        again_.erase(again_.begin(), end);
        return count / kSides;
    }
    while (!entries_.empty()) {
        Item& item = *entries_.front().item;
        const Item::Piece piece = item.Read(to, most);
        if (piece.frames > 0) {
            timeline_.Read(static_cast<std::int64_t>(piece.frames),
                           {entries_.front().number, piece.jumps, piece.at});
            lastOfItems_ = timeline_.FramesRead();
            return piece.frames;
        }
        if (!item.IsAtEnd()) {
            return 0;
        }
        entries_.pop_front();
    }
    return 0;
}

/// The number of the frame that is read next.
std::int64_t Playout::NextRead() const {
    return timeline_.FramesRead() - static_cast<std::int64_t>(again_.size() / kSides);
}

void Playout::Shape(std::span<float> frames, bool hasSound) {
    effects_.Process(frames);
    const double gainStep = PerFrame(kGainMoves, rate_);
    const double levelStep = hasSound ? PerFrame(kFadeIn, rate_) : 0.0;
    float peak = 0;
    for (std::size_t i = 0; i < frames.size(); i += kSides) {
        gainNow_ = Towards(gain_, gainNow_, gainStep);
        level_ = Towards(1.0, level_, levelStep);
        const auto factor = static_cast<float>(gainNow_ * level_);
        for (std::size_t side = i; side < i + kSides; ++side) {
            frames[side] *= factor;
            peak = std::max(peak, std::abs(frames[side]));
        }
    }
    sounds_ = peak > kInaudible;
}

bool Playout::HasFrames() {
    while (!entries_.empty() && entries_.front().item->IsAtEnd()) {
        entries_.pop_front();
    }
    return !again_.empty() || (stretches_ && stretch_.Ready() > 0) ||
           (!entries_.empty() && entries_.front().item->HasFrames());
}

void Playout::NoteLeft() {
    auto left = static_cast<std::int64_t>(again_.size() / kSides);
    for (const Entry& entry : entries_) {
        left += entry.item->FramesLeft();
    }
    left_ = left;
    tempo_ = stretches_ ? settings_.TempoFactor() : 1.0;
}

}  // namespace veldrin

// Playout is what is to be heard, in the order in which it is: items one behind the other, sample
// on sample, then tempo and pitch, the other effects, the volume. Whoever plays takes frames from
// it when there is room for them, so whatever is changed here is heard as soon as what the device
// holds has been.
//
// All members are called on one thread. What must not be heard as a click (a stop, a jump, an
// effect that is put in) is done between two calls: first FadeOut, then the change.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "host/engine/effects.h"
#include "host/engine/item.h"
#include "host/engine/stretch.h"
#include "host/engine/timeline.h"

namespace veldrin {

class Playout {
  public:
    /// An item and its number in the timeline, not 0.
    struct Entry {
        std::shared_ptr<Item> item;
        std::uint64_t number = 0;
    };

    explicit Playout(Timeline& timeline) : timeline_(timeline) {}

    /// Begins for an output of this rate; nothing is left of what was there.
    void Begin(int rate);
    int Rate() const { return rate_; }

    /// Puts an item, which must be of the output's rate, behind what is there.
    void Append(Entry entry);
    /// Puts it in the place of what is there, of which nothing remains; without an item: silence.
    void Replace(Entry entry);
    /// Puts it there if it is not: all of it has been read, but it is to be jumped in.
    void Restore(Entry entry);
    void SetPaused(bool paused);
    bool IsPaused() const { return paused_; }
    /// 1 leaves the sound as it is. Gets there within a hundredth of a second.
    void SetGain(double gain);
    void SetEffects(const Effects& effects);

    /// Whether a change is due (a jump, tempo or pitch leaving rest or coming to it) that would
    /// click; and it is made.
    bool IsTurnDue() const;
    void Turn();
    /// Whether something is being heard that a change would break off.
    bool Sounds() const { return sounds_ && !paused_; }
    /// The end of what is being heard: a few thousandths of a second, down to silence.
    void FadeOut(std::vector<float>& out);

    enum class Gaps {
        kSilence,  ///< what is not there yet is not waited for
        kNone,     ///< only what is there is put out
        kTail,     ///< and what tempo and pitch hold back of the last item
    };
    /// Puts the next frames behind `out`, `most` at most.
    void Render(std::vector<float>& out, std::size_t most, Gaps gaps);

    // These may be asked on any thread.
    /// Frames that have not been read yet of all that is to be heard, as of the last call.
    std::int64_t FramesLeft() const { return left_; }
    /// The number of the read frame behind the last one that is of an item.
    std::int64_t EndOfItems() const { return lastOfItems_; }
    /// How many of the frames that are read are heard in each.
    double Tempo() const { return tempo_; }
    /// Whether Render would put out more than silence.
    bool HasFrames();
    /// Whether nothing is there to be played, now or later.
    bool IsEmpty() const { return entries_.empty(); }

  private:
    std::deque<Entry>::const_iterator FirstToJump() const;
    bool WantsStretch() const { return settings_.Stretches() && stretch_.IsUsable(); }
    void Forget();
    void TakeBack();
    std::size_t Read(std::vector<float>& to, std::size_t most);
    std::int64_t NextRead() const;
    void RenderPlain(std::vector<float>& out, std::size_t most);
    void RenderStretched(std::vector<float>& out, std::size_t most, bool tail);
    bool Feed(bool tail);
    bool HoldsTail() const;
    void Shape(std::span<float> frames, bool hasSound);
    void NoteLeft();

    Timeline& timeline_;
    int rate_ = 0;
    std::deque<Entry> entries_;
    std::atomic<std::int64_t> left_{0};
    std::atomic<double> tempo_{1.0};

    Effects settings_;
    EffectChain effects_;
    Stretch stretch_;
    bool stretches_ = false;  // whether it is in the way
    std::atomic<std::int64_t> lastOfItems_{0};
    // While it is: what has been read last, as it is needed again when it goes.
    std::vector<float> history_;
    std::vector<float> again_;  // to be read before anything else
    std::vector<float> piece_;  // kept for its memory

    bool paused_ = false;
    bool begun_ = false;  // something has been heard that a jump or a pause would break
    bool sounds_ = false;
    double gain_ = 1.0;
    double gainNow_ = 1.0;
    double level_ = 1.0;  // rises after a change to 1
};

}  // namespace veldrin

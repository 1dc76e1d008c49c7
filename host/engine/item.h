// Item is one file on its way to the output: its decoder, and the frames that are about to be
// played. It is read by the thread that plays, steered by another one, and jumped in by a third,
// since a jump may last as long as the file does not answer.
#pragma once

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "host/engine/decoder.h"
#include "host/engine/frames.h"

namespace veldrin {

class Item {
  public:
    /// `changed` as of Decoder.
    explicit Item(const std::function<void()>& changed) : changed_(changed), decoder_(changed) {}

    /// Waits until its first sound is decoded; see Decoder::Prepare. Nothing else is called before.
    bool Prepare(const Decoder::Plan& plan);

    /// Frames a second of what is read.
    int Rate() const { return rate_; }
    /// Of the medium; 0 if unknown.
    Time Length() { return decoder_.Length(); }
    int MediumRate() const { return decoder_.MediumRate(); }
    int MediumChannels() const { return decoder_.MediumChannels(); }
    /// Whether one can go to any place of the medium.
    bool CanJump() const { return decoder_.Seekable(); }

    /// Goes to a place of the medium, or to what can be reached of it. True: the caller has to call
    /// DoJump, on a thread that can wait for the file. False: that is being done already.
    [[nodiscard]] bool Jump(Time place);
    void DoJump();
    /// How many jumps have been asked for, and where the last one leads.
    unsigned Jumps() const;
    Time JumpsTo() const;

    // For the thread that plays.

    /// Frames that follow each other in the medium without a gap.
    struct Piece {
        std::size_t frames = 0;
        Time at{0};          ///< the first one's place in the medium
        unsigned jumps = 0;  ///< that were made before it
    };
    /// Puts what is there at present behind `to`, `most` frames at most.
    Piece Read(std::vector<float>& to, std::size_t most);
    /// Whether a jump has been asked for that what is read does not follow yet.
    bool IsJumpAsked() const;
    /// What is read from now on follows the last jump.
    void FollowJump();
    /// There is nothing left to be read, and will not be.
    bool IsAtEnd() const;
    /// Whether something can be read.
    bool HasFrames();

    // For any thread.

    /// Whether all that is left has been decoded, and how many frames that is.
    bool IsDecoded() const;
    std::int64_t FramesLeft() const { return decoder_.Waiting() + held_; }

  private:
    struct Held {
        std::vector<float> samples;
        std::size_t used = 0;  ///< frames of it
        Time at{0};            ///< the first one's place in the medium
        std::size_t Frames() const { return samples.size() / kSides - used; }
    };
    void Fill();
    void Hold(GstSample* sample);

    const std::function<void()> changed_;
    Decoder decoder_;
    int rate_ = 0;

    mutable std::mutex mutex_;  // guards the rest
    // What comes next, a little more than fits into the fade that ends a sound at a jump: at that
    // moment the decoder has nothing more of the old place.
    std::deque<Held> next_;
    std::atomic<std::int64_t> held_{0};  // frames of it
    std::optional<Time> follows_;        // the place of the frame after all that
    unsigned jumps_ = 0;
    unsigned followed_ = 0;
    Time jumpsTo_{0};
    bool isJumping_ = false;
};

}  // namespace veldrin

// Timeline knows what every frame that has gone to the output is of: which item, and which place of
// its medium. So what is heard can be told apart from what has been read, whatever lies in between,
// and a tempo changes nothing about where in the medium the listener is.
//
// It is written by the thread that plays and may be asked by any.
#pragma once

#include <cstdint>
#include <deque>
#include <mutex>

#include "host/engine/frames.h"

namespace veldrin {

class Timeline {
  public:
    /// A place in an item, which is told by a number of the caller's, 0 for none.
    struct Place {
        std::uint64_t item = 0;
        unsigned jumps = 0;  ///< as of Item::Piece
        Time at{0};
        bool operator==(const Place&) const = default;
    };

    /// Frames have been read that follow each other from a place on; of no item: silence.
    void Read(std::int64_t frames, const Place& place);
    /// The number of frames that were read, which is that of the next one to be.
    std::int64_t FramesRead() const;
    /// Frames have gone to the output: what is heard of the read ones from `from` on, so many of
    /// them for each; none for silence, in which nothing moves on.
    void Wrote(std::int64_t frames, double from, double perFrame);
    std::int64_t FramesWritten() const;
    /// So many of these have been heard; what is older may be forgotten.
    void Heard(std::int64_t frames);

    /// The place of a frame that has gone to the output; in silence that of the last sound.
    Place PlaceOf(std::int64_t written) const;
    /// The read frame that is heard in it.
    double ReadAt(std::int64_t written) const;

    /// Begins anew, for frames of another rate.
    void Begin(int rate);

  private:
    struct In {
        std::int64_t from;
        std::int64_t frames;
        Place place;
    };
    struct Out {
        std::int64_t from;
        std::int64_t frames;
        double read;
        double perFrame;
    };
    const Out* OutOf(std::int64_t written) const;
    double ReadAtUnguarded(std::int64_t written) const;

    mutable std::mutex mutex_;
    int rate_ = 1;
    std::deque<In> in_;
    std::deque<Out> out_;
    std::int64_t read_ = 0;
    std::int64_t written_ = 0;
};

}  // namespace veldrin

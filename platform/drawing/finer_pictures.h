// A picture as it has been drawn for surfaces that are finer than their coordinates.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "platform/drawing/surface.h"

namespace platform {

/// No more than one of them is kept decoded: the one that was asked for last.
class FinerPictures {
  public:
    /// Answers null if there is no such picture after all.
    using Decode = std::function<PictureRef()>;
    void Add(Long density, Decode decode) { known_[density] = std::move(decode); }

    /// The one of that density, or made of the next finer one, or of the finest; null if there is
    /// none of that size.
    const Surface* At(Long density, Size size);
    /// Keeps none until it is asked for one again.
    void LetGo();

  private:
    PictureRef Made(Long density, Size size) const;

    std::map<Long, Decode> known_;
    std::optional<Long> kept_;
    PictureRef picture_;
};

}  // namespace platform

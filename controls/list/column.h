// One column of the list: slots addressed by index, of which in normal use the last is an empty
// spare. The number of slots is exact at all times and can be observed; the memory behind it is a
// gap buffer that grows in steps, so that adding at the end costs nothing and a run of adds or
// removes in one place moves each slot once.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

template <class T>
class Column {
  public:
    Long Size() const { return static_cast<Long>(buffer_.size() - Gap()); }
    /// Whether the index names a slot.
    bool Has(Long index) const { return index >= 0 && index < Size(); }

    /// The slot must exist.
    const T& operator[](Long index) const { return buffer_[Place(index)]; }
    T& operator[](Long index) { return buffer_[Place(index)]; }

    /// Makes the column `count` fresh slots.
    void Reset(Long count) {
        buffer_.clear();
        buffer_.shrink_to_fit();
        buffer_.resize(static_cast<std::size_t>(count));
        gapBegin_ = gapEnd_ = buffer_.size();
    }

    /// Puts a value at an index and moves what stands there and behind it up by one. Index -1, or
    /// one past the last slot, appends: the spare then stays in the middle. Below that counts as 0.
    void Insert(Long index, T value) {
        const Long size = Size();
        const Long at = index == -1 || index >= size ? size : std::max<Long>(index, 0);
        if (Gap() == 0) {
            Grow();
        }
        MoveGap(static_cast<std::size_t>(at));
        buffer_[gapBegin_++] = std::move(value);
    }

    /// Takes a slot out. The last remaining slot is emptied instead; an index past the end, or -1,
    /// takes the last one, below that the first.
    void Remove(Long index) {
        const Long last = Size() - 1;
        if (last <= 0) {
            Reset(1);
            return;
        }
        const Long at = index > last || index == -1 ? last : std::max<Long>(index, 0);
        // The gap comes to stand in front of the slot or behind it, whichever is less to move.
        if (static_cast<std::size_t>(at) + 1 == gapBegin_) {
            --gapBegin_;
            buffer_[gapBegin_] = T{};
        } else {
            MoveGap(static_cast<std::size_t>(at));
            buffer_[gapEnd_++] = T{};
        }
    }

    /// Writes one value to all slots from `first` to `last`, both included, as far as they exist.
    void Fill(Long first, Long last, const T& value) {
        Blocks(*this, first, last, [&](auto begin, auto end) { std::fill(begin, end, value); });
    }

    /// How many of the slots from `first` to `last` hold the value.
    Long Count(Long first, Long last, const T& value) const {
        Long count = 0;
        Blocks(*this, first, last, [&](auto begin, auto end) {
            count += static_cast<Long>(std::count(begin, end, value));
        });
        return count;
    }

  private:
    // Hands over the slots from `first` to `last` as the runs in front of the gap and behind it:
    // whole columns are filled and counted in tight loops.
    template <class Self, class Use>
    static void Blocks(Self& self, Long first, Long last, Use use) {
        first = std::max<Long>(first, 0);
        last = std::min(last, self.Size() - 1);
        if (first > last) {
            return;
        }
        const auto at = [&](std::size_t i) {
            return self.buffer_.begin() + static_cast<std::ptrdiff_t>(i);
        };
        const auto begin = static_cast<std::size_t>(first);
        const std::size_t end = static_cast<std::size_t>(last) + 1;
        if (begin < self.gapBegin_) {
            use(at(begin), at(std::min(end, self.gapBegin_)));
        }
        if (end > self.gapBegin_) {
            use(at(std::max(begin, self.gapBegin_) + self.Gap()), at(end + self.Gap()));
        }
    }

    std::size_t Gap() const { return gapEnd_ - gapBegin_; }
    std::size_t Place(Long index) const {
        const auto at = static_cast<std::size_t>(index);
        return at < gapBegin_ ? at : at + Gap();
    }

    void Grow() {
        constexpr std::size_t kFirst = 16;
        const std::size_t tail = buffer_.size() - gapEnd_;
        const std::size_t wanted = std::max(kFirst, buffer_.size() + buffer_.size() / 2);
        std::vector<T> bigger(wanted);
        const auto at = [](std::vector<T>& v, std::size_t i) {
            return v.begin() + static_cast<std::ptrdiff_t>(i);
        };
        std::move(buffer_.begin(), at(buffer_, gapBegin_), bigger.begin());
        std::move(at(buffer_, gapEnd_), buffer_.end(), at(bigger, wanted - tail));
        buffer_ = std::move(bigger);
        gapEnd_ = wanted - tail;
    }

    void MoveGap(std::size_t to) {
        while (gapBegin_ > to) {
            buffer_[--gapEnd_] = std::move(buffer_[--gapBegin_]);
        }
        while (gapBegin_ < to) {
            buffer_[gapBegin_++] = std::move(buffer_[gapEnd_++]);
        }
    }

    std::vector<T> buffer_;
    std::size_t gapBegin_ = 0;  // slots below stand in front of the gap
    std::size_t gapEnd_ = 0;
};

}  // namespace sarnel

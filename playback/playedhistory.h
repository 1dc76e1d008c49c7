// What random playback has played, in the order in which it chose: paths, not rows, so it survives
// a reordered list. The array has one slot more than it has entries; stepping into that empty slot
// is part of the rules (mPlayback). An index by hash answers "was it played?" in constant time.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "controls/list/rowtext.h"
#include "platform/types.h"

namespace sarnel {

using platform::Long;

class PlayedHistory {
  public:
    /// Number of entries.
    Long Count() const { return count_; }
    /// The entry of the current random item; Count() when the next step makes a new pick.
    Long Pos() const { return pos_; }
    void Pos(Long value) { pos_ = value; }

    /// Whether the array has the slot: 0 to Count(), none before the first pick.
    bool Has(Long slot) const { return slot >= 0 && slot < static_cast<Long>(items_.size()); }
    /// The slot's path; empty for the spare one and for a slot that is not there.
    std::u16string Item(Long slot) const;

    /// Appends a path and stands on it.
    void Add(std::u16string_view path);
    /// Whether an entry equals the path, ignoring case.
    bool Contains(std::u16string_view path) const;
    bool Contains(const RowText& path) const;
    void Clear();

  private:
    std::vector<std::u16string> items_;
    std::unordered_multimap<std::uint64_t, Long> slotsByHash_;
    Long count_ = 0;
    Long pos_ = 0;
};

}  // namespace sarnel

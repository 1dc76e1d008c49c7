// What random playback has played, in the order in which it chose: paths, not rows, so it survives
// a reordered list. The array has one slot more than it has entries; stepping into that empty slot
// is part of the rules (mPlayback). A table by hash answers "was it played?" in constant time, so
// that the last pick of a round over a long list costs no more than a look at each row.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/list/rowtext.h"
#include "platform/base/types.h"

namespace sarnel {

class JList;

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
    bool Contains(const RowText& path) const;
    bool Contains(std::u16string_view path) const { return Contains(RowText(path)); }
    /// The rows of a list whose paths are not in the history, in order.
    std::vector<Long> RowsNotIn(const JList& list) const;
    void Clear();

  private:
    // 128 bits of a path, case ignored. Two paths that share them are less likely than a fault of
    // the memory they lie in, so a path is known by its print alone. All zero is a free place.
    struct Print {
        std::uint64_t low = 0;
        std::uint64_t high = 0;
        bool operator==(const Print&) const = default;
    };
    static Print PrintOf(const RowText& path);
    bool Has(const Print& print) const;
    void Enter(const Print& print);
    void GrowTable();

    std::vector<RowText> items_;
    std::vector<Print> table_;  // open addressed; its size a power of two, at most half of it taken
    Long count_ = 0;
    Long pos_ = 0;
};

}  // namespace sarnel

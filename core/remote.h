// Remote is the host's side door to a run: what it may ask of the component beyond the impulses. It
// only reads as yet. The component does not know of it and works without it; no rule depends on
// it.
//
// It is asked on the component's thread, between load (15, 16) and the end of the main window; at
// all other times every answer is that of an empty list.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "controls/list/listcopy.h"
#include "platform/base/types.h"

namespace sarnel {

class Ambrisor;
class JList;

class Remote {
    using Long = platform::Long;

  public:
    /// The component must outlive it.
    explicit Remote(Ambrisor& component) : component_(component) {}

    /// Whether there is a run to be asked about.
    bool IsLoaded() const { return List() != nullptr; }

    /// Number of rows of the playlist.
    Long ListCount() const;
    /// The playing row, from 0; -1 is none. Not range checked: it may name no row.
    Long ListCurrent() const;
    /// A row's title and its path; empty for a row that is not there.
    std::u16string RowTitle(Long row) const;
    std::u16string RowPath(Long row) const;

    /// A number that is another one whenever rows (texts, paths, order, count) or the current row
    /// may have changed. Equal numbers of one run say that nothing has.
    std::uint64_t Changes() const;
    /// Calls `observer` at the next change, once, from within it: for taking a note and no more. A
    /// later one takes its place, an empty function ends it. Forgotten at the end of the run.
    void OnNextChange(std::function<void()> observer);

    /// What the playlist's file would hold if it were written now. Any thread may have it and
    /// write it. Takes some 10 ms for 100,000 rows.
    ListCopy CopyList() const;

  private:
    JList* List() const;

    Ambrisor& component_;
};

}  // namespace sarnel

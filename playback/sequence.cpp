// Which row comes next. A dead item is one that the host cannot open: it stays in the list, and the
// sequence goes on to the next one. Where that would never end, it stops after a whole round.
#include <algorithm>
#include <optional>
#include <random>
#include <vector>

#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "core/state/program.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

// The item that still sounds is left to finish; the tick comes back here when it has ended.
void EndStep() {
    const bool alive = Ask(ImpulseIsPlaying, true);
    if (App().Main().sldSkin(kPositionSlider).Enabled() && !alive) {
        StopPlayback();
    }
}

bool WasPlayed(Long row) {
    return App().History.Contains(Playlist().DataAt(row));
}

// A row that has not been played, each with the same chance. Trying at random is quick while many
// are free; when few are, they are collected and one of them is taken. None if all have been
// played, which rows that share a path can bring about before the history is as long as the list.
std::optional<Long> PickFreeRow() {
    constexpr int kTries = 16;
    std::mt19937_64 random(App().windows.GetDriver().RandomSeed());
    const Long count = Playlist().ListCount();
    std::uniform_int_distribution<Long> anyRow(0, count - 1);
    for (int i = 0; i < kTries; ++i) {
        const Long row = anyRow(random);
        if (!WasPlayed(row)) {
            return row;
        }
    }
    const std::vector<Long> free = App().History.RowsNotIn(Playlist());
    if (free.empty()) {
        return std::nullopt;
    }
    return free[std::uniform_int_distribution<std::size_t>(0, free.size() - 1)(random)];
}

// Goes to the path in the history's slot; a path that is no longer in the list gives row -1.
void StandOnHistory() {
    const PlayedHistory& history = App().History;
    if (history.Has(history.Pos())) {
        Playlist().ListCurrent(Playlist().FindDataIndex(history.Item(history.Pos()), true));
    }
}

// False when every row has been played. After a new pick the next step goes to the empty spare
// slot, finds no row there, and so comes round to the next pick. That is odd, and meant.
bool StepRandomForward() {
    PlayedHistory& history = App().History;
    if (history.Count() >= Playlist().ListCount() && history.Pos() >= history.Count()) {
        return false;
    }
    if (history.Pos() != history.Count()) {
        history.Pos(history.Pos() + 1);
        StandOnHistory();
        return true;
    }
    const std::optional<Long> row = PickFreeRow();
    if (row) {
        history.Add(Playlist().ListData(*row));
        Playlist().ListCurrent(*row);
    }
    return row.has_value();
}

bool StepRandomBack() {
    PlayedHistory& history = App().History;
    if (history.Count() < 1 || history.Pos() < 1) {
        return false;
    }
    history.Pos(history.Pos() - 1);
    StandOnHistory();
    return true;
}

// A current row that is not in the list can stand anywhere: a file names it unchecked. Steps
// through rows that are not there open nothing, so they are taken all at once; where they lead away
// from the list for ever, the run is over.
bool StepForward() {
    JList& list = Playlist();
    const Long current = list.ListCurrent();
    if (current >= list.ListCount()) {
        return false;
    }
    if (current != -1 && current != list.ListCount() - 1) {
        list.ListCurrent(std::max(current, -2) + 1);
        return true;
    }
    if (App().RepeatList) {
        list.ListCurrent(0);
    }
    return App().RepeatList;
}

bool StepBack() {
    JList& list = Playlist();
    const Long current = list.ListCurrent();
    if (current < -1) {
        EndStep();
        return false;
    }
    if (current > 0) {
        list.ListCurrent(std::min(current, list.ListCount()) - 1);
        return true;
    }
    if (App().RepeatList) {
        list.ListCurrent(list.ListCount() - 1);
    }
    return App().RepeatList;
}

// Counts the rows that failed in a run over a repeated list, which would never end if all of them
// do. In random order the history ends the run by itself, and otherwise the ends of the list do.
class RoundLimit {
  public:
    bool WholeRoundFailed() {
        const Long current = Playlist().ListCurrent();
        const bool isRow = current >= 0 && current < Playlist().ListCount();
        if (!App().Random && App().RepeatList && isRow) {
            ++failures_;
        }
        return failures_ > 0 && failures_ >= Playlist().ListCount();
    }

  private:
    Long failures_ = 0;
};

}  // namespace

void NextItem() {
    for (RoundLimit limit;;) {
        if (App().RepeatItem) {
            if (Playlist().ListCurrent() >= 0) {
                PlayCurrentItem();
            }
            break;
        }
        if (Playlist().ListCount() == 0) {
            return;
        }
        if (!(App().Random ? StepRandomForward() : StepForward())) {
            EndStep();
            return;
        }
        if (PlayCurrentItem()) {
            break;
        }
        if (limit.WholeRoundFailed()) {
            EndStep();
            return;
        }
    }
    Playlist().HighlightCurrent();
}

void PreviousItem() {
    for (RoundLimit limit;;) {
        if (App().RepeatItem) {
            if (Playlist().ListCurrent() >= 0) {
                PlayCurrentItem();
            }
            break;
        }
        // The start of the list needs no end step: what sounds goes on.
        if (Playlist().ListCount() == 0 || !(App().Random ? StepRandomBack() : StepBack())) {
            return;
        }
        if (PlayCurrentItem()) {
            break;
        }
        if (limit.WholeRoundFailed()) {
            EndStep();
            return;
        }
    }
    Playlist().HighlightCurrent();
}

bool IsInPlayedHistory(std::u16string_view path) {
    return App().History.Contains(path);
}

void ClearPlayedHistory() {
    App().History.Clear();
}

}  // namespace sarnel

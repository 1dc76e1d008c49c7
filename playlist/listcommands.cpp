#include "playlist/listcommands.h"

#include "core/base/failure.h"
#include "core/state/frmmain.h"
#include "core/state/mGeneral.h"
#include "core/state/program.h"
#include "playback/mPlayback.h"

namespace sarnel {

namespace {

// From the last row to the first, so that an index stays right after a removal.
template <class Test>
void RemoveRows(Test goes) {
    JList& list = Playlist();
    list.RedrawFlag(false);
    for (Long i = list.ListCount() - 1; i >= 0; --i) {
        if (goes(list, i)) {
            list.RemoveItem(i);
        }
    }
    Step([&] { list.Refresh(); });
    list.RedrawFlag(true);
}

}  // namespace

void RemoveSelected() {
    if (Playlist().SelCount() > 0 && Playlist().ListCount() > 0) {
        RemoveRows([](const JList& list, Long row) { return list.Selected(row); });
    }
}

void CropSelected() {
    if (Playlist().SelCount() < Playlist().ListCount() && Playlist().ListCount() > 0) {
        RemoveRows([](const JList& list, Long row) { return !list.Selected(row); });
    }
}

void RemoveDeadEntries() {
    if (Playlist().ListCount() > 0) {
        RemoveRows([](const JList& list, Long row) { return !FileExists(list.ListData(row)); });
    }
}

void ClearAllEntries() {
    Playlist().Clear();
    ClearPlayedHistory();
}

void SelectAll() {
    Playlist().ClearOrSelect(0, Playlist().ListCount() - 1, true);
}

void SelectNone() {
    Playlist().ClearOrSelect(0, Playlist().ListCount() - 1, false);
}

void InvertSelection() {
    JList& list = Playlist();
    list.RedrawFlag(false);
    for (Long i = 0; i < list.ListCount(); ++i) {
        list.Selected(i, !list.Selected(i));
    }
    list.RedrawFlag(true);
}

void PlayListIndex() {
    Playlist().ListCurrent(Playlist().ListIndex());
    PlayCurrentItem();
}

}  // namespace sarnel

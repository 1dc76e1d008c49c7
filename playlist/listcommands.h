// What the user does to the playlist as a whole: the commands of the menu's "Playlist" branch. None
// of them stops what is playing, and none asks back.
#pragma once

namespace sarnel {

/// Each selected row goes. Nothing if none is selected.
void RemoveSelected();
/// Each row that is not selected goes: with nothing selected all of them. Nothing if all are.
void CropSelected();
/// Each row goes whose path is no file; the host is not asked.
void RemoveDeadEntries();
/// Empties the list and forgets what has been played; the current row is not touched.
void ClearAllEntries();
void SelectAll();
void SelectNone();
void InvertSelection();

/// Makes the row selected last the current one and plays it, if there is such a row.
void PlayListIndex();

}  // namespace sarnel

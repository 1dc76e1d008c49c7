// The file browser's rows: one folder at a time, or the drives, which it calls "My Computer". What
// a row stands for is told by its image, and its data is the full path; the row "[.]" has none, and
// an empty path is the list of drives. Nothing is added to the playlist until the user asks for it.
#pragma once

#include <string_view>

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

class JList;

// What a row's image tells.
inline constexpr Long kTopImage = 0;  ///< a drive, or "[.]"
inline constexpr Long kFolderImage = 1;
inline constexpr Long kFileImage = 2;

/// Fills the list with a folder, or with the drives if the path is empty, and keeps the path as
/// what is shown. A path that is no folder leaves the list as it was. A folder that cannot be read
/// shows "[.]" alone. The host is asked for each file whether it is to be shown.
void FillBrowser(JList& list, std::u16string_view path);

/// Whether the list shows a folder, and whether that has one above itself in row 1.
bool ShowsFolder(const JList& list);
bool ShowsParent(const JList& list);

/// Whether "Add selected" has something to do: more than the row of this level or of the parent.
bool CanAddSelected(const JList& list);
/// Adds the selected rows to the playlist, what is in folders with or without their subfolders. The
/// path label shows the folder in work; the list is disabled meanwhile.
void AddSelected(bool recurse);

}  // namespace sarnel

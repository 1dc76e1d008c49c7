// How media reach the playlist: command lines, drops, folders. Which file is a media file is never
// decided here: the host is asked for each one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/base/types.h"

namespace sarnel {

using platform::Handle;

/// "Sarnel.Ambrisor.omk" in the component's directory.
std::u16string PlaylistFile();

/// A command line holds at most one path, with or without double quotes: alone it is played and
/// takes the list's place, behind "/ADD" and one more character it joins the list. An empty line at
/// the start restores the saved list. `startup` is True from the host's first showing, False from a
/// second start.
void ProcessCommandLine(std::u16string_view line, bool startup);

/// Adds a file if the host supports it, under the title that the host gives; `filename` until then.
void AddFileToList(std::u16string_view filename, std::u16string_view path);

/// Adds the files of a folder; the path label of the file browser shows it. `filePath` ends in a
/// separator; the mask "*.*" means every name. With Recursive, subfolders come first; a link into a
/// folder that the search is in is not followed.
void SearchFiles(std::u16string_view filePath, std::u16string_view filename, bool Recursive);

/// Files dropped on the list: folders are searched, without their subfolders.
void lstPlaylist_OLEDragDrop(const std::vector<std::string>& paths);

/// Files dropped on the rest of the window. A folder goes to the host's check and is normally
/// refused.
void AddDroppedFiles(Handle drop);

}  // namespace sarnel

// The way through a folder and all folders below it, as the file browser adds them: the folders in
// a folder, by name, before the files that lie in it. Paths are raw bytes; nothing here throws.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace platform {

enum class Below {
    kIncluded,
    kLeftOut  ///< only the folder itself
};

/// Gets each folder, and the names of the ordinary files in it in order, hidden ones left out.
/// False: no further ones.
using FolderVisitor =
    std::function<bool(const std::string& folder, const std::vector<std::string>& files)>;

struct WalkEnd {
    std::size_t unreadable = 0;  ///< folders that could not be read
    bool complete = true;        ///< there were no more than kMostFolders, and no visitor said stop
};

/// Folders of one walk: somebody's whole disk is more, and by mistake.
inline constexpr std::size_t kMostFolders = 100'000;

/// `start` is an absolute path. A folder that several links lead to is visited once, where the walk
/// first comes by it; so no circle of links is endless. What goes away meanwhile is not visited.
WalkEnd WalkFolders(const std::string& start, Below below, const FolderVisitor& visit);

}  // namespace platform

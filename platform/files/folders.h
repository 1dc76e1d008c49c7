// Folders: what is in one, and the way of a search down through many. Paths are as in files.h, and
// nothing here throws; a failure is an empty answer.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

struct FolderEntry {
    std::u16string name;
    bool isFolder = false;
};

/// A folder's names without dot files, ignoring case in alphabetical order (names that differ only
/// in case: by code unit). Links count as what they lead to. What is neither folder nor ordinary
/// file, such as a pipe or a link that leads nowhere, is left out: whoever opens it may wait for
/// ever. None if the folder cannot be read.
std::optional<std::vector<FolderEntry>> ListFolder(std::u16string_view path);

/// By which a folder is known again, whatever name or link leads to it.
struct FolderIdentity {
    std::uint64_t device = 0;
    std::uint64_t node = 0;
    auto operator<=>(const FolderIdentity&) const = default;
};

/// None if the path leads nowhere.
std::optional<FolderIdentity> IdentityOf(std::u16string_view path);

/// The folders that a search is in: where it began, those above that, and those that it has entered
/// since. A folder is one and the same whatever links lead to it.
class FolderTrail {
  public:
    /// `start` is a path that ends in a separator.
    explicit FolderTrail(std::u16string_view start);

    /// Goes down into a folder, unless the search is in it already: to follow a link back would
    /// never end. False then, and if the folder cannot be reached.
    [[nodiscard]] bool Enter(std::u16string_view folder);
    /// Goes back out of the folder that was entered last.
    void Leave() { folders_.pop_back(); }

  private:
    std::vector<FolderIdentity> folders_;
};

}  // namespace platform

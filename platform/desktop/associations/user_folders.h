// Where the user's own files and those of the machine lie, by the rules of freedesktop.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform::desktop {

/// Absolute paths without a separator at the end.
struct UserFolders {
    std::string data;                         ///< of the user
    std::string config;                       ///< likewise
    std::vector<std::string> machineData;     ///< of all users, the most important first
    std::vector<std::string> machineConfigs;  ///< likewise
    std::vector<std::string> desktops;        ///< names of the one in use, in small letters
};

/// Out of variables of the environment, null for one that is not set. Relative paths do not count.
/// None if the user has no folder of his own.
std::optional<UserFolders> UserFoldersBy(
    const std::function<const char*(const char* name)>& variable);

}  // namespace platform::desktop

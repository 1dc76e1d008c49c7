#include "platform/desktop/associations/user_folders.h"

#include <algorithm>
#include <string_view>

#include "platform/base/text.h"

namespace platform::desktop {

namespace {

using Variable = std::function<const char*(const char*)>;

std::string WithoutSeparators(std::string_view path) {
    return std::string(path.substr(0, path.find_last_not_of('/') + 1));
}

/// Empty if there is none.
std::string OwnFolder(const Variable& variable, const char* name, std::string_view inHome) {
    const char* const value = variable(name);
    if (value != nullptr && *value == '/') {
        return WithoutSeparators(value);
    }
    const char* const home = variable("HOME");
    return home != nullptr && *home == '/' ? WithoutSeparators(home).append(inHome) : "";
}

std::vector<std::string> Between(std::string_view text) {
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(':'), text.size());
        pieces.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

std::vector<std::string> MachineFolders(const Variable& variable, const char* name,
                                        const char* unset) {
    const char* const value = variable(name);
    std::vector<std::string> folders = Between(value != nullptr && *value != '\0' ? value : unset);
    std::erase_if(folders, [](const std::string& folder) { return !folder.starts_with('/'); });
    std::transform(folders.begin(), folders.end(), folders.begin(), WithoutSeparators);
    return folders;
}

}  // namespace

std::optional<UserFolders> UserFoldersBy(const Variable& variable) {
    UserFolders folders;
    folders.data = OwnFolder(variable, "XDG_DATA_HOME", "/.local/share");
    folders.config = OwnFolder(variable, "XDG_CONFIG_HOME", "/.config");
    if (folders.data.empty() || folders.config.empty()) {
        return std::nullopt;
    }
    folders.machineData = MachineFolders(variable, "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    folders.machineConfigs = MachineFolders(variable, "XDG_CONFIG_DIRS", "/etc/xdg");
    const char* const desktops = variable("XDG_CURRENT_DESKTOP");
    for (std::string& name : Between(desktops != nullptr ? desktops : "")) {
        std::transform(name.begin(), name.end(), name.begin(), LowerAscii<char>);
        if (!name.empty() && name.find('/') == std::string::npos) {
            folders.desktops.push_back(std::move(name));
        }
    }
    return folders;
}

}  // namespace platform::desktop

// Desktop entries: the files by which a desktop knows programs and what they open.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::desktop {

/// The value of an Exec key that runs a command; an argument kFilePlace stands for all files that
/// are opened. None if there is no program, if it is not named by its whole path, or if an argument
/// holds what such a value cannot: control characters, or the file's place within other text.
std::optional<std::string> ExecValue(const std::vector<std::string>& command);

/// A value as it is written: a backslash and what would end a line are escaped.
std::string EscapedValue(std::string_view value);

struct EntryAction {
    std::string name;  ///< of letters, digits and "-"
    std::string caption;
    std::string exec;
};

/// Values as people read them, but for those of Exec keys, which are written as they are.
struct DesktopEntry {
    std::string name;
    std::string genericName;
    std::string icon;
    std::string program;  ///< without it the entry counts for nothing
    std::string exec;
    std::string categories;  ///< with a semicolon behind each; empty for an entry out of the menus
    std::string windowClass;
    std::vector<std::string> types;
    std::vector<EntryAction> actions;
};

std::string TextOf(const DesktopEntry& entry);

}  // namespace platform::desktop

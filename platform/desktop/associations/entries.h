// Which desktop entries stand for a class of files.
#pragma once

#include <string>
#include <vector>

#include "platform/desktop/associations/file_class.h"
#include "platform/desktop/desktop_driver.h"

namespace platform::desktop {

/// An entry and the name of its file.
struct NamedEntry {
    std::string file;
    std::string text;
    bool operator==(const NamedEntry&) const = default;
};

/// The entries that stand for a class: first that of the program, which opens these types, then a
/// hidden one for each further verb, of files and of folders, since file managers offer no actions.
/// None if a command cannot be expressed.
std::vector<NamedEntry> EntriesFor(const ProgramIdentity& program, const FileClass& fileClass,
                                   const std::vector<std::string>& types);

}  // namespace platform::desktop

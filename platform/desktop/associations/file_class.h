// What the shell's registry says of one class of files: which extensions are of it, and what can be
// done with its files and with folders. All text in bytes.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/driver.h"

namespace platform::desktop {

/// Something that can be done with a file or a folder.
struct Verb {
    std::string name;     ///< in small letters, without what stands in front of its last point
    std::string caption;  ///< for people, without the mark of its letter
    std::vector<std::string> command;  ///< the program and its arguments; kFilePlace is the file
    bool operator==(const Verb&) const = default;
};
inline constexpr std::string_view kFilePlace = "%1";
inline constexpr std::string_view kOpenVerb = "open";

struct FileClass {
    std::vector<std::string> extensions;  ///< without their points, in small letters
    std::vector<Verb> verbs;
    std::vector<Verb> folderVerbs;
};

/// The first class that an extension is of and that has a command to open its files. `registry` is
/// in the order of its keys.
std::optional<FileClass> ReadFileClass(const std::vector<RegistryValue>& registry);

/// The verb of that name; null if there is none.
const Verb* FindVerb(const std::vector<Verb>& verbs, std::string_view name);

/// The arguments of a command line. A quotation mark ends what another began only at the end of an
/// argument: within it is a character like all others, since paths may hold one. `program` is the
/// path that the line may begin with in quotes, whatever is in it; empty if it is not known.
std::vector<std::string> SplitCommand(std::string_view line, std::string_view program = {});

}  // namespace platform::desktop

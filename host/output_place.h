// Where all that is played may be written to: never over music.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace veldrin {

/// What of the user's a run is going to read. Absolute paths.
struct Inputs {
    std::vector<std::string> paths;  ///< files and folders
    std::string list;                ///< the saved playlist; empty if it is not restored
};

/// Why the file must not be written, for people; nothing if it may be. It is none of the inputs, by
/// whatever name, lies in none of their folders and does not stand in the list.
std::optional<std::string> OutputPlaceFault(const std::string& path, const Inputs& inputs);

}  // namespace veldrin

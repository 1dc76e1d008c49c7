// The files that say which desktop entry opens which media type (mimeapps.list). People write them
// too: whatever is not of these entries stays as it is, byte by byte.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform::desktop {

/// Media types, and the entry that opens them.
struct Defaults {
    std::set<std::string> types;
    std::string entry;  ///< its file's name
};

/// The text with the entry as the first choice of each type; what was chosen before stays behind
/// it. The same text if that is so already.
std::string WithDefaults(std::string_view text, const Defaults& defaults);

/// The text with the entry among those that open each type, whatever its own file says of that.
std::string WithAssociations(std::string_view text, const Defaults& defaults);

/// The text without these entries among those that are not to open these types.
std::string WithoutRemovals(std::string_view text, const std::set<std::string>& types,
                            const std::set<std::string>& entries);

/// Those of the types that the text has a choice for.
std::set<std::string> TypesWithDefault(std::string_view text, const std::set<std::string>& types);

/// The entries that a desktop's cache (mimeinfo.cache) has for a type, the first one first.
std::vector<std::string> EntriesInCache(std::string_view text, std::string_view type);

/// The types that an entry opens, by the text of its file.
std::set<std::string> TypesOfEntry(std::string_view text);

}  // namespace platform::desktop

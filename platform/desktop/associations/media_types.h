// The media types that extensions of file names stand for, by the machine's database.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace platform::desktop {

/// The type of folders.
inline constexpr const char* kFolderType = "inode/directory";

struct MediaTypes {
    std::set<std::string> all;            ///< what one may become the opener of
    std::set<std::string> ownExtensions;  ///< those that the database knows nothing of
};

/// All that the machine's database has for an extension; our own additions count. The first call
/// loads the database; may be called on any thread.
std::set<std::string> TypesInDatabase(const std::string& extension);

/// Types so general that they say nothing of a file are left out. An extension that the database
/// does not know gets a type of its own, if a type's name can hold it.
MediaTypes MediaTypesOf(const std::vector<std::string>& extensions,
                        const std::function<std::set<std::string>(const std::string& extension)>&
                            typesOf = TypesInDatabase);

/// An addition to the database that tells it the types of these extensions.
std::string TypesPackage(const std::set<std::string>& extensions);

}  // namespace platform::desktop

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

/// A type, and all extensions of files of that type, the most usual one first.
struct KnownType {
    std::string name;
    std::vector<std::string> extensions;
};

/// All that the machine's database has for an extension; our own additions count. The first call
/// loads the database; may be called on any thread.
std::vector<KnownType> TypesInDatabase(const std::string& extension);

/// Where an extension may be of several types, those are left out that usually have another one,
/// which is not ours: who plays "mp2" does not show all of video/mpeg. So are types so general that
/// they say nothing of a file. An extension that the database does not know gets a type of its own,
/// if a type's name can hold it.
MediaTypes MediaTypesOf(const std::vector<std::string>& extensions,
                        const std::function<std::vector<KnownType>(const std::string& extension)>&
                            typesOf = TypesInDatabase);

/// An addition to the database that tells it the types of these extensions.
std::string TypesPackage(const std::set<std::string>& extensions);

}  // namespace platform::desktop

// The media types that extensions of file names stand for, by the machine's database.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace platform::desktop {

struct MediaTypes {
    std::set<std::string> all;            ///< what one may become the opener of
    std::set<std::string> ownExtensions;  ///< those that the database knows nothing of
};

/// Types so general that they say nothing of a file are left out. An extension that the database
/// does not know gets a type of its own, if a type's name can hold it. The first call loads the
/// database; may be called on any thread.
MediaTypes MediaTypesOf(const std::vector<std::string>& extensions);

/// An addition to the database that tells it the types of these extensions.
std::string TypesPackage(const std::set<std::string>& extensions);

}  // namespace platform::desktop

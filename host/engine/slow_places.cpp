#include "host/engine/slow_places.h"

#include <algorithm>
#include <string_view>

namespace veldrin {

namespace {

constexpr std::chrono::milliseconds kPatience(5000);
constexpr std::chrono::milliseconds kPatienceInSlowPlaces(500);

bool IsIn(std::string_view path, std::string_view place) {
    return path.starts_with(place);
}

}  // namespace

std::chrono::milliseconds SlowPlaces::PatienceFor(const std::string& path) const {
    const bool isSlow =
        std::ranges::any_of(places_, [&](const std::string& place) { return IsIn(path, place); });
    return isSlow ? kPatienceInSlowPlaces : kPatience;
}

void SlowPlaces::Note(const std::string& path, const std::vector<platform::Mount>& mounts) {
    places_.insert(path.substr(0, path.rfind('/') + 1));
    std::string_view innermost;
    for (const platform::Mount& mount : mounts) {
        const bool holdsIt = IsIn(path, mount.folder) && path.substr(mount.folder.size(), 1) == "/";
        if (holdsIt && mount.folder.size() > innermost.size()) {
            innermost = mount.folder;
        }
    }
    // The root's own file system is where nearly all is: of it the folder alone is slow.
    if (!innermost.empty()) {
        places_.insert(std::string(innermost) + "/");
    }
}

void SlowPlaces::Forget(const std::string& path) {
    std::erase_if(places_, [&](const std::string& place) { return IsIn(path, place); });
}

}  // namespace veldrin

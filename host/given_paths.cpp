#include "host/given_paths.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "host/paths.h"

namespace veldrin {
namespace {

/// Why there is nothing to be played there, for people; nothing if there may be.
const char* Fault(const std::string& path) {
    struct stat status {};
    if (path.empty() || stat(Here(path).c_str(), &status) != 0) {
        return std::strerror(path.empty() ? ENOENT : errno);
    }
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode) ? nullptr
                                                              : "neither a file nor a folder";
}

}  // namespace

std::string Here(const std::string& path) {
    return AbsolutePath(path, CurrentFolder().value_or("/"));
}

GivenPaths UnfoldGiven(const std::vector<std::string>& paths, const GivenRules& rules) {
    GivenPaths given;
    const auto take = [&](const std::string& path) {
        given.lines.push_back(CommandLine(path, rules.add || !given.lines.empty()));
        given.places.push_back(path);
        return true;
    };
    platform::Unfolder unfolder(
        {rules.below, rules.xspf,
         [&](const std::string& name) { return rules.types.Supports(name); },
         "music (" + rules.types.Patterns() + ")"},
        {take, [&](const std::string& folder, const auto& /*files*/) { return take(folder); }});
    std::size_t told = 0;
    for (const std::string& path : paths) {
        if (const char* const fault = Fault(path)) {
            given.complaints.push_back("'" + path + "': " + fault);
            continue;
        }
        unfolder.Unfold(Here(path), path);
        const auto& remarks = unfolder.Remarks();
        given.complaints.insert(given.complaints.end(),
                                remarks.begin() + static_cast<std::ptrdiff_t>(told), remarks.end());
        told = remarks.size();
    }
    return given;
}

}  // namespace veldrin

#include "host/given_paths.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "host/paths.h"

namespace veldrin {
namespace {

/// Why there is nothing to be played there, for people; nothing if there may be.
const char* Fault(const std::string& path) {
    struct stat status {};
    if (path.empty() || stat(FromHere(path).c_str(), &status) != 0) {
        return std::strerror(path.empty() ? ENOENT : errno);
    }
    return S_ISREG(status.st_mode) || S_ISDIR(status.st_mode) ? nullptr
                                                              : "neither a file nor a folder";
}

}  // namespace

std::string FromHere(const std::string& path) {
    return AbsolutePath(path, CurrentFolder().value_or("/"));
}

void UnfoldGiven(const std::vector<std::string>& paths, const GivenRules& rules,
                 const GivenTaker& taker) {
    bool joins = rules.add;
    const auto take = [&](const std::string& path) {
        return taker.line(CommandLine(path, std::exchange(joins, true)), path);
    };
    platform::Unfolder unfolder(
        {rules.below, rules.xspf,
         [&](const std::string& name) { return rules.types.Supports(name); },
         "music (" + rules.types.Patterns() + ")"},
        {take, [&](const std::string& folder, const auto& /*files*/) { return take(folder); }});
    std::size_t told = 0;
    for (const std::string& path : paths) {
        if (const char* const fault = Fault(path)) {
            taker.complaint("'" + path + "': " + fault);
            continue;
        }
        unfolder.Unfold(FromHere(path), path);
        for (; told < unfolder.Remarks().size(); ++told) {
            taker.complaint(unfolder.Remarks()[told]);
        }
    }
}

GivenPaths UnfoldGiven(const std::vector<std::string>& paths, const GivenRules& rules) {
    GivenPaths given;
    UnfoldGiven(
        paths, rules,
        {[&given](std::string line, const std::string& place) {
             given.lines.push_back(std::move(line));
             given.places.push_back(place);
             return true;
         },
         [&given](std::string complaint) { given.complaints.push_back(std::move(complaint)); }});
    return given;
}

}  // namespace veldrin

#include "platform/files/absolute_path.h"

#include <sys/stat.h>

#include <algorithm>

namespace platform {

namespace {

// Whether ".." behind this path is not the path without its last name.
bool IsLeftToTheSystem(const std::string& path) {
    struct stat status {};
    return path.ends_with("/..") || (lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode));
}

}  // namespace

std::string AbsolutePath(std::string_view path, std::string_view base) {
    std::string result;  // "/" is empty meanwhile
    const auto take = [&result](std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('/'), text.size());
            const std::string_view part = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            if (part == ".." && !IsLeftToTheSystem(result)) {
                result.resize(std::min(result.rfind('/'), result.size()));
            } else if (!part.empty() && part != ".") {
                result.append("/").append(part);
            }
        }
    };
    if (!path.starts_with('/')) {
        take(base);
    }
    take(path);
    return result.empty() ? "/" : result;
}

}  // namespace platform

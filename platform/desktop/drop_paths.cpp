#include "platform/desktop/drop_paths.h"

#include <algorithm>
#include <utility>

#include "platform/files/file_address.h"

namespace platform::desktop {

namespace {

// The first line, taken off the text. Lines end in CR LF by rule and in either alone by habit; some
// sources end the whole by a zero byte.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t end =
        std::min(text.find_first_of(std::string_view("\r\n\0", 3)), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

}  // namespace

std::vector<std::string> PathsOfUriList(std::string_view list, std::string_view hostName) {
    std::vector<std::string> paths;
    while (!list.empty()) {
        if (auto path = PathOfAddress(TakeLine(list), hostName)) {
            paths.push_back(std::move(*path));
        }
    }
    return paths;
}

std::vector<std::string> PathsOfText(std::string_view text, std::string_view hostName) {
    std::vector<std::string> paths;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line.starts_with('/')) {
            paths.emplace_back(line);
        } else if (auto path = PathOfAddress(line, hostName)) {
            paths.push_back(std::move(*path));
        }
    }
    return paths;
}

}  // namespace platform::desktop

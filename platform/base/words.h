// The kernel's tables: lines of words.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace platform {

/// What stands between these separators; nothing empty.
inline std::vector<std::string_view> Split(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> parts;
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(separators), text.size()));
        if (text.empty()) {
            return parts;
        }
        parts.push_back(text.substr(0, text.find_first_of(separators)));
        text.remove_prefix(parts.back().size());
    }
}

inline std::vector<std::string_view> Lines(std::string_view text) {
    return Split(text, "\n");
}
inline std::vector<std::string_view> Words(std::string_view line) {
    return Split(line, " \t");
}

}  // namespace platform

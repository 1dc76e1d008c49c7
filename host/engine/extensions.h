// Extensions of file names, the same ignoring case as everywhere in the program.
#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/base/text.h"

namespace veldrin {

struct BeforeIgnoringCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
        return platform::Upper(platform::Widen(a)) < platform::Upper(platform::Widen(b));
    }
};

/// Without the point in front.
using Extensions = std::set<std::string, BeforeIgnoringCase>;

/// What follows the last point of a path's last name; nothing if there is none.
inline std::string_view ExtensionOf(std::string_view path) {
    const std::size_t point = path.find_last_of("./");
    const bool has = point != std::string_view::npos && path[point] == '.';
    return has ? path.substr(point + 1) : std::string_view();
}

}  // namespace veldrin

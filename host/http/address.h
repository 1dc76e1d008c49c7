// Where a page lies: an address of http or https, taken apart.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veldrin {

struct HttpAddress {
    bool secure = false;
    std::string host;  ///< in lower case, without the brackets of a number of IPv6
    int port = 80;
    std::string target = "/";  ///< path and query, escaped as far as it must be

    /// As it stands in a request: brackets, and the port unless it is the usual one.
    std::string Authority() const;
};

/// None where it is no address of http or https. Nothing but a host and a port may stand before the
/// path. What cannot stand in a request is escaped, `#` too: these addresses have no fragment.
std::optional<HttpAddress> ParseHttpAddress(std::string_view address);

/// Where a page sends its reader to: `location` may be a whole address or a part of one, with a
/// fragment, which is dropped.
std::optional<HttpAddress> ResolveLocation(const HttpAddress& page, std::string_view location);

}  // namespace veldrin

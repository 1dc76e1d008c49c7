// Whether there is a way to somewhere.
#pragma once

#include <string_view>

namespace platform::desktop {

/// Whether the host of an address, scheme in front, is this machine by its name or its number.
bool LeadsToThisMachine(std::string_view address);

/// Whether the kernel's tables of routes (/proc/net/route, /proc/net/ipv6_route) lead anywhere but
/// to this machine.
bool HasRoute(std::string_view routes, std::string_view routes6);

/// The same of those that the kernel has now.
bool HasRouteHere();

}  // namespace platform::desktop

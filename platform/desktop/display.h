// Whether there is a desktop to show windows on.
#pragma once

#include <optional>
#include <string>

namespace platform::desktop {

/// Why no window can be shown; nothing if one can.
std::optional<std::string> DisplayFault();

}  // namespace platform::desktop

// Programs of the machine that are asked to do something, and not to say anything.
#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace platform::desktop {

/// Runs a tool of the machine's, without input or output, for this long at most. Whether it ended
/// well.
bool RunTool(const std::vector<std::string>& command, std::chrono::milliseconds longest);

}  // namespace platform::desktop

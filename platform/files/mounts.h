// What is mounted where, as the kernel tells it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A file system in the tree of folders. Raw bytes.
struct Mount {
    std::string folder;  ///< without a separator at its end, but for the root
    std::string device;
};

/// Reads what stands in /proc/self/mountinfo: in order, so that a later one hides an earlier one at
/// the same folder. Lines that are none are left out.
std::vector<Mount> ParseMounts(std::string_view mountinfo);

/// Of this machine, at this moment. Asks the kernel alone, no file system that might not answer.
std::vector<Mount> MountsHere();

/// A text in which bytes may stand as `mark` and so many digits of that base: \040 for a blank.
std::string FromCodes(std::string_view text, std::string_view mark, std::size_t digits, int base);

}  // namespace platform

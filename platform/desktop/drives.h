// Places that folders begin at.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/driver.h"
#include "platform/files/mounts.h"

namespace platform::desktop {

/// The label of the volume on a device; empty if it has none.
using LabelOf = std::function<std::string(const std::string& device)>;

/// The root folder, the user's own, and what is mounted where volumes of users are: each once.
/// `home`: empty if it is not known.
std::vector<Drive> ListDrives(std::string_view home, const std::vector<Mount>& mounts,
                              const LabelOf& labelOf);

/// Of this machine, at this moment.
std::vector<Drive> DrivesHere();

/// Without the escapes of a name in /dev/disk: \x20 for a blank.
std::string UnescapedLabel(std::string_view name);

}  // namespace platform::desktop

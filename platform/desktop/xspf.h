// Lists of media in XML, read by the toolkit.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::desktop {

/// The first location of each track of an xspf file, as it stands there: an address, or one from
/// the file's own folder on, raw bytes. Of a damaged file those in front of the damage. None if it
/// is no xspf file, and if it defines entities of its own: they can be made to grow without end.
std::optional<std::vector<std::string>> LocationsOfXspf(std::string_view bytes);

}  // namespace platform::desktop

// Whether pixels can go to the X server as they lie in a picture here: 32 bits each, blue in the
// lowest byte.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace platform::desktop {

/// Whether the server counts pixels of this depth as this machine does.
bool HasOurPixels(const xcb_setup_t& setup, std::uint8_t depth);
/// Whether that is a visual of this depth with the colours in our order.
bool HasOurColours(const xcb_setup_t& setup, std::uint8_t depth, xcb_visualid_t id);

}  // namespace platform::desktop

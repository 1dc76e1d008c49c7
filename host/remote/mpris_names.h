// How the player's object describes itself on the bus.
#pragma once

#include <cstdint>
#include <string>

#include "platform/desktop/session_bus.h"

namespace veldrin {

inline constexpr const char* kMprisName = "org.mpris.MediaPlayer2.veldrin";
inline constexpr const char* kMprisPath = "/org/mpris/MediaPlayer2";
inline constexpr const char* kMprisRoot = "org.mpris.MediaPlayer2";
inline constexpr const char* kMprisPlayer = "org.mpris.MediaPlayer2.Player";
inline constexpr const char* kPropertiesInterface = "org.freedesktop.DBus.Properties";

/// The <interface> elements of both interfaces.
extern const char* const kMprisMembers;

inline constexpr std::int64_t kSecond = 1'000'000;  ///< in the unit of the bus, microseconds

/// The path by which an item is known, of its number.
std::string ItemPath(std::uint64_t number);

/// The properties of the root interface, which never change.
platform::BusTable RootProperties();

}  // namespace veldrin

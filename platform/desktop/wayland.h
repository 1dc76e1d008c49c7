// What is different where windows are shown by a Wayland compositor, without an X server between:
// it alone places windows, and tells nobody where.
#pragma once

#include <chrono>
#include <string>

namespace platform::desktop {

/// Whether the toolkit speaks to a compositor. To be asked once the application object exists.
bool IsOnWayland();

/// A connection of one's own to the compositor that the environment names, over which nothing is
/// said: a descriptor that is readable once the compositor has gone. -1 if there is none.
int ConnectToCompositor();

/// Whether such a connection has ended, or ends in that time.
bool HasEnded(int connection, std::chrono::milliseconds patience = {});

/// Gives the toolkit what the desktop hands out for activating a window once; empty for nothing.
/// The next activation takes it.
void SetActivationToken(const std::string& token);

/// Whether there is one.
bool HasActivationToken();

}  // namespace platform::desktop

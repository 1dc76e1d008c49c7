// What is different where windows are shown by a Wayland compositor, without an X server between:
// it alone places windows, and tells nobody where.
#pragma once

#include <string>

namespace platform::desktop {

/// Whether the toolkit speaks to a compositor. To be asked once the application object exists.
bool IsOnWayland();

/// Gives the toolkit what the desktop hands out for activating a window once; empty for nothing.
/// The next activation takes it.
void SetActivationToken(const std::string& token);

/// Whether there is one.
bool HasActivationToken();

}  // namespace platform::desktop

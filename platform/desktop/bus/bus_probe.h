// Whether there is a session bus, and anybody behind it. Without one the toolkit's library would
// start one when a window first becomes active, and wait for it in the middle of an event; nobody
// is on it then. And where nobody answers, as when the daemon has been stopped, it waits for ever.
#pragma once

#include <chrono>
#include <string>

namespace platform::desktop {

/// The address of the session bus, as the environment has it; empty if there is none, and none is
/// to be started for us.
std::string SessionBusAddress();

/// Whether somebody answers there in time. True for an address that is not that of a local socket:
/// this cannot be found out here.
bool BusAnswers(const std::string& address, std::chrono::milliseconds patience);

/// Has the toolkit find no bus where there is none, or none that answers. To be called before it
/// reads the environment.
void PassOverBusWithoutAnswer();

/// Whether that was so.
bool IsBusPassedOver();

}  // namespace platform::desktop

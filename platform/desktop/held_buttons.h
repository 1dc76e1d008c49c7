// The pointer's buttons from press to release. A release usually comes as an event. It does not
// where the server ends the grab of a press, as when the window is taken off the screen meanwhile,
// and where another program takes the pointer: then the server is asked what is held.
#pragma once

#include <optional>

#include "platform/desktop/top_level.h"

namespace platform::desktop {

/// Reports the release of each button that counts as held and is not among those given.
void ReleaseAllBut(Shared& shared, Long held, Point ptScreen, Long shift);

class HeldButtons {
  public:
    explicit HeldButtons(Shared& shared) : shared_(shared) {}

    /// How long may be waited before the server is asked; none while no button is held.
    std::optional<Millis> Patience(Millis now) const;
    /// Asks if it is time, and reports releases that nobody told.
    void Check(Millis now);

    /// True once after the last button went up and what it brought has been taken.
    bool AllLetGo();

  private:
    Shared& shared_;
    Millis asked_ = 0;  ///< when the server was asked last
    bool wasHeld_ = false;
};

}  // namespace platform::desktop

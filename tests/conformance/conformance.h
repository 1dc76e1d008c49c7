// Puts a driver to the contract of platform/driver.h, as docs/drivers.md tells it. Whoever writes a
// driver gives a way to make one with what is around it, and gets an answer for each rule. Plain
// C++, so that it can be run from any test or program.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/driver.h"

namespace conformance {

using platform::Handle;
using platform::Long;
using platform::Millis;
using platform::Point;

/// A driver, and what its user and its desktop do to it. What a member cannot do here it answers
/// with False or nothing, and the rules that need it are not tried. What it does may reach the
/// driver later.
class Surroundings {
  public:
    virtual ~Surroundings() = default;
    virtual platform::Driver& Driver() = 0;

    /// Milliseconds of the driver's clock within which the desktop has said all that it has to say.
    virtual Millis Quiet() const { return 20; }

    // The user. The pointer is on no window at first.

    virtual bool MovePointer(Point /*ptScreen*/) { return false; }
    /// kLeftButton and so on, where the pointer is.
    virtual bool ChangeButton(Long /*button*/, bool /*down*/) { return false; }
    /// Positive away from the user.
    virtual bool TurnWheel(Long /*notches*/) { return false; }
    /// A, the left Shift or Enter, by its virtual-key code; with what it types on a plain keyboard.
    virtual bool ChangeKey(Long /*code*/, bool /*down*/) { return false; }
    /// A click of the left button beside all windows of the driver.
    virtual bool ClickElsewhere() { return false; }

    // The desktop. `window` is visible.

    virtual bool Close(Handle /*window*/) { return false; }
    virtual bool Minimise(Handle /*window*/) { return false; }
    virtual bool Restore(Handle /*window*/) { return false; }
    virtual bool Move(Handle /*window*/, Point /*ptScreen*/) { return false; }
    virtual std::optional<platform::Colour> ColourOnScreen(Point /*ptScreen*/) { return {}; }
};

enum class Outcome {
    kKept,
    kBroken,
    kNotTried  ///< the surroundings cannot do what it takes
};

struct Result {
    std::string rule;  ///< such as "time.never_goes_back"
    Outcome outcome;
    std::string why;  ///< of kBroken, for people
};

/// The names of all rules.
std::vector<std::string> AllRules();

/// Tries a rule on a driver that is made for it. An exception that the driver throws breaks it.
Result Try(const std::string& rule, const std::function<std::unique_ptr<Surroundings>()>& make);

}  // namespace conformance

// From the toolkit's keys to virtual-key codes, modifiers and typed text.
#pragma once

#include <QKeyEvent>
#include <string>

#include "platform/base/types.h"

namespace platform::desktop {

/// The virtual-key code; 0 for a key that has none. Letters and digits are those that the key
/// types; on a keyboard without Latin letters, and for the upper row of digits whatever it types,
/// those that the key has on the plainest keyboard.
Long KeyCodeOf(const QKeyEvent& event);

/// kShiftBit, kCtrlBit, kAltBit.
Long ShiftOf(Qt::KeyboardModifiers modifiers);
/// The same once the event has taken effect: a modifier key counts from its own press on.
Long ShiftAfter(const QKeyEvent& event, Long code);

/// What the press types, empty if nothing: Ctrl with a letter types 1 to 26, Alt nothing, both
/// together what AltGr does.
std::u16string TypedText(const QKeyEvent& event, Long code);

}  // namespace platform::desktop

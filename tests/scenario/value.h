// The values that a scenario writes and reads, and their kinds: what a name takes and gives is
// settled before anything runs, so that a text in the place of a number is found at once.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "core/base/impulsevalue.h"
#include "platform/base/types.h"
#include "platform/windows/widget.h"

namespace sarnel {
class JPopupMenu;
class JHotKeys;
struct Program;
}  // namespace sarnel

namespace scenario {

using platform::Long;

/// What has members: a control or window, one of the two objects of the main window, or (behind the
/// program-wide names) the run itself. Not owned.
using Object =
    std::variant<platform::Widget*, sarnel::JPopupMenu*, sarnel::JHotKeys*, sarnel::Program*>;

/// The order of the alternatives is that of Kind.
using Value =
    std::variant<std::monostate, Long, bool, double, std::u16string, platform::Rect, Object>;

/// Null is also what a routine without a result gives.
enum class Kind { kNull, kInteger, kBoolean, kFloat, kText, kRect, kObject };

inline Kind KindOf(const Value& value) {
    return static_cast<Kind>(value.index());
}

/// "an integer", for messages.
std::string_view NameOf(Kind kind);

/// Whether a value of one kind may stand where another is asked for: only an integer for a float.
bool Accepts(Kind wanted, Kind given);

/// A number, True, False or null as it stands in a scenario; nothing if the word is none of them.
/// An integer beyond 32 bits is a Mistake.
std::optional<Value> Literal(std::string_view word);

/// The value as it is printed, with texts in quotes.
std::string Printed(const Value& value);

/// The value as it stands after an impulse, references followed.
Value FromImpulse(const sarnel::ImpulseValue& value);
/// `object` stands for whatever object the scenario names.
sarnel::ImpulseValue ToImpulse(const Value& value, sarnel::Object& object);

}  // namespace scenario

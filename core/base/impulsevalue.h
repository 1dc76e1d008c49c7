// The tagged value in which every argument of an impulse travels: nothing, a whole number, a
// boolean, a string, an object, or a reference to a caller's variable of one of these kinds, which
// is how a result comes back. Conversions between the kinds are late: they happen when a value is
// read.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "platform/base/types.h"

namespace sarnel {

using platform::Handle;
using platform::Long;

/// Whatever may stand in an ImpulseValue as an object: the component itself, a host.
class Object {
  public:
    virtual ~Object() = default;
};

class ImpulseValue {
  public:
    /// Null.
    ImpulseValue() = default;
    ImpulseValue(Long value) : value_(value) {}
    ImpulseValue(bool value) : value_(value) {}
    ImpulseValue(std::u16string value) : value_(std::move(value)) {}
    ImpulseValue(std::u16string_view value) : value_(std::u16string(value)) {}
    ImpulseValue(const char16_t* value) : value_(std::u16string(value)) {}
    /// Not owned; a null pointer is the object reference that names nothing.
    ImpulseValue(Object* value) : value_(value) {}

    /// References: not owned, the variable must outlive the value. Reading reads the variable,
    /// Assign writes it.
    ImpulseValue(Long* variable) : value_(variable) {}
    ImpulseValue(bool* variable) : value_(variable) {}
    ImpulseValue(std::u16string* variable) : value_(variable) {}
    ImpulseValue(Object** variable) : value_(variable) {}
    ImpulseValue(ImpulseValue* variable) : value_(variable) {}

    /// Any other pointer would become the boolean True. Bytes become text by platform::Widen.
    template <class T>
    requires(!std::is_convertible_v<T*, Object*> && !std::is_convertible_v<T*, const char16_t*>)
        ImpulseValue(T* value)
    = delete;

    bool IsReference() const;

    /// The value with every reference followed: one of the five plain kinds.
    ImpulseValue Plain() const;

    /// Kinds of the plain value.
    bool IsNull() const;
    bool IsLong() const;
    bool IsBoolean() const;
    bool IsString() const;
    bool IsObject() const;

    /// As a 32-bit number: True is -1, a string is decimal with blanks around it. Null, an object
    /// and any other text have no number.
    std::optional<Long> AsLong() const;

    /// As a boolean: zero is False, every other number True; a string is "True" or "False" ignoring
    /// case, else a number. Null and an object have none.
    std::optional<bool> AsBoolean() const;

    /// As a string: decimal, "True" or "False". Null and an object have none.
    std::optional<std::u16string> AsString() const;

    /// The object, or null if the value holds none.
    Object* AsObject() const;

    /// Writes through a reference, converting to the kind of the variable; a plain value is
    /// replaced. False, with nothing changed, when the conversion fails.
    bool Assign(const ImpulseValue& newValue);

  private:
    std::variant<std::monostate, Long, bool, std::u16string, Object*, Long*, bool*, std::u16string*,
                 Object**, ImpulseValue*>
        value_;
};

/// Text to number as the whole system does it: decimal digits with an optional sign and blanks
/// around; anything else, and a number beyond 32 bits, fails.
std::optional<Long> TextToLong(std::u16string_view text);

/// "True" and "False" ignoring case, else a decimal number such as -1, 0.5 or 1e3 (zero is False).
std::optional<bool> TextToBoolean(std::u16string_view text);

std::u16string LongToText(Long value);

/// "True" or "False".
std::u16string BooleanToText(bool value);

}  // namespace sarnel

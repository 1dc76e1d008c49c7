#include "core/base/impulsevalue.h"

#include <array>
#include <charconv>
#include <string>
#include <type_traits>

#include "platform/base/text.h"

namespace sarnel {

namespace {

template <class T>
constexpr bool kIsVariable = std::is_pointer_v<T> && !std::is_same_v<T, Object*>;

// The whole of a text, without the blanks around it, as std::from_chars reads a number, and with a
// plus sign too.
template <class Number>
std::optional<Number> Read(std::u16string_view text) {
    const std::string digits = platform::Narrow(platform::TrimBlanks(text));
    const bool plus = digits.starts_with('+') && !digits.starts_with("+-");
    const char* const begin = digits.data() + (plus ? 1 : 0);
    const char* const end = digits.data() + digits.size();
    Number number{};
    const auto [stop, error] = std::from_chars(begin, end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

// Only what is written in digits: std::from_chars would take "inf" as well.
std::optional<double> TextToNumber(std::u16string_view text) {
    const bool decimal = text.find_first_not_of(u"0123456789+-.eE ") == std::u16string_view::npos;
    return decimal ? Read<double>(text) : std::nullopt;
}

}  // namespace

bool ImpulseValue::IsReference() const {
    return std::visit([](const auto& held) { return kIsVariable<std::decay_t<decltype(held)>>; },
                      value_);
}

ImpulseValue ImpulseValue::Plain() const {
    return std::visit(
        [this](const auto& held) -> ImpulseValue {
            using T = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<T, ImpulseValue*>) {
                return held->Plain();
            } else if constexpr (kIsVariable<T>) {
                return ImpulseValue(*held);
            } else {
                return *this;
            }
        },
        value_);
}

bool ImpulseValue::IsNull() const {
    return std::holds_alternative<std::monostate>(Plain().value_);
}
bool ImpulseValue::IsLong() const {
    return std::holds_alternative<Long>(Plain().value_);
}
bool ImpulseValue::IsBoolean() const {
    return std::holds_alternative<bool>(Plain().value_);
}
bool ImpulseValue::IsString() const {
    return std::holds_alternative<std::u16string>(Plain().value_);
}
bool ImpulseValue::IsObject() const {
    return std::holds_alternative<Object*>(Plain().value_);
}

std::optional<Long> ImpulseValue::AsLong() const {
    const ImpulseValue plain = Plain();
    if (const auto* number = std::get_if<Long>(&plain.value_)) {
        return *number;
    }
    if (const auto* boolean = std::get_if<bool>(&plain.value_)) {
        return *boolean ? -1 : 0;
    }
    if (const auto* text = std::get_if<std::u16string>(&plain.value_)) {
        return TextToLong(*text);
    }
    return std::nullopt;
}

std::optional<bool> ImpulseValue::AsBoolean() const {
    const ImpulseValue plain = Plain();
    if (const auto* text = std::get_if<std::u16string>(&plain.value_)) {
        return TextToBoolean(*text);
    }
    const std::optional<Long> number = plain.AsLong();
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<std::u16string> ImpulseValue::AsString() const {
    const ImpulseValue plain = Plain();
    if (const auto* text = std::get_if<std::u16string>(&plain.value_)) {
        return *text;
    }
    if (const auto* boolean = std::get_if<bool>(&plain.value_)) {
        return BooleanToText(*boolean);
    }
    const std::optional<Long> number = plain.AsLong();
    return number ? std::optional(LongToText(*number)) : std::nullopt;
}

Object* ImpulseValue::AsObject() const {
    const ImpulseValue plain = Plain();
    const auto* object = std::get_if<Object*>(&plain.value_);
    return object != nullptr ? *object : nullptr;
}

bool ImpulseValue::Assign(const ImpulseValue& newValue) {
    const ImpulseValue plain = newValue.Plain();
    const auto store = [](auto* variable, const auto& converted) {
        if (converted) {
            *variable = *converted;
        }
        return converted.has_value();
    };
    if (auto* const* number = std::get_if<Long*>(&value_)) {
        return store(*number, plain.AsLong());
    }
    if (auto* const* boolean = std::get_if<bool*>(&value_)) {
        return store(*boolean, plain.AsBoolean());
    }
    if (auto* const* text = std::get_if<std::u16string*>(&value_)) {
        return store(*text, plain.AsString());
    }
    if (auto* const* object = std::get_if<Object**>(&value_)) {
        if (plain.IsObject()) {
            **object = plain.AsObject();
        }
        return plain.IsObject();
    }
    if (auto* const* other = std::get_if<ImpulseValue*>(&value_)) {
        return (*other)->Assign(plain);
    }
    value_ = plain.value_;
    return true;
}

std::optional<Long> TextToLong(std::u16string_view text) {
    return Read<Long>(text);
}

std::optional<bool> TextToBoolean(std::u16string_view text) {
    const std::u16string_view word = platform::TrimBlanks(text);
    if (platform::EqualIgnoringCase(word, u"True")) {
        return true;
    }
    if (platform::EqualIgnoringCase(word, u"False")) {
        return false;
    }
    const std::optional<double> number = TextToNumber(word);
    return number ? std::optional(*number != 0) : std::nullopt;
}

std::u16string LongToText(Long value) {
    std::array<char, 12> digits;  // a sign and ten of them
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return std::u16string(static_cast<const char*>(digits.data()), end);
}

std::u16string BooleanToText(bool value) {
    return value ? u"True" : u"False";
}

}  // namespace sarnel

#include "tests/scenario/value.h"

#include <array>
#include <charconv>

#include "tests/scenario/words.h"

namespace scenario {

namespace {

template <class Number>
std::string NumberText(Number number) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    return {buffer.data(), end};
}

// The whole word as a number.
template <class Number>
std::errc ParseNumber(std::string_view word, Number& number) {
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    return stop == end ? error : std::errc::invalid_argument;
}

struct Printer {
    std::string operator()(std::monostate) const { return "null"; }
    std::string operator()(Long value) const { return NumberText(value); }
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(double value) const { return NumberText(value); }
    std::string operator()(const std::u16string& value) const { return Quote(value); }
    std::string operator()(const platform::Rect& rect) const {
        return NumberText(rect.left) + ',' + NumberText(rect.top) + ',' + NumberText(rect.right) +
               ',' + NumberText(rect.bottom);
    }
    std::string operator()(const Object&) const { return "object"; }
};

}  // namespace

std::string_view NameOf(Kind kind) {
    static constexpr std::array<std::string_view, 7> kNames{
        "null", "an integer", "True or False", "a number", "a text", "a rectangle", "an object"};
    return kNames.at(static_cast<std::size_t>(kind));
}

bool Accepts(Kind wanted, Kind given) {
    return wanted == given || (wanted == Kind::kFloat && given == Kind::kInteger);
}

std::optional<Value> Literal(std::string_view word) {
    if (word == "True" || word == "False") {
        return Value(word == "True");
    }
    if (word == "null") {
        return Value();
    }
    if (word.find_first_not_of("-.0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    Long integer = 0;
    const std::errc error = ParseNumber(word, integer);
    if (error == std::errc()) {
        return Value(integer);
    }
    double number = 0;
    if (error == std::errc::result_out_of_range || ParseNumber(word, number) != std::errc()) {
        throw Mistake("no number: " + std::string(word));
    }
    return Value(number);
}

std::string Printed(const Value& value) {
    return std::visit(Printer(), value);
}

Value FromImpulse(const sarnel::ImpulseValue& value) {
    if (value.IsLong()) {
        return *value.AsLong();
    }
    if (value.IsBoolean()) {
        return *value.AsBoolean();
    }
    if (value.IsString()) {
        return *value.AsString();
    }
    return value.IsObject() ? Value(Object()) : Value();
}

sarnel::ImpulseValue ToImpulse(const Value& value, sarnel::Object& object) {
    switch (KindOf(value)) {
        case Kind::kNull:
            return {};
        case Kind::kInteger:
            return std::get<Long>(value);
        case Kind::kBoolean:
            return std::get<bool>(value);
        case Kind::kText:
            return std::get<std::u16string>(value);
        case Kind::kObject:
            return &object;
        case Kind::kFloat:
        case Kind::kRect:
            break;
    }
    throw Mistake("an impulse carries no " + Printed(value));
}

}  // namespace scenario

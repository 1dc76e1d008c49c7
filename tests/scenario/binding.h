// Turns the component's own members and routines into entries of the tables of names. What a name
// takes and gives is read off its C++ type, so that an entry is a line:
//
//     Property("ListIndex", &JList::ListIndex, &JList::ListIndex)    // read and written
//     ReadOnly("List", &JList::List)
//     Method("RemoveItem", &JList::RemoveItem)
//     Method("AddItem", +[](JList& list, Text a, Text b, std::optional<Long> at) { ... })
//     Routine("NextItem", NextItem)
//     Variable("Random", &Program::Random)
//
// A lambda takes the place of a member where a default argument or another form is needed.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/state/program.h"
#include "tests/scenario/value.h"

namespace scenario {

using Text = std::u16string_view;
using Arguments = std::span<const Value>;

/// Something to run with arguments of settled kinds.
struct Function {
    std::vector<Kind> parameters;
    std::size_t required = 0;  ///< the others may be left out at the end
    Kind result = Kind::kNull;
    std::function<Value(const Object& object, Arguments arguments)> run;
};

/// What a name can be used for; at least one.
struct Entry {
    std::string_view name;
    std::optional<Function> get;
    std::optional<Function> set;  ///< the new value is the last parameter
    std::optional<Function> call;
};

namespace binding {

template <class T>
struct IsOptional : std::false_type {};
template <class T>
struct IsOptional<std::optional<T>> : std::true_type {
    using Inner = T;
};

template <class T>
constexpr Kind KindOfType() {
    using Plain = std::decay_t<T>;
    if constexpr (std::is_void_v<T>) {
        return Kind::kNull;
    } else if constexpr (IsOptional<Plain>::value) {
        return KindOfType<typename IsOptional<Plain>::Inner>();
    } else if constexpr (std::is_same_v<Plain, bool>) {
        return Kind::kBoolean;
    } else if constexpr (std::is_integral_v<Plain>) {
        return Kind::kInteger;
    } else if constexpr (std::is_floating_point_v<Plain>) {
        return Kind::kFloat;
    } else if constexpr (std::is_same_v<Plain, platform::Rect>) {
        return Kind::kRect;
    } else if constexpr (std::is_base_of_v<platform::Widget, Plain>) {
        return Kind::kObject;
    } else {
        static_assert(std::is_convertible_v<Plain, Text>, "no scenario value has this type");
        return Kind::kText;
    }
}

/// The object as the class whose member is called, or that a routine takes.
template <class C>
C& As(const Object& object) {
    if constexpr (std::is_base_of_v<platform::Widget, C>) {
        return dynamic_cast<C&>(*std::get<platform::Widget*>(object));
    } else {
        return *std::get<C*>(object);
    }
}

/// The argument at `index` as the C++ type that the routine takes.
template <class T>
auto Take(Arguments arguments, std::size_t index) {
    using Plain = std::decay_t<T>;
    if constexpr (IsOptional<Plain>::value) {
        return index < arguments.size()
                   ? Plain(Take<typename IsOptional<Plain>::Inner>(arguments, index))
                   : std::nullopt;
    } else if constexpr (KindOfType<T>() == Kind::kText) {
        return Plain(std::get<std::u16string>(arguments[index]));
    } else if constexpr (KindOfType<T>() == Kind::kFloat) {
        const auto* integer = std::get_if<Long>(&arguments[index]);
        return static_cast<Plain>(integer != nullptr ? *integer
                                                     : std::get<double>(arguments[index]));
    } else if constexpr (KindOfType<T>() == Kind::kInteger) {
        return static_cast<Plain>(std::get<Long>(arguments[index]));
    } else if constexpr (KindOfType<T>() == Kind::kObject) {
        return std::ref(As<Plain>(std::get<Object>(arguments[index])));
    } else {
        return std::get<Plain>(arguments[index]);
    }
}

template <class T>
Value Give(T&& result) {
    constexpr Kind kKind = KindOfType<T>();
    if constexpr (kKind == Kind::kText) {
        return std::u16string(std::forward<T>(result));
    } else if constexpr (kKind == Kind::kInteger) {
        return static_cast<Long>(result);
    } else if constexpr (kKind == Kind::kFloat) {
        return static_cast<double>(result);
    } else {
        return result;
    }
}

/// `call` takes the object, then arguments of the types A, and gives an R.
template <class R, class... A, class Call>
Function Make(Call call) {
    Function function;
    function.parameters = {KindOfType<A>()...};
    function.required = (std::size_t{0} + ... + (IsOptional<std::decay_t<A>>::value ? 0u : 1u));
    function.result = KindOfType<R>();
    function.run = [call]<std::size_t... I>(std::index_sequence<I...>) {
        return [call](const Object& object, [[maybe_unused]] Arguments arguments) -> Value {
            if constexpr (std::is_void_v<R>) {
                call(object, Take<A>(arguments, I)...);
                return {};
            } else {
                return Give<R>(call(object, Take<A>(arguments, I)...));
            }
        };
    }
    (std::index_sequence_for<A...>());
    return function;
}

/// The same for whatever can be called with a C& in front: a member or a plain function.
template <class C, class R, class... A, class Call>
Function OfClass(Call call) {
    return Make<R, A...>([call](const Object& object, A... arguments) -> R {
        return std::invoke(call, As<C>(object), std::forward<A>(arguments)...);
    });
}

}  // namespace binding

template <class C, class R, class... A>
Entry ReadOnly(std::string_view name, R (C::*get)(A...) const) {
    return {name, binding::OfClass<C, R, A...>(get), {}, {}};
}
template <class C, class R, class... A>
Entry ReadOnly(std::string_view name, R (*get)(C&, A...)) {
    return {name, binding::OfClass<C, R, A...>(get), {}, {}};
}

template <class C, class R, class V>
Entry Property(std::string_view name, R (C::*get)() const, void (C::*set)(V)) {
    return {name, binding::OfClass<C, R>(get), binding::OfClass<C, void, V>(set), {}};
}
template <class C, class R, class V>
Entry Property(std::string_view name, R (*get)(C&), void (*set)(C&, V)) {
    return {name, binding::OfClass<C, R>(get), binding::OfClass<C, void, V>(set), {}};
}
/// One with an index.
template <class C, class R, class V>
Entry Property(std::string_view name, R (C::*get)(Long) const, void (C::*set)(Long, V)) {
    return {name, binding::OfClass<C, R, Long>(get), binding::OfClass<C, void, Long, V>(set), {}};
}

template <class C, class R, class... A>
Entry Method(std::string_view name, R (C::*call)(A...)) {
    return {name, {}, {}, binding::OfClass<C, R, A...>(call)};
}
template <class C, class R, class... A>
Entry Method(std::string_view name, R (C::*call)(A...) const) {
    return {name, {}, {}, binding::OfClass<C, R, A...>(call)};
}
template <class C, class R, class... A>
Entry Method(std::string_view name, R (*call)(C&, A...)) {
    return {name, {}, {}, binding::OfClass<C, R, A...>(call)};
}

/// A free routine of the component, or a public one of its main window.
template <class R, class... A>
Entry Routine(std::string_view name, R (*call)(A...)) {
    return {name, {}, {}, binding::Make<R, A...>([call](const Object&, A... arguments) -> R {
                return call(std::forward<A>(arguments)...);
            })};
}

/// Program-wide state.
template <class T>
Entry Variable(std::string_view name, T sarnel::Program::*variable) {
    using sarnel::Program;
    Function get = binding::OfClass<Program, T>(variable);
    Function set = binding::Make<void, T>([variable](const Object& object, T value) {
        binding::As<Program>(object).*variable = std::move(value);
    });
    return {name, std::move(get), std::move(set), {}};
}

}  // namespace scenario

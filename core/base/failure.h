// The system's way with failures: a step that fails is skipped, nothing is reported, and the next
// step runs. Step() is the one place where that happens; a routine reads as its list of steps.
// Where a failure must reach the caller instead, it travels as a ComponentError.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <utility>

namespace sarnel {

/// A numbered error that a routine raises to its caller.
class ComponentError : public std::exception {
  public:
    ComponentError(std::uint32_t errorNumber, std::u16string errorDescription)
        : number_(errorNumber), description_(std::move(errorDescription)) {}

    std::uint32_t Number() const { return number_; }
    const std::u16string& Description() const { return description_; }
    const char* what() const noexcept override { return "numbered component error"; }

  private:
    std::uint32_t number_;
    std::u16string description_;
};

/// An index outside a column.
inline ComponentError BoundsError() {
    return {9, u"Subscript out of range"};
}

// A reach through a pointer that may be null: the step that makes it fails, as a step does that
// lacks its object. The host may end the run inside any of its answers, and what the main window
// held is gone when the next step runs.

/// The pointer itself; raises an error if it is null.
template <class Pointer>
const Pointer& Needed(const Pointer& pointer) {
    if (pointer == nullptr) {
        throw ComponentError(91, u"Object variable not set");
    }
    return pointer;
}

/// Runs one step; a failure inside it is skipped.
template <class Action>
void Step(Action&& action) noexcept {
    try {
        std::forward<Action>(action)();
    } catch (...) {  // NOLINT(bugprone-empty-catch): a failing step is skipped, that is the rule
    }
}

/// Writes a converted value; a conversion that failed leaves the variable as it was.
template <class T>
void Take(T& variable, const std::optional<T>& converted) {
    if (converted) {
        variable = *converted;
    }
}

}  // namespace sarnel

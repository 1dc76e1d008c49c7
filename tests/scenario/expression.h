// What a scenario asks, sets and calls: `NAME`, `NAME(args)`, `OBJECT.MEMBER` or
// `OBJECT.MEMBER(args)`, and the values that it gives. All of it is looked up and checked when the
// file is read; only the evaluation needs a run.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tests/scenario/names.h"
#include "tests/scenario/prints.h"
#include "tests/scenario/value.h"
#include "tests/scenario/words.h"

namespace scenario {

class Expression;
class Operand;
class World;

/// What a line may refer to where it stands.
struct Scope {
    std::u16string directory;   ///< $D
    int line = 0;               ///< its number in the file
    const Class* it = nullptr;  ///< class of the instance that `new` made last
    int depth = 0;              ///< above 0: inside so many `at` and `host on`
    /// What the commands inside others print, so that from here on any may print that as well.
    Prints inside = Prints::kNothing;

    /// A text with $D replaced.
    std::u16string Resolve(std::u16string_view text) const {
        return Replaced(text, u"$D", directory);
    }
};

/// An object by name.
struct ObjectReference {
    const ObjectName* name = nullptr;  ///< null: `it`
    const Class* type = nullptr;
    std::shared_ptr<const Operand> index;  ///< of a control array

    /// Raises Mistake if it is not there.
    Object Find(World& world) const;
    /// The name under which the object's events are printed: `sldSkin(0)`.
    std::string PrintedName(World& world) const;
};

/// A literal, an object, or something to evaluate first.
class Operand {
  public:
    using Nested = std::shared_ptr<const Expression>;

    explicit Operand(Value value) : what_(std::move(value)) {}
    explicit Operand(ObjectReference object) : what_(std::move(object)) {}
    explicit Operand(Nested expression) : what_(std::move(expression)) {}

    /// Raises Mistake if the word is nothing of these.
    static Operand Parse(const Word& word, const Scope& scope);

    Kind ResultKind() const;
    Value Evaluate(World& world) const;
    /// The value of a literal; null if it is none.
    const Value* AsLiteral() const { return std::get_if<Value>(&what_); }

  private:
    std::variant<Value, ObjectReference, Nested> what_;
};

enum class Use { kAsk, kSet, kCall };

class Expression {
  public:
    /// Without an object: program-wide. The function must outlive the expression.
    Expression(std::optional<ObjectReference> object, const Function& function,
               std::vector<Operand> arguments);

    /// `more` are the arguments that stand behind it in the line: of a call, or the new value.
    static Expression Parse(std::string_view raw, Use use, std::vector<Operand> more,
                            const Scope& scope);

    Kind ResultKind() const { return function_->result; }
    /// Lets through what the member raises.
    Value Evaluate(World& world) const;

  private:
    std::optional<ObjectReference> object_;
    const Function* function_;
    std::vector<Operand> arguments_;
};

/// A window or control by name.
ObjectReference ParseWindow(const Word& word, const Scope& scope);
/// The same, or hot keys: whatever raises events.
ObjectReference ParseRaiser(const Word& word, const Scope& scope);

/// Raises Mistake unless a control array has that item.
void CheckIndex(const ObjectName& array, Long index);

}  // namespace scenario

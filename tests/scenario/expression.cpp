// Evaluation; how an expression is read is in expression_parser.cpp.
#include "tests/scenario/expression.h"

#include "tests/scenario/world.h"

namespace scenario {

Object ObjectReference::Find(World& world) const {
    if (name == nullptr) {
        return world.It(*type);
    }
    world.Component();  // what the tables reach belongs to it
    Long at = 0;
    if (index != nullptr) {
        at = std::get<Long>(index->Evaluate(world));
        CheckIndex(*name, at);
    }
    const Object object = name->find(at);
    if (std::visit([](auto* pointer) { return pointer == nullptr; }, object)) {
        throw Mistake("not there now: " + std::string(name->name));
    }
    return object;
}

std::string ObjectReference::PrintedName(World& world) const {
    if (name == nullptr) {
        return "it";
    }
    return std::string(name->name) +
           (index != nullptr ? '(' + Printed(index->Evaluate(world)) + ')' : std::string());
}

Kind Operand::ResultKind() const {
    if (const auto* value = std::get_if<Value>(&what_)) {
        return KindOf(*value);
    }
    const auto* nested = std::get_if<Nested>(&what_);
    return nested != nullptr ? (*nested)->ResultKind() : Kind::kObject;
}

Value Operand::Evaluate(World& world) const {
    if (const auto* value = std::get_if<Value>(&what_)) {
        return *value;
    }
    if (const auto* object = std::get_if<ObjectReference>(&what_)) {
        return object->Find(world);
    }
    return std::get<Nested>(what_)->Evaluate(world);
}

Expression::Expression(std::optional<ObjectReference> object, const Function& function,
                       std::vector<Operand> arguments)
    : object_(std::move(object)), function_(&function), arguments_(std::move(arguments)) {}

Value Expression::Evaluate(World& world) const {
    std::vector<Value> values;
    for (const Operand& argument : arguments_) {
        values.push_back(argument.Evaluate(world));
    }
    const Object object = object_ ? object_->Find(world) : Object(&world.Component().State());
    return function_->run(object, values);
}

}  // namespace scenario

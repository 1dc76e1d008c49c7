// Asking and setting: values, focus, timers, events, and the instance that `new` makes.
#include "tests/scenario/commands.h"

namespace scenario {

namespace {

Command Ask(CommandLine& line) {
    const Word& word = line.Next();
    if (word.quoted || Literal(word.raw)) {
        throw Mistake("not a name: " + word.raw);
    }
    return [what = Operand::Parse(word, line.GetScope())](World& world) {
        world.Print(world.Printed(what.Evaluate(world)));
    };
}

Command Set(CommandLine& line) {
    const std::string target = line.Next().raw;
    std::vector<Operand> value{line.Value()};
    return [what = Expression::Parse(target, Use::kSet, std::move(value), line.GetScope())](
               World& world) { what.Evaluate(world); };
}

Command Call(CommandLine& line) {
    const std::string target = line.Next().raw;
    const auto what = Expression::Parse(target, Use::kCall, line.Values(), line.GetScope());
    return [what](World& world) {
        const Value result = what.Evaluate(world);
        if (what.ResultKind() != Kind::kNull) {
            world.Print(world.Printed(result));
        }
    };
}

Command New(CommandLine& line) {
    const std::string name = line.Next().raw;
    const Class* type = ClassForNew(name);
    if (type == nullptr) {
        throw Mistake("unknown class: " + name);
    }
    line.GetScope().it = type;
    return [type](World& world) { world.MakeInstance(*type); };
}

Command Focus(CommandLine& /*line*/) {
    return [](World& world) {
        const platform::Handle focus = world.Windows().GetFocus();
        world.Component();
        const std::string name = focus == world.ItsWindow() ? "it" : NameOfWindow(focus);
        world.Print(focus == 0 ? "none" : name.empty() ? "other" : name);
    };
}

Command Timers(CommandLine& /*line*/) {
    return [](World& world) {
        for (const auto& [id, period] : world.Windows().Timers(world.MainWindow())) {
            world.Print(std::to_string(id) + ' ' + std::to_string(period));
        }
    };
}

Command Events(CommandLine& line) {
    return [window = line.Window()](World& world) {
        world.Record(*std::get<platform::Widget*>(window.Find(world)), window.PrintedName(world));
    };
}

Command Raised(CommandLine& /*line*/) {
    return [](World& world) {
        for (std::string& event : world.TakeRaised()) {
            world.Print(std::move(event));
        }
    };
}

}  // namespace

const CommandTable& AskCommands() {
    static const CommandTable table{
        {"?", Ask},       {"set", Set},       {"call", Call},     {"new", New, false},
        {"focus", Focus}, {"timers", Timers}, {"events", Events}, {"raised", Raised},
    };
    return table;
}

}  // namespace scenario

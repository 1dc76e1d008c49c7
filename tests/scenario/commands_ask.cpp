// Asking and setting: values, focus, timers, events, and the instance that `new` makes.
#include "controls/list/jlist.h"
#include "core/base/impulsevalue.h"
#include "platform/base/text.h"
#include "tests/scenario/commands.h"
#include "tests/scenario/nearest.h"

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

[[noreturn]] void UnknownProperty(const std::string& key) {
    std::vector<std::string_view> known;
    for (const StoredProperty& property : StoredProperties()) {
        known.push_back(property.key);
    }
    throw Mistake("unknown property of a list: " + key + DidYouMean(key, known));
}

// A list as it comes out of a window's static layout: keys and values of what is stored there.
Command NewStoredList(CommandLine& line) {
    std::vector<std::pair<const StoredProperty*, Operand>> values;
    while (!line.AtEnd()) {
        const std::u16string key = line.Text();
        const StoredProperty* property = FindStoredProperty(key);
        if (property == nullptr) {
            UnknownProperty(platform::Narrow(key));
        }
        const Operand value = line.Value();
        if (!Accepts(property->kind, value.ResultKind())) {
            throw Mistake("wrong value: " + std::string(property->key) + " takes " +
                          std::string(NameOf(property->kind)) + ", not " +
                          std::string(NameOf(value.ResultKind())));
        }
        values.emplace_back(property, value);
    }
    return [values](World& world) {
        sarnel::JListStored stored;
        for (const auto& [property, value] : values) {
            property->set(stored, value.Evaluate(world));
        }
        world.MakeList(stored);
    };
}

Command New(CommandLine& line) {
    const std::string name = line.Next().raw;
    const Class* type = ClassForNew(name);
    if (type == nullptr) {
        std::vector<std::string_view> known;
        for (const Class* one : ClassesForNew()) {
            known.push_back(one->name);
        }
        throw Mistake("unknown class: " + name + DidYouMean(name, known));
    }
    line.GetScope().it = type;
    if (type == &ListClass() && !line.AtEnd()) {
        return NewStoredList(line);
    }
    return [type](World& world) { world.MakeInstance(*type); };
}

// Rows that tell which they are.
Command Rows(CommandLine& line) {
    const ObjectReference window = line.Window();
    if (window.type != &ListClass()) {
        throw Mistake("no list");
    }
    return [window, count = line.Natural()](World& world) {
        auto& list = dynamic_cast<sarnel::JList&>(*std::get<platform::Widget*>(window.Find(world)));
        list.RedrawFlag(false);
        for (Long row = 1; row <= count; ++row) {
            const std::u16string number = sarnel::LongToText(row);
            list.AddItem(u"Row " + number, u"/m/" + number + u".mp3");
        }
        list.RedrawFlag(true);
    };
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
    return [raiser = line.Raiser()](World& world) {
        world.Record(raiser.Find(world), raiser.PrintedName(world));
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
        {"?", Ask, true, Prints::kValue},
        {"set", Set},
        {"call", Call, true, Prints::kValue},
        {"new", New, false},
        {"focus", Focus, true, Prints::kLines},
        {"timers", Timers, true, Prints::kLines},
        {"events", Events},
        {"raised", Raised, true, Prints::kLines},
        {"rows", Rows},
    };
    return table;
}

}  // namespace scenario

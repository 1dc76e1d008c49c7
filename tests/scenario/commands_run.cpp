// Running: the component's life, time, and the host's side of the impulse channel.
#include <algorithm>

#include "core/base/impulses.h"
#include "core/state/frmmain.h"
#include "tests/scenario/commands.h"

namespace scenario {

using namespace sarnel;

namespace {

std::u16string OptionalText(CommandLine& line) {
    return line.AtEnd() ? std::u16string() : line.Text();
}

Command Start(CommandLine& line) {
    return [commandLine = OptionalText(line)](World& world) {
        world.Load();
        world.Show(commandLine);
    };
}

Command Load(CommandLine& /*line*/) {
    return [](World& world) { world.Load(); };
}

Command Show(CommandLine& line) {
    return [commandLine = OptionalText(line)](World& world) { world.Show(commandLine); };
}

Command Quit(CommandLine& /*line*/) {
    return [](World& world) { world.Quit(); };
}

Command Restart(CommandLine& line) {
    return [commandLine = OptionalText(line)](World& world) {
        world.Quit();
        world.Load();
        world.Show(commandLine);
    };
}

Command Impulse(CommandLine& line) {
    const Long number = line.Integer();
    const Operand first = line.Value();
    const Operand second = line.Value();
    const Operand third = line.Value();
    for (const Operand* value : {&first, &second, &third}) {
        CheckCarried(*value);
    }
    return [=](World& world) {
        sarnel::Object object;  // stands for whatever object a scenario gives to the component
        const ImpulseValue wParam = ToImpulse(first.Evaluate(world), object);
        ImpulseValue lParam1 = ToImpulse(second.Evaluate(world), object);
        ImpulseValue lParam2 = ToImpulse(third.Evaluate(world), object);
        const Long result = world.Component().ProcessImpulse(number, wParam, lParam1, lParam2);
        const bool givesWindow = number == kImpulseControl && wParam.AsLong() == kControlLoad;
        world.Print(std::to_string(result) + ' ' +
                    (givesWindow ? world.PrintedHandle(lParam1) : world.Printed(lParam1)) + ' ' +
                    world.Printed(lParam2));
    };
}

Command Advance(CommandLine& line) {
    return [duration = line.Natural()](World& world) {
        world.Screen().Expect(duration);
        world.Windows().Sleep(duration);
    };
}

Command At(CommandLine& line) {
    const Long delay = line.Natural();
    return [delay, command = line.Inner()](World& world) {
        world.Windows().Schedule(delay, [&world, command] { command(world); });
    };
}

Command Pump(CommandLine& /*line*/) {
    return [](World& world) { world.Windows().DoEvents(); };
}

Command Host(CommandLine& line) {
    return ParseWith({&HostCommands()}, line).run;
}

Command Log(CommandLine& line) {
    std::vector<Long> numbers;
    while (!line.AtEnd()) {
        numbers.push_back(line.Integer());
    }
    return [numbers](World& world) {
        for (const ScriptedHost::Entry& entry : world.Host().Log()) {
            if (numbers.empty() ||
                std::find(numbers.begin(), numbers.end(), entry.number) != numbers.end()) {
                world.Print(entry.line);
            }
        }
        world.Host().Forget();
    };
}

Command Forget(CommandLine& /*line*/) {
    return [](World& world) { world.Host().Forget(); };
}

}  // namespace

const CommandTable& RunCommands() {
    static const CommandTable table{
        {"start", Start, false},
        {"load", Load, false},
        {"restart", Restart, false},
        {"show", Show},
        {"quit", Quit},
        {"impulse", Impulse, true, Prints::kValues},
        {"advance", Advance},
        {"at", At},
        {"pump", Pump},
        {"host", Host},
        {"log", Log, true, Prints::kValues},
        {"forget", Forget},
    };
    return table;
}

}  // namespace scenario

// Input but for the pointer: keys, characters, drops, what a window manager and a second start do,
// and plain window messages.
#include <array>

#include "platform/base/text.h"
#include "tests/scenario/commands.h"

namespace scenario {

using namespace platform;

namespace {

Handle WindowOf(const ObjectReference& window, World& world) {
    return std::get<Widget*>(window.Find(world))->HWnd();
}

Long Modifiers(CommandLine& line) {
    static constexpr std::array<std::pair<std::string_view, Long>, 3> kNames{
        {{"shift", kShiftBit}, {"ctrl", kCtrlBit}, {"alt", kAltBit}}};
    Long modifiers = 0;
    while (!line.AtEnd()) {
        const Word& word = line.Next();
        const auto* name = std::find_if(kNames.begin(), kNames.end(),
                                        [&](const auto& known) { return known.first == word.raw; });
        if (word.quoted || name == kNames.end()) {
            throw Mistake("no modifier of a key: " + word.raw);
        }
        modifiers |= name->second;
    }
    return modifiers;
}

// A key goes down (True) or up to whoever has the focus at that moment.
Command KeyChanges(CommandLine& line, const std::vector<bool>& changes) {
    constexpr Long kHighestCode = 255;
    const Long code = line.Natural();
    if (code > kHighestCode) {
        throw Mistake("no virtual key: " + std::to_string(code));
    }
    return [code, modifiers = Modifiers(line), changes](World& world) {
        for (const bool down : changes) {
            world.Windows().Deliver(KeyChanged{code, modifiers, down});
        }
    };
}

Command Key(CommandLine& line) {
    return KeyChanges(line, {true, false});
}

Command KeyDown(CommandLine& line) {
    return KeyChanges(line, {true});
}

Command KeyUp(CommandLine& line) {
    return KeyChanges(line, {false});
}

Command Type(CommandLine& line) {
    return [text = line.Text()](World& world) { world.Windows().Deliver(TextTyped{text}); };
}

Command Drop(CommandLine& line) {
    const ObjectReference window = line.Window();
    std::vector<std::string> paths{line.Path()};
    while (!line.AtEnd()) {
        paths.push_back(line.Path());
    }
    return [window, paths](World& world) {
        world.Windows().DropFiles(WindowOf(window, world), paths);
    };
}

Command CopyData(CommandLine& line) {
    return [bytes = Narrow(line.Text())](World& world) {
        world.Windows().SendCopyData(world.MainWindow(), {0, bytes});
    };
}

Command Minimise(CommandLine& /*line*/) {
    return [](World& world) { world.Windows().Deliver(MinimisedByDesktop{world.MainWindow()}); };
}

Command Restore(CommandLine& /*line*/) {
    return [](World& world) { world.Windows().Deliver(RestoredByDesktop{world.MainWindow()}); };
}

Command SendWindowMessage(CommandLine& line) {
    const ObjectReference window = line.Window();
    const Long id = line.Integer();
    const Long wParam = line.Integer();
    const Long lParam = line.Integer();
    return [=](World& world) {
        const Handle target = WindowOf(window, world);
        const Long result = world.Windows().SendMessage(target, id, wParam, lParam);
        world.Print(std::to_string(result));
    };
}

}  // namespace

const CommandTable& InputCommands() {
    static const CommandTable table{
        {"key", Key},
        {"keydown", KeyDown},
        {"keyup", KeyUp},
        {"type", Type},
        {"drop", Drop},
        {"copydata", CopyData},
        {"minimise", Minimise},
        {"restore", Restore},
        {"message", SendWindowMessage, true, Prints::kValue},
    };
    return table;
}

}  // namespace scenario

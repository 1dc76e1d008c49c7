// The desktop's shell: system-wide keys, the tray icon, the registry of file types.
#include <algorithm>

#include "platform/base/text.h"
#include "tests/scenario/commands.h"

namespace scenario {

using namespace platform;

namespace {

// What a name stands for: the fresh instance's key, if there is one, or the main window's. Null if
// it was refused or has been let go: then pressing it is another program's affair.
const sarnel::JHotKeys::Key* FindKey(World& world, const std::u16string& name) {
    for (const sarnel::JHotKeys* keys : {world.ItsKeys(), world.MainKeys()}) {
        const auto* key = keys != nullptr ? keys->Find(name) : nullptr;
        if (key != nullptr) {
            return key;
        }
    }
    if (!world.Screen().HasAskedForHotKey(name)) {
        throw Mistake("no such hot key is registered: " + Narrow(name));
    }
    return nullptr;
}

Command PressHotKey(CommandLine& line) {
    return [name = line.Text()](World& world) {
        const sarnel::JHotKeys::Key* key = FindKey(world, name);
        for (const auto& [id, combination] : world.Screen().HotKeys()) {
            if (key != nullptr && combination.modifiers == key->modifiers &&
                combination.key == key->key) {
                world.Windows().Deliver(HotKeyPressed{id});
                return;
            }
        }
    };
}

Command HotKeys(CommandLine& line) {
    if (!line.SkipWord("taken")) {
        throw Mistake("not taken: " + line.Next().raw);
    }
    const Long modifiers = line.Integer();
    return [modifiers, key = line.Integer()](World& world) {
        world.Screen().TakeHotKey(modifiers, key);
    };
}

Command UseIcon(TrayIconUsed::Action action) {
    return [action](World& world) {
        const auto& tips = world.Screen().TrayTips();
        if (!tips.empty()) {  // without an icon there is nothing to point at
            world.Windows().Deliver(TrayIconUsed{tips.begin()->first, action});
        }
    };
}

Command Tray(CommandLine& line) {
    if (line.SkipWord("dblclick")) {
        return UseIcon(TrayIconUsed::Action::kOpen);
    }
    if (line.SkipWord("rightclick")) {
        return UseIcon(TrayIconUsed::Action::kMenu);
    }
    return [](World& world) {
        const auto& tips = world.Screen().TrayTips();
        world.Print(tips.empty() ? "none" : world.Printed(Value(tips.begin()->second)));
    };
}

Command Registry(CommandLine& /*line*/) {
    return [](World& world) {
        for (const RegistryValue& value : world.Screen().Registry()) {
            world.Print(world.Bare(value.key) + " = " + world.Printed(Value(value.text)));
        }
    };
}

}  // namespace

const CommandTable& ShellCommands() {
    static const CommandTable table{
        {"hotkey", PressHotKey},
        {"hotkeys", HotKeys},
        {"tray", Tray, true, Prints::kValue},
        {"registry", Registry, true, Prints::kLines},
    };
    return table;
}

}  // namespace scenario

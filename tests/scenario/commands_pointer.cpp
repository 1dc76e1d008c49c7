// The pointer: moves, buttons and the wheel, as a driver reports them. Coordinates are client
// pixels of the main window, or of the control that is named.
#include <optional>

#include "core/state/frmmain.h"
#include "tests/scenario/commands.h"

namespace scenario {

using namespace platform;

namespace {

Handle WindowOf(const std::optional<ObjectReference>& name, World& world) {
    return name ? std::get<Widget*>(name->Find(world))->HWnd() : world.MainWindow();
}

// Moves the pointer; who gets to know is the window system's matter.
void MoveTo(World& world, Handle window, Point ptClient) {
    const Rect rect = world.Windows().GetWindowRect(window);
    const Point ptScreen{rect.left + ptClient.x, rect.top + ptClient.y};
    world.Screen().MovePointer(ptScreen);
    world.Windows().Deliver(PointerMoved{ptScreen, world.Windows().Modifiers()});
}

void MoveToMiddle(World& world, Handle window) {
    const Rect rect = world.Windows().GetRect(window);
    MoveTo(world, window, {rect.Width() / 2, rect.Height() / 2});
}

void Change(World& world, Long button, bool down) {
    WindowSystem& windows = world.Windows();
    windows.Deliver(ButtonChanged{windows.GetCursorPos(), button, down, windows.Modifiers()});
}

void Click(World& world, Long button) {
    Change(world, button, true);
    Change(world, button, false);
}

Long Button(CommandLine& line) {
    return line.SkipWord("right")    ? kRightButton
           : line.SkipWord("middle") ? kMiddleButton
                                     : kLeftButton;
}

bool IsNumber(const std::string& word) {
    return !word.empty() && (word[0] == '-' || (word[0] >= '0' && word[0] <= '9'));
}

Command Mouse(CommandLine& line) {
    std::optional<ObjectReference> name;
    if (!line.NextIs(IsNumber)) {
        name = line.Window();
    }
    const Long x = line.Integer();
    const Long y = line.Integer();
    return [=](World& world) { MoveTo(world, WindowOf(name, world), {x, y}); };
}

Command Press(CommandLine& line) {
    return [button = Button(line)](World& world) { Change(world, button, true); };
}

Command Release(CommandLine& line) {
    return [button = Button(line)](World& world) { Change(world, button, false); };
}

// The control's middle, or without a name where the pointer is.
std::optional<ObjectReference> Target(CommandLine& line) {
    const auto isRight = [](const std::string& word) { return word == "right"; };
    return line.AtEnd() || line.NextIs(isRight) ? std::nullopt : std::optional(line.Window());
}

Command ClickOnce(CommandLine& line) {
    const auto target = Target(line);
    const Long button = line.SkipWord("right") ? kRightButton : kLeftButton;
    return [=](World& world) {
        if (target) {
            MoveToMiddle(world, WindowOf(target, world));
        }
        Click(world, button);
    };
}

Command ClickTwice(CommandLine& line) {
    return [target = Target(line)](World& world) {
        if (target) {
            MoveToMiddle(world, WindowOf(target, world));
        }
        Click(world, kLeftButton);
        Click(world, kLeftButton);
    };
}

Command Wheel(CommandLine& line) {
    const bool up = line.SkipWord("up");
    if (!up && !line.SkipWord("down")) {
        throw Mistake("neither up nor down: " + line.Next().raw);
    }
    return [notches = up ? 1 : -1](World& world) {
        WindowSystem& windows = world.Windows();
        windows.Deliver(WheelTurned{windows.GetCursorPos(), notches, windows.Modifiers()});
    };
}

}  // namespace

const CommandTable& PointerCommands() {
    static const CommandTable table{
        {"mouse", Mouse},     {"press", Press},         {"release", Release},
        {"click", ClickOnce}, {"dblclick", ClickTwice}, {"wheel", Wheel},
    };
    return table;
}

}  // namespace scenario

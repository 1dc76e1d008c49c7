// Popup menus: what the user does in the next one, and what the last one showed.
#include "tests/scenario/commands.h"

namespace scenario {

namespace {

Command Popup(CommandLine& line) {
    const int number = line.GetScope().line;
    if (line.SkipWord("choose")) {
        return [answer = Popups::Answer{number, line.Text()}](World& world) {
            world.PopupMenus().AnswerNext(answer);
        };
    }
    if (line.SkipWord("cancel")) {
        return [number](World& world) { world.PopupMenus().AnswerNext({number}); };
    }
    if (line.SkipWord("last")) {
        return [](World& world) {
            const std::vector<Lines>& levels = world.PopupMenus().LastLevels();
            for (const Lines& level : levels) {
                for (const std::string& row : level) {
                    &level == &levels.front() ? world.Print(row) : world.PrintFurther(row);
                }
            }
        };
    }
    if (line.SkipWord("pixel")) {
        const Long x = line.Integer();
        const Long y = line.Integer();
        return [x, y](World& world) {
            const auto& popup = world.Screen().LastPopup();
            if (!popup) {
                throw Mistake("no popup has been open");
            }
            world.Print(std::to_string(popup->GetPixel({x, y})));
        };
    }
    throw Mistake("neither choose, cancel, last nor pixel: " + line.Next().raw);
}

}  // namespace

const CommandTable& PopupCommands() {
    static const CommandTable table{{"popup", Popup, true, Prints::kLines}};
    return table;
}

}  // namespace scenario

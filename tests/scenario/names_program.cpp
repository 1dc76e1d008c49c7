// The program-wide variables.
#include "tests/scenario/names.h"

namespace scenario {

using sarnel::Program;

const std::vector<Entry>& ProgramNames() {
    static const std::vector<Entry> names{
        Variable("Random", &Program::Random),
        Variable("RepeatList", &Program::RepeatList),
        Variable("RepeatItem", &Program::RepeatItem),
        Variable("ManualAdvance", &Program::ManualAdvance),
        Variable("PlayAtStartup", &Program::PlayAtStartup),
        Variable("DisplayMode", &Program::DisplayMode),
        Variable("SortFilesMode", &Program::SortFilesMode),
        Variable("CurrentSkin", &Program::CurrentSkin),
        Variable("Playing", &Program::Playing),
        Variable("InfoText", &Program::InfoText),
        Variable("ScrollText", &Program::ScrollText),
        ReadOnly(
            "ScrollRect", +[](Program& program) { return program.ScrollRect; }),
        Variable("ScrollBack", &Program::ScrollBack),
        Variable("PulseLevel", &Program::PulseLevel),
        Variable("PulseFalling", &Program::PulseFalling),
        // Blue, green, red at 0, 1, 2.
        ReadOnly(
            "PulseColorFrom",
            +[](Program& program, Long at) {
                return Long{program.PulseColorFrom.at(static_cast<std::size_t>(at))};
            }),
        ReadOnly(
            "PulseColorTo",
            +[](Program& program, Long at) {
                return Long{program.PulseColorTo.at(static_cast<std::size_t>(at))};
            }),
        ReadOnly(
            "DisplayRect", +[](Program& program) { return program.DisplayRect; }),
        ReadOnly(
            "WorkArea", +[](Program& program) { return program.WorkArea; }),
        ReadOnly(
            "PlayedItems", +[](Program& program, Long slot) { return program.History.Item(slot); }),
        ReadOnly(
            "PlayedCount", +[](Program& program) { return program.History.Count(); }),
        Property(
            "PlayedPos", +[](Program& program) { return program.History.Pos(); },
            +[](Program& program, Long pos) { program.History.Pos(pos); }),
    };
    return names;
}

}  // namespace scenario

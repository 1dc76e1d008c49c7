// Words of the language whose features are not built yet. A scenario that uses one is told so; who
// builds the feature moves its words from here into the tables.
#include <algorithm>
#include <array>

#include "tests/scenario/names.h"

namespace scenario {

bool IsReservedCommand(std::string_view word) {
    static constexpr std::array<std::string_view, 3> kCommands{"registry", "tray", "hotkeys"};
    return std::find(kCommands.begin(), kCommands.end(), word) != kCommands.end();
}

bool IsReservedName(std::string_view name) {
    return name == "ShowTooltip";
}

}  // namespace scenario

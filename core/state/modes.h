// The modes: what the user switches on and off by an item of the command menu, and what is
// remembered.
#pragma once

#include <array>
#include <string_view>

#include "core/state/menukeys.h"
#include "core/state/program.h"
#include "core/state/settings.h"

namespace sarnel {

struct Mode {
    std::u16string_view menuKey;
    Setting<bool> setting;
    /// Null: the mark and the setting are all there is of it.
    bool Program::*state = nullptr;
};

namespace modes {

inline constexpr Mode kTopMost{menukeys::kTopMost, settings::kTopMost};
inline constexpr Mode kHideInSystray{menukeys::kHideInSystray, settings::kHideInSystray};
inline constexpr Mode kRandom{menukeys::kRandom, settings::kRandom, &Program::Random};
inline constexpr Mode kRepeatItem{menukeys::kRepeatItem, settings::kRepeatItem,
                                  &Program::RepeatItem};
inline constexpr Mode kRepeatList{menukeys::kRepeatList, settings::kRepeatList,
                                  &Program::RepeatList};
inline constexpr Mode kManualAdvance{menukeys::kManualAdvance, settings::kManualAdvance,
                                     &Program::ManualAdvance};
inline constexpr Mode kPlayAtStartup{menukeys::kPlayAtStartup, settings::kPlayAtStartup,
                                     &Program::PlayAtStartup};

/// In the order in which a start reads those that have a state.
inline constexpr auto kAll = std::to_array<Mode>(
    {kTopMost, kHideInSystray, kRandom, kRepeatItem, kRepeatList, kManualAdvance, kPlayAtStartup});

}  // namespace modes

}  // namespace sarnel

// The panels that can lie over the playlist, one row each: the panel's number in picFrame, the
// toggle that is latched while it is open, and the menu item that is marked while it is open;
// choosing that item opens and closes the panel. What a panel is filled with before it opens stands
// in menus/commands.cpp.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "core/state/controlnames.h"
#include "core/state/menukeys.h"

namespace sarnel {

struct PanelRow {
    Long frame;
    std::optional<Long> toggle;  ///< not all have one
    std::u16string_view menuKey;
};
inline constexpr std::array<PanelRow, kPanelCount> kPanelRows{{
    {kLyricsPanel, kLyricsToggle, menukeys::kLyrics},
    {kBrowserPanel, std::nullopt, menukeys::kAddFiles},
    {kAssociationPanel, std::nullopt, menukeys::kAssociateFiles},
    {kEffectsPanel, kEffectsToggle, menukeys::kEffects},
    {kInformationPanel, kInformationToggle, menukeys::kInformation},
    {kSearchPanel, std::nullopt, menukeys::kSearch},
}};

}  // namespace sarnel

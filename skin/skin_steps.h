// The parts of LoadSkin. Each applies rows that begin at its argument; a step that fails is skipped
// within all of them but ApplyListRows.
#pragma once

#include "controls/list/jlist.h"
#include "core/state/program.h"
#include "platform/widgets/picture_box.h"

namespace sarnel {

// skin_controls.cpp

void ApplyButtonRows(Long index, const SkinRows& first);
void ApplyToggleRows(Long index, const SkinRows& first);
void ApplySliderRows(Long index, const SkinRows& first);
void ApplyTextPanelRows(platform::PictureBox& panel, const SkinRows& first);

/// Font and colours from the skin's own rows on. The first failure ends it and reaches the caller;
/// RedrawFlag may then stay False. That is meant.
void ApplyListRows(JList& list, const SkinRows& skin);

/// The low byte of a colour goes to position 2, the next one to 1, the next to 0.
void SplitColor(platform::Colour colour, ColourBytes& bytes);

// skin_layout.cpp

/// Places the panels and what lies in them.
void LayoutFrames(const SkinRows& skin);

}  // namespace sarnel

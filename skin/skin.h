// Which skins there are, and the skin in force. Only the number is settled here so far: the table,
// the pictures and their application to the controls are not built yet.
#pragma once

#include <string>

#include "platform/types.h"

namespace sarnel {

using platform::Long;

Long SkinCount();
/// Of a skin from 1 to SkinCount().
std::u16string SkinName(Long skin);

/// Puts a skin in force; a number out of range gives skin 1. Writes the setting "Skin", asks the
/// host for its file types (impulse 11), and sets the ranges of the effect sliders.
void LoadSkin(Long skin);

}  // namespace sarnel

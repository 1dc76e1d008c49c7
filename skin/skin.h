// LoadSkin puts a skin in force: it turns its rows and pictures into the looks and the geometry of
// the whole main window. The same routine serves the start and a change at run time; nothing is
// undone first, and what the controls hold stays.
#pragma once

#include <string>

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

/// How many skins the table has; 0 if that cannot be read.
Long SkinCount();
/// Of a skin from 1 to SkinCount(). Fails if the table does not have it.
std::u16string SkinName(Long skin);

/// Puts a skin in force; a number out of range gives skin 1. Writes the setting "Skin" and asks the
/// host for its file types (impulse 11). A step that fails is skipped: its control stays as it was.
void LoadSkin(Long skin);

/// Asks the host for its file types once more and shows them in the panel of the associations.
void ShowFileTypes();

}  // namespace sarnel

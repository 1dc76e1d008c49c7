// The command menu: one tree, built once at start, on which all commands of the user interface
// hang, and the dispatcher that runs them.
#pragma once

#include <string_view>

#include "platform/base/types.h"

namespace sarnel {

using platform::Long;

/// Creates the main window's hMenu and fills it: the fixed tree, an item for each skin, and an item
/// for each part that the host names.
void BuildMenu();

/// Runs the command of an item of hMenu, by its key. What has no command does nothing: headers,
/// separators, placeholders.
void hMenu_Click(Long ItemNumber);
/// The same for the item with that key. Neither fails: a step that does is skipped.
void RunMenuCommand(std::u16string_view key);

// Modes: each writes its state, the mark of its item and its setting.

void SetHideInSystray(bool on);
void SetPlayAtStartup(bool on);
void SetManualAdvance(bool on);
void SetRandom(bool on);
void SetRepeatItem(bool on);
void SetRepeatList(bool on);

}  // namespace sarnel

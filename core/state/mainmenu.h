// The command menu of the main window (hMenu) as all modules reach it; menus/commandmenu.h builds
// it and runs its commands.
#pragma once

#include <memory>
#include <string_view>

#include "menus/jpopupmenu.h"

namespace sarnel {

/// The main window's hMenu, never null. Raises an error where there is none: until it is built, and
/// once the run has ended, which a host may do inside any of its answers.
std::shared_ptr<JPopupMenu> Menu();
/// The mark of hMenu's item with that key. Fails as Menu does.
bool IsMarked(std::u16string_view key);
void Mark(std::u16string_view key, bool checked);

}  // namespace sarnel

// The command menu: one tree, built once at start, on which all commands of the user interface
// hang.
#pragma once

namespace sarnel {

/// Creates the main window's hMenu and fills it: the fixed tree, an item for each skin, and an item
/// for each part that the host names.
void BuildMenu();

}  // namespace sarnel

// The host program as the player of file types and folders, written into the shell's registry. No
// answer of the shell is looked at: what cannot be written is not there.
#pragma once

#include <string_view>

#include "platform/windows/window_system.h"

namespace sarnel {

/// Writes the class with its verbs and icon, and the extension (without its point) that is of that
/// class. An extension with a point in it is skipped; an empty one writes the key ".".
void RegisterExtension(platform::WindowSystem& windows, std::u16string_view extension,
                       std::u16string_view exe, std::u16string_view className,
                       std::u16string_view icon);

/// Writes the two verbs of folders. They have names of their own: what a folder does by itself
/// stays as it was.
void RegisterDirectoryVerbs(platform::WindowSystem& windows, std::u16string_view exe);

/// Tells the shell that associations have changed.
void NotifyAssociationChange(platform::WindowSystem& windows);

}  // namespace sarnel

// Writing into the user's folders what makes a class of files known to the desktop.
#pragma once

#include "platform/desktop/associations/file_class.h"
#include "platform/desktop/associations/user_folders.h"
#include "platform/desktop/desktop_driver.h"

namespace platform::desktop {

/// Writes all that is not so already. Silent where that fails: each file is then as it was, and
/// nobody becomes the opener of anything without an entry. Takes a few seconds at most, and may be
/// called on any thread. Files whose content would be the same are left alone.
void PublishClass(const ProgramIdentity& program, const FileClass& fileClass,
                  const UserFolders& folders);

}  // namespace platform::desktop

// The procedures that stood in front before ours: kept when a hook is installed, put back when it
// goes.
#pragma once

#include "platform/windows/window_system.h"

namespace sarnel {

struct WindowHooks {
    platform::WindowProc main;
    platform::WindowProc playlist;
    platform::WindowProc filesAndFolders;
    platform::WindowProc lyrics;
};

}  // namespace sarnel

// A reach through a pointer that may be null: the step that makes it fails, as a step does that
// lacks its object. The host may end the run inside any of its answers, and what the main window
// held is gone when the next step runs.
#pragma once

#include "core/failure.h"

namespace sarnel {

/// The pointer itself; raises an error if it is null.
template <class Pointer>
const Pointer& Needed(const Pointer& pointer) {
    if (pointer == nullptr) {
        throw ComponentError(91, u"Object variable not set");
    }
    return pointer;
}

}  // namespace sarnel

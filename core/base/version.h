// The component's version; the window's resting title shows it.
#pragma once

#include "platform/base/types.h"

namespace sarnel {

inline constexpr platform::Long kVersionMajor = 1;
inline constexpr platform::Long kVersionMinor = 1;

}  // namespace sarnel

// Platform colours as they are stored in properties, made into colours to draw with.
#pragma once

#include "platform/base/types.h"

namespace sarnel {

/// A plain colour stays as it is; a code of the system's colours (0x80000000 plus 0 to 24) becomes
/// that colour; anything else gives -1, which is drawn white.
platform::Colour OleTranslateColor(platform::Colour colour);

}  // namespace sarnel

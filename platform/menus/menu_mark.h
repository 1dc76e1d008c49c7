// The marks in front of a menu's rows.
#pragma once

#include "platform/drawing/surface.h"

namespace platform {

enum class MenuMark { kCheck, kBullet };

/// Draws the mark in the middle of the rectangle, in a size that follows the rectangle's.
void DrawMenuMark(Surface& surface, const Rect& rect, MenuMark mark, Colour colour);

}  // namespace platform

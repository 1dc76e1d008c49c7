#include "platform/menus/menu_mark.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform {

namespace {

using Shape = std::array<std::string_view, 7>;

constexpr Shape kCheck{
    "......#",  //
    ".....##",  //
    "#...###",  //
    "##.###.",  //
    "#####..",  //
    ".###...",  //
    "..#....",
};
constexpr Shape kBullet{
    ".......",  //
    "..###..",  //
    ".#####.",  //
    ".#####.",  //
    ".#####.",  //
    "..###..",  //
    ".......",
};

}  // namespace

void DrawMenuMark(Surface& surface, const Rect& rect, MenuMark mark, Colour colour) {
    constexpr Long kRoom = 18;  // of a mark in its own size, with what is left free around it
    const Shape& shape = mark == MenuMark::kCheck ? kCheck : kBullet;
    const Long dot = std::max(std::min(rect.Width(), rect.Height()) / kRoom, 1);
    const Long side = static_cast<Long>(shape.size()) * dot;
    const Long left = rect.left + (rect.Width() - side) / 2;
    Long y = rect.top + (rect.Height() - side) / 2;
    for (const std::string_view line : shape) {
        Long x = left;
        for (const char point : line) {
            if (point == '#') {
                surface.FillRect({x, y, x + dot, y + dot}, colour);
            }
            x += dot;
        }
        y += dot;
    }
}

}  // namespace platform

#include "platform/menus/menu_mark.h"

#include <algorithm>
#include <array>
#include <cmath>
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

// What the shapes above are the pixels of, in dots.
bool Covers(MenuMark mark, double x, double y) {
    if (mark == MenuMark::kCheck) {
        constexpr double kHalfStroke = 1.5;
        return std::abs(y - std::min(x + 3, 8 - x)) <= kHalfStroke;
    }
    constexpr double kMiddle = 3.5;
    constexpr double kRadius = 2.6;
    return std::hypot(x - kMiddle, y - kMiddle) <= kRadius;
}

}  // namespace

void DrawMenuMark(Surface& surface, const Rect& rect, MenuMark mark, Colour colour) {
    constexpr Long kRoom = 18;  // of a mark in its own size, with what is left free around it
    const Shape& shape = mark == MenuMark::kCheck ? kCheck : kBullet;
    const Long dot = std::max(std::min(rect.Width(), rect.Height()) / kRoom, 1);
    const Long side = static_cast<Long>(shape.size()) * dot;
    const Long left = rect.left + (rect.Width() - side) / 2;
    const Long top = rect.top + (rect.Height() - side) / 2;
    if (surface.Density() > 1) {
        surface.FillShape({left, top, left + side, top + side}, colour, [&](double x, double y) {
            return Covers(mark, (x - left) / dot, (y - top) / dot);
        });
        return;
    }
    Long y = top;
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

#include "controls/list/translatecolour.h"

#include <array>
#include <cstdint>

namespace sarnel {

namespace {

using platform::Colour;

constexpr Colour Rgb(int red, int green, int blue) {
    return red | (green << 8) | (blue << 16);
}

constexpr Colour kFace = Rgb(212, 208, 200);
constexpr Colour kTitle = Rgb(10, 36, 106);
constexpr Colour kGrey = Rgb(128, 128, 128);
constexpr Colour kWhite = Rgb(255, 255, 255);

constexpr std::array<Colour, 25> kSystemColours{
    kFace,              // 0 scroll bar
    Rgb(58, 110, 165),  // 1 desktop
    kTitle,             // 2 active title bar
    kGrey,              // 3 inactive title bar
    kFace,              // 4 menu bar
    kWhite,             // 5 window background
    0,                  // 6 window frame
    0,                  // 7 menu text
    0,                  // 8 window text
    kWhite,             // 9 active title text
    kFace,              // 10 active border
    kFace,              // 11 inactive border
    kGrey,              // 12 application work space
    kTitle,             // 13 highlight
    kWhite,             // 14 highlighted text
    kFace,              // 15 button face
    kGrey,              // 16 button shadow
    kGrey,              // 17 disabled text
    0,                  // 18 button text
    kFace,              // 19 inactive title text
    kWhite,             // 20 button highlight
    Rgb(64, 64, 64),    // 21 dark shadow
    kFace,              // 22 light edge
    0,                  // 23 tip text
    Rgb(255, 255, 225)  // 24 tip background
};

}  // namespace

Colour OleTranslateColor(Colour colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    if (bits >> 24 == 0) {
        return colour;
    }
    const std::uint32_t code = bits & 0x7FFFFFFF;
    return bits >> 31 != 0 && code < kSystemColours.size() ? kSystemColours.at(code) : -1;
}

}  // namespace sarnel

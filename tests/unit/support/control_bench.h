// A window with one control under test on it, a pointer, and pictures made by hand.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows/widget.h"
#include "platform/windows/window_system.h"
#include "tests/unit/support/screen_driver.h"

namespace support {

inline constexpr platform::Colour kRed = 0x0000FF;
inline constexpr platform::Colour kGreen = 0x00FF00;
inline constexpr platform::Colour kBlue = 0xFF0000;
inline constexpr platform::Colour kWhite = 0xFFFFFF;

/// Flat images, one above the other.
inline platform::PictureRef Strip(platform::Size image,
                                  std::initializer_list<platform::Colour> colours) {
    const auto count = static_cast<platform::Long>(colours.size());
    auto strip =
        std::make_shared<platform::Surface>(platform::Size{image.width, image.height * count});
    platform::Rect rect{0, 0, image.width, image.height};
    for (const platform::Colour colour : colours) {
        strip->FillRect(rect, colour);
        rect = platform::Offset(rect, {0, image.height});
    }
    return strip;
}

/// A picture of one pixel a row, in these colours.
inline platform::PictureRef PictureOfColumn(std::initializer_list<platform::Colour> colours) {
    return Strip({1, 1}, colours);
}

/// A mask picture: '#' is white, anything else black.
inline platform::PictureRef MaskOf(std::initializer_list<std::string_view> rows) {
    const platform::Size size{static_cast<platform::Long>(rows.begin()->size()),
                              static_cast<platform::Long>(rows.size())};
    auto mask = std::make_shared<platform::Surface>(size);
    platform::Point at;
    for (const std::string_view row : rows) {
        for (at.x = 0; at.x < size.width; ++at.x) {
            mask->SetPixel(at, row[static_cast<std::size_t>(at.x)] == '#' ? kWhite : 0);
        }
        ++at.y;
    }
    return mask;
}

class ControlBench {
  public:
    ControlBench() { holder.Visible(true); }

    ScreenDriver driver;
    platform::WindowSystem windows{driver};
    platform::Widget holder{windows, 0, {0, 0, 400, 400}};

    // The pointer, in pixels of the holder.
    void Move(platform::Point point) {
        driver.MovePointer(point);
        windows.Deliver(platform::PointerMoved{point});
    }
    void Press(platform::Long button = 1) { Button(button, true); }
    void Release(platform::Long button = 1) { Button(button, false); }

    /// What the screen shows at a pixel of the holder.
    platform::Colour OnScreen(platform::Point point) {
        return driver.screens[holder.HWnd()].GetPixel(point);
    }

    /// Writes down what the control raises, "MouseDown 1 0 3 4".
    void Record(platform::Widget& control) {
        control.Observe([this](const std::string& event, const std::string& arguments) {
            events_.push_back(arguments.empty() ? event : event + " " + arguments);
        });
    }
    std::vector<std::string> Events() { return std::exchange(events_, {}); }

  private:
    void Button(platform::Long button, bool down) {
        windows.Deliver(platform::ButtonChanged{windows.GetCursorPos(), button, down});
    }

    std::vector<std::string> events_;
};

}  // namespace support

// A desktop with a window that writes down what input it gets.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/headless/headless_driver.h"
#include "platform/windows/window_system.h"
#include "tests/unit/support/window_log.h"

namespace support {

using Lines = std::vector<std::string>;

// The main window "w" covers 100, 50 to 300, 250 of the screen. Mouse messages are written down as
// "name event x,y" with what is held, all others as "name id wParam lParam".
class InputWindows : public ::testing::Test {
  protected:
    InputWindows() { w_ = Window(0, "w", {100, 50, 300, 250}); }

    platform::Handle Window(platform::Handle parent, const std::string& name,
                            const platform::Rect& rect) {
        const platform::WindowProc other = log_.Named(name);
        const platform::Handle window = windows_.CreateWindow(
            parent, rect, [this, name, other](const platform::Message& message) {
                return message.id >= platform::WM_MOUSEMOVE && message.id < platform::WM_MOUSEWHEEL
                           ? Written(name, message)
                           : other(message);
            });
        windows_.ShowWindow(window, platform::SW_SHOW);
        log_.Take();
        return window;
    }
    platform::Long Written(const std::string& name, const platform::Message& message) {
        static const char* const kNames[] = {"move", "down",    "up",    "double", "down2",
                                             "up2",  "double2", "down4", "up4",    "double4"};
        const platform::Point at = platform::PointOf(message.lParam);
        std::string line = name + " " + kNames[message.id - platform::WM_MOUSEMOVE] + " " +
                           std::to_string(at.x) + "," + std::to_string(at.y);
        if (message.wParam != 0) {
            line += " held " + std::to_string(message.wParam);
        }
        log_.Add(line);
        return 0;
    }
    // Screen points.
    Lines Move(platform::Point at, platform::Long shift = 0) {
        return After(platform::PointerMoved{at, shift});
    }
    Lines Press(platform::Point at, platform::Long button = 1, platform::Long shift = 0) {
        return After(platform::ButtonChanged{at, button, true, shift});
    }
    Lines Release(platform::Point at, platform::Long button = 1, platform::Long shift = 0) {
        return After(platform::ButtonChanged{at, button, false, shift});
    }
    Lines After(const platform::DriverEvent& event) {
        windows_.Deliver(event);
        return log_.Take();
    }

    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows_{driver_};
    WindowLog log_;
    platform::Handle w_ = 0;
};

}  // namespace support

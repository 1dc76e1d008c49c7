// Windows on a screen on paper, each with a face of one colour.
#pragma once

#include <gtest/gtest.h>

#include <list>
#include <map>
#include <vector>

#include "platform/windows/window_system.h"
#include "tests/unit/support/pictures.h"
#include "tests/unit/support/screen_driver.h"

namespace support {

class WindowScreen : public ::testing::Test {
  protected:
    // A window whose face has one colour.
    platform::Handle Window(platform::Handle parent, const platform::Rect& rect,
                            platform::Colour colour) {
        const platform::Handle window = windows_.CreateWindow(parent, rect, {});
        platform::Surface& face = faces_.emplace_back(platform::Size{rect.Width(), rect.Height()});
        face.FillRect(face.Bounds(), colour);
        faceOf_[window] = &face;
        windows_.SetFace(window, &face);
        windows_.ShowWindow(window, platform::SW_SHOW);
        return window;
    }
    platform::Handle Top(const platform::Rect& rect = {0, 0, 8, 4}) {
        top_ = Window(0, rect, 1);
        return top_;
    }
    // Draws on a face and says where.
    void Paint(platform::Handle window, const platform::Rect& rect, platform::Colour colour) {
        faceOf_[window]->FillRect(rect, colour);
        windows_.InvalidateRect(window, rect);
    }
    // What is sent now. The copy on the screen is then as the whole picture would be.
    std::vector<platform::Rect> Sent() {
        driver_.Sent();
        windows_.UpdateScreen();
        EXPECT_EQ(OnScreen(), RowsOf(windows_.Compose(top_)));
        return driver_.Sent();
    }
    Rows OnScreen() { return RowsOf(driver_.screens[top_]); }
    void Move(platform::Handle window, const platform::Rect& rect) {
        windows_.SetWindowPos(window, 0, rect.left, rect.top, rect.Width(), rect.Height(),
                              platform::SWP_NOZORDER);
    }

    ScreenDriver driver_;
    platform::WindowSystem windows_{driver_};
    std::list<platform::Surface> faces_;
    std::map<platform::Handle, platform::Surface*> faceOf_;
    platform::Handle top_ = 0;
};

}  // namespace support

// A popup menu of the component on the virtual screen, whose letters are 6 x 13 pixels: a block of
// 4 x 7, from the second column and the fourth row on.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <vector>

#include "menus/jpopupmenu.h"
#include "platform/headless/headless_driver.h"

namespace sarnel {

/// A menu over a window that passes the two messages on. Without a skin the colours are the
/// defaults, and a row is 18 high: 13 is below 15.
class MenuRows : public ::testing::Test {
  protected:
    MenuRows() {
        windows_.ShowWindow(owner_, platform::SW_SHOW);
        menu_.hWndOwner(owner_);
    }
    Long Add(std::u16string_view caption, Long parent = 0, bool enabled = true) {
        return menu_.AddItem(caption, parent, u"", false, enabled);
    }
    /// Shows the whole menu at 100,100 and looks at it after some keys, 10 ms apart.
    platform::Surface Shown(const std::vector<platform::KeyChanged>& keys = {},
                            platform::Point pointer = {0, 0}) {
        platform::Surface content;
        platform::Millis when = 0;
        windows_.Schedule(when, [=, this] {
            windows_.Deliver(platform::PointerMoved{pointer, 0});
        });
        for (const platform::KeyChanged& key : keys) {
            windows_.Schedule(when += 10, [=, this] { windows_.Deliver(key); });
        }
        windows_.Schedule(when + 5, [&] { content = windows_.ComposeScreen(); });
        menu_.ShowPopup(100, 100, 0, 0, 2, true);
        // Without the frame of 1 pixel.
        platform::Surface rows({400, 400});
        rows.BitBlt(rows.Bounds(), content, {101, 101});
        return rows;
    }
    using Keys = std::vector<platform::KeyChanged>;

    platform::HeadlessDriver driver_{platform::HeadlessDriver::Clock::kVirtual};
    platform::WindowSystem windows_{driver_};
    std::shared_ptr<mJPopupMenu> shared_ = std::make_shared<mJPopupMenu>(windows_);
    JPopupMenu menu_{shared_};
    Handle owner_ =
        windows_.CreateWindow(0, {0, 0, 10, 10}, [this](const platform::Message& message) {
            if (message.id == platform::WM_MEASUREITEM) {
                return menu_.WM_MEASUREITEM_Msg(message.lParam) ? 1 : 0;
            }
            if (message.id == platform::WM_DRAWITEM) {
                return menu_.WM_DRAWITEM_Msg(message.lParam) ? 1 : 0;
            }
            return 0;
        });
    const MenuColours colours_;
};

}  // namespace sarnel

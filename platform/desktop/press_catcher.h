// A popup hears of presses elsewhere because it holds the pointer. On an X server on Wayland that
// goes for the windows of this server only; the compositor tells nobody of presses on others and on
// the desktop. So a window that is as large as the screen lies around the popup meanwhile, and
// nothing of it is seen.
#pragma once

#include <xcb/xcb.h>

class QWindow;

namespace platform::desktop {

class PressCatcher {
  public:
    /// Below the popup, which is on an X server. There is none where nothing can be seen through.
    explicit PressCatcher(const QWindow& popup);
    ~PressCatcher();
    PressCatcher(const PressCatcher&) = delete;
    PressCatcher& operator=(const PressCatcher&) = delete;

  private:
    void Show(const QWindow& popup, const xcb_screen_t& screen, xcb_visualid_t visual);

    xcb_connection_t* const connection_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

}  // namespace platform::desktop

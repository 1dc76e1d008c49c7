// An icon in a tray of the X server: a small window that the tray takes into its own. It has a
// connection of its own, so that the toolkit never sees the window. Trays show the window's name as
// its tip.
#pragma once

#include <xcb/xcb.h>

#include <QString>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "platform/desktop/wait_loop.h"
#include "platform/desktop/x_connection.h"
#include "platform/driver.h"

namespace platform::desktop {

/// Tells which press of the left button makes a double click.
class DoublePress {
  public:
    /// `time` of the press, `within` which two are one double click: milliseconds. The time begins
    /// anew after 2^32.
    bool Press(std::uint32_t time, std::uint32_t within);
    /// Another button was pressed meanwhile.
    void Forget() { former_.reset(); }

  private:
    std::optional<std::uint32_t> former_;
};

class XembedIcon {
  public:
    using Used = std::function<void(TrayIconUsed::Action)>;

    /// `onPlaced`: told when IsPlaced has changed. The loop must outlive the icon.
    XembedIcon(WaitLoop& loop, QString tip, Used onUsed, std::function<void()> onPlaced);
    XembedIcon(const XembedIcon&) = delete;
    XembedIcon& operator=(const XembedIcon&) = delete;

    /// Looks for a tray, and from then on waits for one. Does nothing where the X server is not
    /// ours to use.
    void Begin();
    bool IsPlaced() const { return placed_; }
    void SetTip(const QString& tip);

  private:
    enum Name {
        kTray,
        kManager,
        kOpcode,
        kVisual,
        kXembed,
        kXembedInfo,
        kNetWmName,
        kUtf8,
        kNames
    };

    void Connect();
    void Drain();
    void Handle(const xcb_generic_event_t& event);
    void Told(const xcb_client_message_event_t& message);
    void Pressed(const xcb_button_press_event_t& press);
    void Released(const xcb_button_release_event_t& release);
    void LookForTray();
    void Dock();
    void Undock();
    void SetPlaced(bool placed);
    xcb_visualid_t VisualOfTray() const;
    bool MakeWindow();
    void NameWindow();
    void Draw();

    WaitLoop& loop_;
    QString tip_;
    Used onUsed_;
    std::function<void()> onPlaced_;

    std::unique_ptr<XConnection> server_;
    xcb_connection_t* connection_ = nullptr;  ///< the server's, null before Begin and without one
    const xcb_screen_t* screen_ = nullptr;
    std::array<xcb_atom_t, kNames> atoms_{};
    xcb_window_t tray_ = XCB_NONE;
    xcb_window_t window_ = XCB_NONE;
    xcb_colormap_t colours_ = XCB_NONE;
    xcb_gcontext_t context_ = XCB_NONE;
    std::uint8_t depth_ = 0;  ///< with 32 the tray shines through
    int width_ = 0;
    int height_ = 0;
    bool inTray_ = false;  ///< the window is within another one; perhaps not shown yet
    bool placed_ = false;
    DoublePress presses_;
};

}  // namespace platform::desktop

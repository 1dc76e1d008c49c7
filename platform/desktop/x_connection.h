// A connection of one's own to the X server, so that what is asked and heard on it is nobody
// else's, the toolkit's least of all. The server lets go of all that it has for it when it ends.
#pragma once

#include <xcb/xcb.h>

#include <functional>
#include <memory>

#include "platform/desktop/wait_loop.h"

namespace platform::desktop {

class XConnection {
  public:
    /// To the server that the environment names; null if there is none. `onReadable` is called from
    /// the loop, which must outlive the connection. It is not called for events that came in while
    /// something was asked: whoever asks looks for events afterwards.
    static std::unique_ptr<XConnection> Open(WaitLoop& loop, std::function<void()> onReadable);
    ~XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;

    xcb_connection_t* Get() const { return connection_; }
    int ScreenNumber() const { return screenNumber_; }
    const xcb_screen_t& Screen() const;

    bool IsBroken() const { return xcb_connection_has_error(connection_) != 0; }
    /// For one that is broken: it would be readable for ever.
    void StopWatching() { loop_.Watch(xcb_get_file_descriptor(connection_), nullptr); }

  private:
    XConnection(WaitLoop& loop, xcb_connection_t* connection, int screenNumber)
        : loop_(loop), connection_(connection), screenNumber_(screenNumber) {}

    WaitLoop& loop_;
    xcb_connection_t* const connection_;
    const int screenNumber_;
};

}  // namespace platform::desktop

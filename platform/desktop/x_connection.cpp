#include "platform/desktop/x_connection.h"

#include <utility>

namespace platform::desktop {

std::unique_ptr<XConnection> XConnection::Open(WaitLoop& loop, std::function<void()> onReadable) {
    int number = 0;
    xcb_connection_t* const connection = xcb_connect(nullptr, &number);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    loop.Watch(xcb_get_file_descriptor(connection), std::move(onReadable));
    return std::unique_ptr<XConnection>(new XConnection(loop, connection, number));
}

XConnection::~XConnection() {
    StopWatching();
    xcb_disconnect(connection_);
}

const xcb_screen_t& XConnection::Screen() const {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (int number = screenNumber_; number > 0 && screens.rem > 1; --number) {
        xcb_screen_next(&screens);
    }
    return *screens.data;
}

}  // namespace platform::desktop

// The least that a program can do which moves a title: wakes up 33 times a second and sends the
// server some pixels. What a process costs for that alone depends on the machine.
#include <poll.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

int main() {
    constexpr std::uint16_t kWidth = 185;
    constexpr std::uint16_t kHeight = 10;
    constexpr int kBeat = 30;  // milliseconds
    xcb_connection_t* server = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(server) != 0) {
        return 1;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(server)).data;
    const xcb_window_t window = xcb_generate_id(server);
    xcb_create_window(server, screen->root_depth, window, screen->root, 100, 100, 293, 277, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    const xcb_gcontext_t context = xcb_generate_id(server);
    xcb_create_gc(server, context, window, 0, nullptr);
    xcb_map_window(server, window);
    std::vector<std::uint32_t> pixels(std::size_t{kWidth} * kHeight);
    pollfd waited{xcb_get_file_descriptor(server), POLLIN, 0};
    while (xcb_connection_has_error(server) == 0) {
        ++pixels[0];
        xcb_put_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, window, context, kWidth, kHeight, 0, 0, 0,
                      screen->root_depth, static_cast<std::uint32_t>(pixels.size() * 4),
                      reinterpret_cast<const std::uint8_t*>(pixels.data()));
        xcb_flush(server);
        if (poll(&waited, 1, kBeat) > 0) {
            while (xcb_generic_event_t* event = xcb_poll_for_event(server)) {
                std::free(event);
            }
        }
    }
    return 0;
}

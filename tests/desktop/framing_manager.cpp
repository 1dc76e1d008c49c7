// A window manager of the stubborn kind: it lays a frame around every window, with the frame where
// the window wanted to be, minimises nothing, and answers nobody who asks for that. A window that
// asks for a place once it is there gets it to the pixel.
//
//     framing_manager
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <string_view>

#include "platform/desktop/x_answers.h"

namespace {

constexpr std::int16_t kBorder = 2;
constexpr std::int16_t kTitle = 18;

using platform::desktop::Owned;

struct Framed {
    xcb_window_t frame = 0;
    // The window itself, on the screen.
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
};

class Manager {
  public:
    Manager() : connection_(xcb_connect(nullptr, nullptr)) {
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        const std::uint32_t events =
            XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, screen_->root, XCB_CW_EVENT_MASK, &events);
        // Who looks whether there is a window manager looks for these.
        const xcb_window_t self = MakeWindow(-10, -10, 1, 1, 0);
        for (const xcb_window_t window : {screen_->root, self}) {
            Set(window, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW, {self});
        }
        Set(screen_->root, "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {});
    }
    ~Manager() { xcb_disconnect(connection_); }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;

    // Until the server goes.
    void Run() {
        for (;;) {
            xcb_flush(connection_);
            const auto event = Owned(xcb_wait_for_event(connection_));
            if (!event) {
                return;
            }
            Handle(*event);
        }
    }

  private:
    void Handle(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7F) {
            case XCB_MAP_REQUEST:
                Frame(reinterpret_cast<const xcb_map_request_event_t&>(event).window);
                break;
            case XCB_CONFIGURE_REQUEST:
                Configure(reinterpret_cast<const xcb_configure_request_event_t&>(event));
                break;
            case XCB_UNMAP_NOTIFY: {
                const auto& gone = reinterpret_cast<const xcb_unmap_notify_event_t&>(event);
                if (gone.event != screen_->root) {
                    xcb_reparent_window(connection_, gone.window, screen_->root, 0, 0);
                    Unframe(gone.window);
                }
                break;
            }
            case XCB_DESTROY_NOTIFY:
                Unframe(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
                break;
            default:
                break;
        }
    }

    void Frame(xcb_window_t window) {
        const auto asked = xcb_get_geometry(connection_, window);
        const auto wanted = Owned(xcb_get_geometry_reply(connection_, asked, nullptr));
        if (!wanted || framed_.contains(window)) {
            return;
        }
        Framed& framed = framed_[window];
        framed = {0, static_cast<std::int16_t>(wanted->x + kBorder),
                  static_cast<std::int16_t>(wanted->y + kTitle), wanted->width, wanted->height};
        framed.frame = MakeWindow(
            wanted->x, wanted->y, static_cast<std::uint16_t>(wanted->width + 2 * kBorder),
            static_cast<std::uint16_t>(wanted->height + kTitle + kBorder),
            XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        xcb_reparent_window(connection_, window, framed.frame, kBorder, kTitle);
        Set(window, "WM_STATE", Atom("WM_STATE"), {1, 0});
        xcb_map_window(connection_, window);
        xcb_map_window(connection_, framed.frame);
        Tell(window, framed);
    }

    void Configure(const xcb_configure_request_event_t& request) {
        const auto found = framed_.find(request.window);
        if (found == framed_.end()) {
            PassOn(request);
            return;
        }
        Framed& framed = found->second;
        const auto take = [&](std::uint16_t bit, auto& value, auto wanted) {
            if ((request.value_mask & bit) != 0) {
                value = wanted;
            }
        };
        take(XCB_CONFIG_WINDOW_X, framed.x, request.x);
        take(XCB_CONFIG_WINDOW_Y, framed.y, request.y);
        take(XCB_CONFIG_WINDOW_WIDTH, framed.width, request.width);
        take(XCB_CONFIG_WINDOW_HEIGHT, framed.height, request.height);
        Move(framed.frame, framed.x - kBorder, framed.y - kTitle, framed.width + 2 * kBorder,
             framed.height + kTitle + kBorder);
        Move(request.window, kBorder, kTitle, framed.width, framed.height);
        Tell(request.window, framed);
    }

    void PassOn(const xcb_configure_request_event_t& request) {
        Move(request.window, request.x, request.y, request.width, request.height);
    }

    void Move(xcb_window_t window, int x, int y, int width, int height) {
        const std::array<std::uint32_t, 4> values{static_cast<std::uint32_t>(x),
                                                  static_cast<std::uint32_t>(y),
                                                  static_cast<std::uint32_t>(std::max(width, 1)),
                                                  static_cast<std::uint32_t>(std::max(height, 1))};
        xcb_configure_window(connection_, window,
                             XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                                 XCB_CONFIG_WINDOW_HEIGHT,
                             values.data());
    }

    // The server itself tells a window its place in the frame only.
    void Tell(xcb_window_t window, const Framed& framed) {
        xcb_configure_notify_event_t event{};
        event.response_type = XCB_CONFIGURE_NOTIFY;
        event.event = window;
        event.window = window;
        event.x = framed.x;
        event.y = framed.y;
        event.width = framed.width;
        event.height = framed.height;
        xcb_send_event(connection_, 0, window, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
    }

    void Unframe(xcb_window_t window) {
        const auto found = framed_.find(window);
        if (found != framed_.end()) {
            xcb_destroy_window(connection_, found->second.frame);
            framed_.erase(found);
        }
    }

    xcb_window_t MakeWindow(std::int16_t x, std::int16_t y, std::uint16_t width,
                            std::uint16_t height, std::uint32_t events) {
        const xcb_window_t window = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window, screen_->root, x, y, width,
                          height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_EVENT_MASK, &events);
        return window;
    }

    xcb_atom_t Atom(std::string_view name) const {
        return platform::desktop::AtomOf(connection_, name, platform::desktop::IfUnknown::kMake);
    }

    void Set(xcb_window_t window, std::string_view name, xcb_atom_t type,
             std::initializer_list<std::uint32_t> values) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, Atom(name), type, 32,
                            static_cast<std::uint32_t>(values.size()), values.begin());
    }

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    std::map<xcb_window_t, Framed> framed_;
};

}  // namespace

int main() {
    Manager().Run();
    return 0;
}

// A tray of the X server: one bar in the lower right corner that takes icons in. What happens goes
// to standard output, a line each: "icon WINDOW" when it has taken one in, "gone" when one has
// left. A line on standard input: it puts the icon out, onto the screen. It ends with its input.
//
//     embedding_tray [alpha] [orphans]
//
// alpha: wants pixels that let it shine through. orphans: icons are given back to the screen when
// it ends, as most trays do.
#include <poll.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <string>
#include <string_view>

#include "platform/desktop/x_answers.h"

namespace {

constexpr std::uint16_t kIcon = 26;
constexpr std::uint32_t kBackground = 0x204060;

using platform::desktop::Owned;

class Tray {
  public:
    Tray(bool alpha, bool orphans) : orphans_(orphans), connection_(xcb_connect(nullptr, nullptr)) {
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        const auto left = static_cast<std::int16_t>(screen_->width_in_pixels - 200);
        const auto top = static_cast<std::int16_t>(screen_->height_in_pixels - kIcon);
        bar_ = MakeBar(left, top, alpha);
        const xcb_atom_t selection = Atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(connection_, bar_, selection, XCB_CURRENT_TIME);
        Send(screen_->root, screen_->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, Atom("MANAGER"),
             {XCB_CURRENT_TIME, selection, bar_, 0, 0});
        xcb_flush(connection_);
        std::cout << "ready" << std::endl;
    }
    ~Tray() { xcb_disconnect(connection_); }
    Tray(const Tray&) = delete;
    Tray& operator=(const Tray&) = delete;

    void Run() {
        std::array<pollfd, 2> watched{
            {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(connection_), POLLIN, 0}}};
        for (;;) {
            while (const auto event = Owned(xcb_poll_for_event(connection_))) {
                Handle(*event);
            }
            xcb_flush(connection_);
            poll(watched.data(), watched.size(), -1);
            std::array<char, 64> line{};
            if (watched[0].revents != 0 && read(STDIN_FILENO, line.data(), line.size()) <= 0) {
                return;
            }
            if (watched[0].revents != 0) {
                PutOut();
            }
        }
    }

  private:
    struct Kind {
        std::uint8_t depth;
        xcb_visualid_t visual;
    };

    Kind KindOf(bool alpha) const {
        auto depth = xcb_screen_allowed_depths_iterator(screen_);
        for (; alpha && depth.rem > 0; xcb_depth_next(&depth)) {
            if (depth.data->depth == 32 && xcb_depth_visuals_length(depth.data) > 0) {
                return {32, xcb_depth_visuals(depth.data)->visual_id};
            }
        }
        return {screen_->root_depth, screen_->root_visual};
    }

    xcb_window_t MakeBar(std::int16_t left, std::int16_t top, bool alpha) {
        const Kind kind = KindOf(alpha);
        const xcb_colormap_t colours = xcb_generate_id(connection_);
        xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colours, screen_->root,
                            kind.visual);
        const xcb_window_t bar = xcb_generate_id(connection_);
        const std::array<std::uint32_t, 5> values{kBackground, 0, 1,
                                                  XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, colours};
        xcb_create_window(connection_, kind.depth, bar, screen_->root, left, top, 200, kIcon, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, kind.visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT |
                              XCB_CW_EVENT_MASK | XCB_CW_COLORMAP,
                          values.data());
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, bar,
                            Atom("_NET_SYSTEM_TRAY_VISUAL"), XCB_ATOM_VISUALID, 32, 1,
                            &kind.visual);
        xcb_map_window(connection_, bar);
        return bar;
    }

    void Handle(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7F) {
            case XCB_CLIENT_MESSAGE: {
                const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
                if (message.type == Atom("_NET_SYSTEM_TRAY_OPCODE") &&
                    message.data.data32[1] == 0) {
                    TakeIn(message.data.data32[2]);
                }
                break;
            }
            case XCB_DESTROY_NOTIFY:
                std::cout << "gone" << std::endl;
                break;
            default:
                break;
        }
    }

    void TakeIn(xcb_window_t icon) {
        constexpr std::array<std::uint32_t, 2> kSize{kIcon, kIcon};
        if (orphans_) {
            xcb_change_save_set(connection_, XCB_SET_MODE_INSERT, icon);
        }
        xcb_reparent_window(connection_, icon, bar_, 0, 0);
        xcb_configure_window(connection_, icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             kSize.data());
        xcb_map_window(connection_, icon);
        Send(icon, icon, XCB_EVENT_MASK_NO_EVENT, Atom("_XEMBED"),
             {XCB_CURRENT_TIME, 0, 0, bar_, 0});
        icon_ = icon;
        std::cout << "icon " << icon << std::endl;
    }

    void PutOut() {
        xcb_unmap_window(connection_, icon_);
        xcb_reparent_window(connection_, icon_, screen_->root, 300, 300);
        xcb_map_window(connection_, icon_);
        xcb_flush(connection_);
        std::cout << "out" << std::endl;
    }

    void Send(xcb_window_t to, xcb_window_t window, std::uint32_t mask, xcb_atom_t type,
              const std::array<std::uint32_t, 5>& data) {
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = type;
        std::copy(data.begin(), data.end(), event.data.data32);
        xcb_send_event(connection_, 0, to, mask, reinterpret_cast<const char*>(&event));
    }

    xcb_atom_t Atom(std::string_view name) const {
        return platform::desktop::AtomOf(connection_, name, platform::desktop::IfUnknown::kMake);
    }

    const bool orphans_;
    xcb_connection_t* connection_;
    const xcb_screen_t* screen_ = nullptr;
    xcb_window_t bar_ = XCB_NONE;
    xcb_window_t icon_ = XCB_NONE;  ///< the newest
};

}  // namespace

int main(int count, char** arguments) {
    bool alpha = false;
    bool orphans = false;
    for (int i = 1; i < count; ++i) {
        alpha = alpha || std::string_view(arguments[i]) == "alpha";
        orphans = orphans || std::string_view(arguments[i]) == "orphans";
    }
    Tray(alpha, orphans).Run();
}

#include "platform/desktop/press_catcher.h"

#include <QScreen>
#include <QWindow>
#include <array>
#include <cstdint>

#include "platform/desktop/x_answers.h"
#include "platform/desktop/x_server.h"

namespace platform::desktop {

namespace {

constexpr std::uint8_t kDepth = 32;  // with one byte of opacity

xcb_visualid_t VisualOfDepth(const xcb_screen_t& screen) {
    auto depth = xcb_screen_allowed_depths_iterator(&screen);
    while (depth.rem > 0 && (depth.data->depth != kDepth || depth.data->visuals_len == 0)) {
        xcb_depth_next(&depth);
    }
    return depth.rem > 0 ? xcb_depth_visuals(depth.data)->visual_id : XCB_NONE;
}

}  // namespace

PressCatcher::PressCatcher(const QWindow& popup) : connection_(ToolkitConnection()) {
    const xcb_screen_t& screen = *xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    if (const xcb_visualid_t visual = VisualOfDepth(screen)) {
        Show(popup, screen, visual);
    }
}

PressCatcher::~PressCatcher() {
    if (window_ != XCB_WINDOW_NONE) {
        TakeOffScreen(window_);
        xcb_destroy_window(connection_, window_);
        xcb_flush(connection_);
    }
}

void PressCatcher::Show(const QWindow& popup, const xcb_screen_t& screen, xcb_visualid_t visual) {
    // To the pixel it would pass for a film: desktops take their panels away for these.
    const QRect place = popup.screen()->virtualGeometry().adjusted(-1, -1, 1, 1);
    const xcb_colormap_t colours = xcb_generate_id(connection_);
    xcb_create_colormap(connection_, XCB_COLORMAP_ALLOC_NONE, colours, screen.root, visual);
    window_ = xcb_generate_id(connection_);
    const std::array<std::uint32_t, 4> looks{0, 0, 1, colours};
    xcb_create_window(
        connection_, kDepth, window_, screen.root, static_cast<std::int16_t>(place.x()),
        static_cast<std::int16_t>(place.y()), static_cast<std::uint16_t>(place.width()),
        static_cast<std::uint16_t>(place.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
        XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP,
        looks.data());
    xcb_free_colormap(connection_, colours);
    // What has no kind is given the keyboard by some compositors.
    const xcb_atom_t kind = AtomOf(connection_, "_NET_WM_WINDOW_TYPE_POPUP_MENU", IfUnknown::kMake);
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_,
                        AtomOf(connection_, "_NET_WM_WINDOW_TYPE", IfUnknown::kMake), XCB_ATOM_ATOM,
                        32, 1, &kind);
    const std::array<std::uint32_t, 2> below{static_cast<std::uint32_t>(popup.winId()),
                                             XCB_STACK_MODE_BELOW};
    xcb_configure_window(connection_, window_,
                         XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, below.data());
    xcb_map_window(connection_, window_);
    xcb_flush(connection_);
}

}  // namespace platform::desktop

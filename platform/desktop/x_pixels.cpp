#include "platform/desktop/x_pixels.h"

#include <QSysInfo>
#include <algorithm>

namespace platform::desktop {

namespace {

const xcb_visualtype_t* FindVisual(const xcb_setup_t& setup, std::uint8_t wanted,
                                   xcb_visualid_t id) {
    for (auto screen = xcb_setup_roots_iterator(&setup); screen.rem > 0; xcb_screen_next(&screen)) {
        auto depth = xcb_screen_allowed_depths_iterator(screen.data);
        for (; depth.rem > 0; xcb_depth_next(&depth)) {
            const xcb_visualtype_t* visuals = xcb_depth_visuals(depth.data);
            const int count = xcb_depth_visuals_length(depth.data);
            const auto* found = std::find_if(visuals, visuals + count, [id](const auto& visual) {
                return visual.visual_id == id;
            });
            if (depth.data->depth == wanted && found != visuals + count) {
                return found;
            }
        }
    }
    return nullptr;
}

}  // namespace

bool HasOurPixels(const xcb_setup_t& setup, std::uint8_t depth) {
    const bool ownOrder = (setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST) ==
                          (QSysInfo::ByteOrder == QSysInfo::LittleEndian);
    const xcb_format_t* formats = xcb_setup_pixmap_formats(&setup);
    const int count = xcb_setup_pixmap_formats_length(&setup);
    return ownOrder && std::any_of(formats, formats + count, [depth](const xcb_format_t& format) {
               return format.depth == depth && format.bits_per_pixel == 32;
           });
}

bool HasOurColours(const xcb_setup_t& setup, std::uint8_t depth, xcb_visualid_t id) {
    const xcb_visualtype_t* visual = FindVisual(setup, depth, id);
    return visual != nullptr && visual->_class == XCB_VISUAL_CLASS_TRUE_COLOR &&
           visual->red_mask == 0xFF0000 && visual->green_mask == 0xFF00 &&
           visual->blue_mask == 0xFF;
}

}  // namespace platform::desktop
